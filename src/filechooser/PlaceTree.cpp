// The place combo's fixed part and the classes of drives.
#include "filechooser/ChooserFavorites.h"
#include "filechooser/ChooserLanguage.h"
#include "filechooser/FolderLister.h"
#include "filechooser/FolderListerParts.h"
#include "filechooser/LocationModel.h"
#include "forms/ImageCombo.h"
#include "forms/Resume.h"
#include "host/mdl_CoreDevWrapper.h"

#include <vector>

namespace fw {

using namespace lister;

namespace {

std::string VolumeName(const std::string& drive)
{
    std::string label;
    Resume([&] { label = GetCoreDevFiles().VolumeLabel(drive); });
    // A label is cut at its first NUL, as the volume query hands it over.
    return label.substr(0, label.find('\0'));
}

// "\\server\daten" reads "daten auf server"; the word stands in both languages.
std::string ShareName(const std::string& drive)
{
    std::string unc;
    Resume([&] {
        if (auto network = GetCoreDevFiles().Network())
            unc = network->UncOfDrive(drive);
    });
    if (StartsWith(unc, "\\\\"))
        unc.erase(0, 2);
    if (unc.empty())
        return {};
    const auto slash = unc.find('\\');
    const std::string host = unc.substr(0, slash);
    const std::string share = slash == std::string::npos ? std::string() : unc.substr(slash + 1);
    return share + " auf " + host;
}

std::string OrFallback(const std::string& name, const std::string& fallback)
{
    return name.empty() ? fallback : name;
}

std::vector<std::string> Components(const std::string& path)
{
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (;;) {
        const auto end = path.find('\\', from);
        parts.push_back(path.substr(from, end - from));
        if (end == std::string::npos)
            return parts;
        from = end + 1;
    }
}

bool EqualNoCase(const std::string& a, const std::string& b)
{
    return Q(a).compare(Q(b), Qt::CaseInsensitive) == 0;
}

} // namespace

DriveClass ClassOfDrive(const std::string& drive, bool forTree, bool germanOnly)
{
    const auto text = [germanOnly](const std::string& german, const std::string& english) {
        return ChooserText(germanOnly, german, english);
    };
    int type = 0;
    Resume([&] { type = GetCoreDevFiles().DriveType(drive); });
    switch (type) {
    case 2:
        // The two spellings are the product's own, one for each place.
        return {"DRIVE.REMOVABLE",
                text("Wechseldatenträger", forTree ? "Removeable drive" : "Removable drive")};
    case 3:
        return {"DRIVE.HDD", OrFallback(VolumeName(drive), text("Festplatte", "Harddisk"))};
    case 4:
        return {"DRIVE.NET",
                OrFallback(ShareName(drive), text("Netzwerklaufwerk", "Network drive"))};
    case 5:
        return {"DRIVE.CD", OrFallback(VolumeName(drive), "CD")};
    case 6:
        return {"DRIVE.RAM", OrFallback(VolumeName(drive), text("Speicherlaufwerk", "RAM drive"))};
    default:
        return {};
    }
}

void FolderLister::BuildPlaceTree()
{
    ComboItems& items = m_controls.folders.ComboItems();
    const auto add = [&](const std::string& key, const std::string& text, const std::string& image,
                         int indentation) {
        Resume([&] { items.Add(0, Q(key), Q(text), Q(image), {}, indentation); });
    };
    int favourites = 0;
    Resume([&] { favourites = m_favourites.Total(); });
    if (favourites > 0) {
        add(kFavorites, Text("Favoriten", "Favorites"), "FAVORITES", 0);
        for (const auto& list : {m_favourites.App, m_favourites.User}) {
            for (int i = 1; list && i <= list->Count(); ++i) {
                Resume([&] {
                    const FavoriteItem& favourite = list->Item(i);
                    add(kFavorites + favourite.Path, favourite.Name,
                        FavouriteIconKey(favourite.Icon), 1);
                });
            }
        }
    }
    add(kDesktop, "Desktop", "DESKTOP", 0);
    add("USER:\\", Text("Eigene Dateien", "My files"), "USER", 1);
    if (!m_places.SharedPath.empty())
        add("SHARED:\\", Text("Gemeinsame Dateien", "Shared files"), "USERS", 1);
    if (!m_places.SamplesPath.empty())
        add("SAMPLES:\\", Text("Beispiele", "Examples"), "SAMPLES", 1);
    add(kWorkstation, Text("Arbeitsplatz", "Workstation"), "WORKSTATION", 1);

    const std::vector<std::string> parts = Components(m_places.CurrentPath);
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const std::string drive = std::string(1, letter) + ":";
        const DriveClass kind = ClassOfDrive(drive, true, GermanOnly);
        if (kind.imageKey.empty())
            continue;
        add(drive + "\\", kind.name + " (" + drive + ")", kind.imageKey, 2);
        if (parts.size() < 3 || !EqualNoCase(drive, m_places.CurrentDrive))
            continue;
        // The open folder and its ancestors stand right behind their drive.
        std::size_t last = parts.size() - 1;
        while (last > 0 && parts[last].empty())
            --last;
        std::string soFar = parts[0] + "\\";
        for (std::size_t i = 1; i <= last; ++i) {
            soFar += parts[i] + "\\";
            add(Upper(soFar), parts[i], i == last ? "OPEN" : "CLOSED", int(i) + 2);
        }
    }
    add(kNethood, Text("Netzwerk", "Network"), "NETHOOD", 1);
    // A place without an item (a share, a pseudo place) keeps the selection.
    Resume([&] {
        if (ComboItem* current = items.Find(Q(Upper(m_places.CurrentPath))))
            m_controls.folders.SetSelectedItem(current);
        m_controls.folders.Refresh();
    });
}

} // namespace fw
