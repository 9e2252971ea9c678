#include "filechooser/FolderLister.h"

#include "controls/ctl_Label.h"
#include "core/hLangText.h"
#include "filechooser/ChooserFavorites.h"
#include "filechooser/ChooserLanguage.h"
#include "filechooser/FolderListerParts.h"
#include "filechooser/LocationModel.h"
#include "forms/ImageCombo.h"
#include "forms/ImageList.h"
#include "forms/ListView.h"
#include "forms/Pictures.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "host/mdl_CoreDevWrapper.h"
#include "resources/SharedImages.h"

#include <QHash>
#include <QStringBuilder>
#include <algorithm>
#include <array>

namespace fw {

using namespace lister;

namespace {

// The wait pointer shows for the whole fill and goes on every way out.
class BusyPointer {
  public:
    BusyPointer() { Screen::SetMousePointer(Screen::Busy); }
    ~BusyPointer() { Screen::SetMousePointer(Screen::Default); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

// Taking the lists off and binding them again makes pictures that were added
// since the last listing show; rows can only name pictures of a bound list.
void RebindPictures(ListView& files, ImageCombo* places)
{
    Resume([&] { files.SetIcons(nullptr); });
    Resume([&] { files.SetSmallIcons(nullptr); });
    if (places)
        Resume([&] { places->SetImageList(nullptr); });
    Resume([&] { files.SetIcons(&SharedIcons32()); });
    Resume([&] { files.SetSmallIcons(&SharedIcons16()); });
    if (places)
        Resume([&] { places->SetImageList(&SharedIcons16()); });
}

void AddColumnsOnce(ListView& files)
{
    ColumnHeaders& columns = files.ColumnHeaders();
    if (columns.Count() > 0)
        return;
    for (const char* title : {"Dateiname", "Größe", "Typ", "Geändert am"})
        columns.Add(QString::fromUtf8(title));
    columns.Add(QStringLiteral("Sortierung"), 0);
}

// A text in capitals, behind a prefix that is in capitals already (a row's
// folder, converted once per listing). Qt's toUpper walks the Unicode tables
// for each character; names are mostly ASCII, which is converted directly.
// Case mapping goes character by character, so the parts convert on their
// own.
QString InCapitals(QStringView name, const QString& upperBase = {}, QStringView suffix = {})
{
    QString key(upperBase.size() + name.size() + suffix.size(), Qt::Uninitialized);
    QChar* out = std::copy(upperBase.cbegin(), upperBase.cend(), key.data());
    for (const QChar c : name) {
        if (c.unicode() >= 0x80)
            return upperBase + name.toString().toUpper() + suffix.toString();
        *out++ = c >= u'a' && c <= u'z' ? QChar(c.unicode() - ('a' - 'A')) : c;
    }
    std::copy(suffix.begin(), suffix.end(), out);
    return key;
}

bool IsExecutable(const QString& ext)
{
    return ext == QLatin1String("EXE") || ext == QLatin1String("COM");
}

// Picture key and type text of the files of one listing. Types are decided
// once per extension and fill, so that a folder of a million files costs one
// hash lookup per row; programs have pictures of their own and are asked
// each.
class FileTypes {
  public:
    FileTypes()
        : m_unknown(Q(hLangText("Unbekannt", "Unknown"))),
          m_application(Q(hLangText("Anwendung", "Application")))
    {
    }

    struct Type {
        QString key;
        QString text;
    };

    Type Of(QStringView path, const QString& name)
    {
        const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
        const QStringView spelt = dot <= 0 ? QStringView() : QStringView(name).mid(dot + 1);
        // The files of a folder mostly have a few extensions, often in turns
        // (a picture and its sidecar): no text is made for the lookup of a
        // spelling met lately.
        for (const Recent& recent : m_recent)
            if (recent.known && spelt == recent.spelt)
                return recent.type;
        const QString ext = InCapitals(spelt);
        if (IsExecutable(ext))
            return {Existing(OwnPicture(path.toString())), m_application};
        auto known = m_byExtension.constFind(ext);
        if (known == m_byExtension.constEnd())
            known = m_byExtension.insert(ext, ByExtension(ext));
        m_recent[m_nextRecent] = {true, spelt.toString(), *known};
        m_nextRecent = (m_nextRecent + 1) % m_recent.size();
        return *known;
    }

  private:
    Type ByExtension(const QString& ext) const
    {
        ImageList& pictures = SharedIcons16();
        const QString cached = QStringLiteral("EXT.") + ext;
        if (pictures.Exists(cached)) {
            QString text;
            Resume([&] { text = pictures.Tag(cached); });
            return {cached, text};
        }
        return {Existing(QStringLiteral("WAITLOAD")), m_unknown};
    }

    static QString OwnPicture(const QString& path)
    {
        const std::string file = path.toStdString();
        int icons = 0;
        Resume([&] { icons = GetCoreDevPictures().IconCount(file); });
        if (icons < 1)
            return QStringLiteral("FILE.BIN");
        const QString key = QStringLiteral("OWN.") + path.toUpper();
        if (SharedIcons16().Exists(key))
            return key;
        QImage picture;
        Resume([&] {
            picture = ToImage(GetCoreDevPictures().ExtractIcon(file, 0, 16, SharedMaskColour()));
        });
        if (picture.isNull())
            return QStringLiteral("FILE.BIN");
        Resume([&] { SharedIcons16().Add(key, picture); });
        Resume([&] { SharedIcons32().Add(key, picture); });
        return key;
    }

    // A key the pictures lack shows the plain sheet.
    static QString Existing(const QString& key)
    {
        return SharedIcons16().Exists(key) ? key : QStringLiteral("FILE");
    }

    QString m_unknown;
    QString m_application;
    QHash<QString, Type> m_byExtension;
    struct Recent {
        bool known = false;
        QString spelt;
        Type type;
    };
    std::array<Recent, 4> m_recent;
    std::size_t m_nextRecent = 0;
};

} // namespace

namespace lister {

std::string RestOfPlace(const std::string& path)
{
    const auto colon = path.find(":\\");
    std::string rest = colon == std::string::npos ? std::string() : path.substr(colon + 2);
    if (!rest.empty() && rest.back() == '\\')
        rest.pop_back();
    return rest;
}

std::string FavouriteIconKey(const std::string& icon)
{
    if (icon.empty())
        return "FAVORITE";
    AddIcon(icon);
    return icon;
}

ListItem& AddPlaceRow(ListView& files, const std::string& key, const std::string& text,
                      const std::string& image)
{
    return files.ListItems().Add(Q(key), Q(text), Q(image), Q(image));
}

void SetCount(ctl_Label* label, const std::string& text)
{
    if (label)
        label->SetCaption(Q(text));
}

std::uint32_t SharedMaskColour()
{
    std::uint32_t mask = 1;
    Resume([&] { mask = SharedIcons16().MaskColor(); });
    return mask;
}

} // namespace lister

FolderLister::FolderLister(LocationModel& places, ChooserFavorites& favourites, Controls controls)
    : m_places(places), m_favourites(favourites), m_controls(controls)
{
}

std::string FolderLister::Text(const std::string& german, const std::string& english) const
{
    return ChooserText(GermanOnly, german, english);
}

void FolderLister::Update()
{
    if (m_places.CurrentPath.empty())
        return;
    const bool newPlace = m_places.CurrentPath != m_places.LastListedPath;
    if (newPlace) {
        m_places.LastListedPath = m_places.CurrentPath;
        Resume([&] { m_controls.folders.ComboItems().Clear(); });
    }
    Resume([&] { AddColumnsOnce(m_controls.files); });
    Resume([&] { m_controls.files.ListItems().Clear(); });
    const BusyPointer busy;
    if (m_controls.fileInfo)
        Resume([&] { m_controls.fileInfo->SetCaption({}); });
    RebindPictures(m_controls.files, newPlace ? &m_controls.folders : nullptr);
    // The timer fires only after this procedure has returned to the events.
    if (m_controls.iconLoad)
        Resume([&] { m_controls.iconLoad->SetEnabled(true); });
    if (newPlace)
        BuildPlaceTree();

    const std::string& path = m_places.CurrentPath;
    const bool unc = StartsWith(path, "\\\\");
    Listing listing(m_places, m_favourites, m_controls, newPlace, *this);
    if (unc)
        listing.UncTree();
    m_places.ComputeUpPath();

    const std::string head = path.substr(0, path.find('\\')) + "\\";
    if (head == kWorkstation) {
        listing.Drives();
    } else if (head == kNethood) {
        listing.Network();
    } else if (head == kFavorites) {
        listing.Favourites();
    } else if (head == kDesktop) {
        listing.DesktopRoot();
    } else if (!listing.RealFolder(path)) {
        if (NotReady)
            NotReady();
    }
}

namespace lister {

void Listing::Drives()
{
    m_places.UpPath = kDesktop;
    int rows = 0;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const std::string drive = std::string(1, letter) + ":";
        DriveClass kind;
        Resume([&] { kind = ClassOfDrive(drive, false, m_lister.GermanOnly); });
        if (kind.imageKey.empty())
            continue;
        const std::string text = kind.name + " (" + drive + ")";
        Resume([&] {
            ListItem& row = AddPlaceRow(m_c.files, drive + "\\", text, kind.imageKey);
            row.SetTag(Q(drive + "\\"));
            row.SetSubItem(4, Q("A:" + text));
            ++rows;
        });
    }
    SetCount(m_c.fileCount,
             Count(rows) + m_lister.Text(" Objekte im Arbeitsplatz", " Objects in my computer"));
}

void Listing::Favourites()
{
    m_places.UpPath = kFavorites;
    int rows = 0;
    for (const auto& list : {m_favourites.App, m_favourites.User}) {
        if (!list)
            continue;
        for (int i = 1; i <= list->Count(); ++i) {
            Resume([&] {
                const FavoriteItem& favourite = list->Item(i);
                const std::string small = FavouriteIconKey(favourite.Icon);
                const std::string large = ReplaceAll(small, "16\\", "32\\");
                m_c.files.ListItems().Add(Q(favourite.Path), Q(favourite.Name), Q(large), Q(small));
                ++rows;
            });
        }
    }
    SetCount(m_c.fileCount, Count(rows) + m_lister.Text(" favorisierte Ordner", " favorites"));
}

void Listing::DesktopRoot()
{
    m_places.UpPath.clear();
    const auto fixed = [&](const std::string& place, const std::string& text,
                           const std::string& image) {
        Resume([&] { AddPlaceRow(m_c.files, place, text, image).SetTag(Q(place)); });
    };
    fixed("USER:\\", m_lister.Text("Eigene Dateien", "My files"), "USER");
    if (!m_places.SharedPath.empty())
        fixed("SHARED:\\", m_lister.Text("Gemeinsame Dateien", "Shared files"), "USERS");
    if (!m_places.SamplesPath.empty())
        fixed("SAMPLES:\\", m_lister.Text("Beispiele", "Examples"), "SAMPLES");
    fixed(kWorkstation, m_lister.Text("Arbeitsplatz", "Workstation"), "WORKSTATION");
    // "Netzwerkumgebung" here and "Netzwerk" in the place combo, as the
    // product has them.
    fixed(kNethood, m_lister.Text("Netzwerkumgebung", "Network"), "NETHOOD");
    std::string desktop;
    Resume([&] {
        desktop =
            GetCoreDevText().Paths().AddBackslash(GetCoreDevSystem().Folders().DesktopFolder());
    });
    if (!desktop.empty() && !RealFolder(desktop) && m_lister.NotReady)
        m_lister.NotReady();
}

bool Listing::RealFolder(const std::string& base)
{
    CoreDevFiles* files = nullptr;
    Resume([&] { files = &GetCoreDevFiles(); });
    if (!files)
        return true;
    const std::string filter = m_lister.Filter.empty() ? "*.*" : m_lister.Filter;
    // The three reads of a folder: the filter's matches, all files, the
    // folders; the host serves them from one scan.
    std::vector<FileEntry> everything;
    Resume([&] { everything = files->ListFiles(base, "*.*"); });
    // With the default filter the matches are all files: no second list of
    // a million names.
    const bool filtered = filter != "*.*";
    std::vector<FileEntry> matchedOnly;
    if (filtered)
        Resume([&] { matchedOnly = files->ListFiles(base, filter); });
    std::string reason;
    Resume([&] { reason = files->FolderError(base); });
    if (!reason.empty()) {
        Screen::SetMousePointer(Screen::Default);
        Resume([&] {
            GetCoreDevMessages().ShowError(
                m_lister.Text("Das ausgewählte Laufwerk ist nicht bereit: ",
                              "The selected drive is not ready: ") +
                    reason,
                {});
        });
        return false;
    }
    const std::vector<FileEntry>& matched = filtered ? matchedOnly : everything;
    int folders = 0;
    int allFiles = 0;
    for (const FileEntry& entry : everything)
        (entry.IsFolder ? folders : allFiles) += 1;
    int matchedFiles = 0;
    for (const FileEntry& entry : matched)
        matchedFiles += entry.IsFolder ? 0 : 1;
    FolderRows(base, everything);
    // The folder chooser counts nothing: it has no count line.
    if (m_lister.FoldersOnly)
        return true;
    FileRows(base, matched);
    WriteFolderCount(matchedFiles, folders, allFiles);
    return true;
}

void Listing::FolderRows(const std::string& base, const std::vector<FileEntry>& entries)
{
    const QString qbase = Q(base);
    const QString upperBase = qbase.toUpper();
    const QString dash = QStringLiteral("-");
    const QString folderType = Q(m_lister.Text("Ordner", "Folder"));
    const QString closed = QStringLiteral("CLOSED");
    ListItems& rows = m_c.files.ListItems();
    for (const FileEntry& entry : entries) {
        if (!entry.IsFolder)
            continue;
        const QString name = Q(entry.Name);
        const QString path = qbase + name + QLatin1Char('\\');
        Resume([&] {
            ListItem& row = rows.Add(InCapitals(name, upperBase, u"\\"), name, closed, closed);
            // Only folders listed: they sort by name alone.
            row.SetSubItem(4, QStringLiteral("A:") + (m_lister.FoldersOnly ? name : path));
            row.SetSubItem(1, dash);
            row.SetSubItem(2, folderType);
            row.SetSubItem(3, dash);
            row.SetTag(path);
        });
    }
}

void Listing::FileRows(const std::string& base, const std::vector<FileEntry>& matched)
{
    const QString qbase = Q(base);
    const QString upperBase = qbase.toUpper();
    FileTypes types;
    ListItems& rows = m_c.files.ListItems();
    for (const FileEntry& entry : matched) {
        if (entry.IsFolder)
            continue;
        const QString name = Q(entry.Name);
        // The sort key holds the path, so that a row costs as few texts as
        // it shows.
        const QString sortKey = QStringLiteral("B:") % qbase % name;
        const QStringView path = QStringView(sortKey).mid(2);
        Resume([&] {
            const FileTypes::Type type = types.Of(path, name);
            ListItem& row = rows.Add(InCapitals(name, upperBase), name, type.key, type.key);
            row.SetSubItem(4, sortKey);
            row.SetSubItem(2, type.text);
        });
    }
}

void Listing::WriteFolderCount(int files, int folders, int allFiles)
{
    const std::string plural = files == 1 ? "" : m_lister.Text("en", "s");
    std::string line;
    if (files > 0 && folders > 0)
        line =
            m_lister.Text(Count(files) + " Datei" + plural + " und " + Count(folders) + " Ordner",
                          Count(files) + " file" + plural + " and " + Count(folders) + " folders");
    else if (folders > 0)
        line = Count(folders) + m_lister.Text(" Ordner", " folders");
    else if (files > 0)
        line = Count(files) + m_lister.Text(" Datei", " file") + plural;
    // An empty folder leaves the line as it was.
    if (!line.empty())
        SetCount(m_c.fileCount, line);
    if (files < allFiles && m_c.fileCount) {
        const QString link = QStringLiteral(", <A HREF='SHOWALL'>") + Q(Count(allFiles - files)) +
                             Q(m_lister.Text(" ausgeblendete Dateien", " hidden files")) +
                             QStringLiteral("</A>");
        m_c.fileCount->SetCaption(m_c.fileCount->Caption() + link);
    }
}

} // namespace lister

} // namespace fw
