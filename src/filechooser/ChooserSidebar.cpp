#include "filechooser/ChooserSidebar.h"

#include "controls/ctl_Steps.h"
#include "filechooser/ChooserFavorites.h"
#include "filechooser/ChooserLanguage.h"
#include "filechooser/LocationModel.h"
#include "forms/Resume.h"
#include "host/mdl_CoreDevWrapper.h"

namespace fw {

namespace {

void AddCategory(ctl_Steps& strip, const std::string& caption, const std::string& icon,
                 const std::string& toolTip, const std::string& location)
{
    Resume([&] {
        strip.AddStep(QString::fromStdString(caption), QString::fromStdString(icon),
                      QString::fromStdString(toolTip), QString::fromStdString(location));
    });
}

void AddRemovableDrives(ctl_Steps& strip)
{
    StringList drives;
    Resume([&] { drives = GetCoreDevFiles().DrivesOfType(2); });
    for (const std::string& drive : drives.items())
        AddCategory(strip, "USB (" + drive + ")", "Ico\\20\\Computer\\Equipment\\usbstick.ico", {},
                    drive);
}

} // namespace

// The tool tips stand in German in both languages, as the product has them.
void BuildSidebar(ctl_Steps& strip, const LocationModel& places, const ChooserFavorites& favourites,
                  const std::vector<CategoryRow>& ownCategories, SidebarKind kind)
{
    const bool folderChooser = kind == SidebarKind::FolderChooser;
    const auto text = [folderChooser](const std::string& german, const std::string& english) {
        return ChooserText(folderChooser, german, english);
    };
    Resume([&] { strip.Clear(); });
    bool anyFavourite = false;
    Resume([&] { anyFavourite = favourites.Total() > 0; });
    const auto addFavourites = [&] {
        if (anyFavourite)
            AddCategory(strip, text("&Favoriten", "&Favorites"),
                        "Ico\\20\\Computer\\Signs\\Favorite.ico", {}, "FAVORITES:\\");
    };
    if (folderChooser)
        addFavourites();
    AddCategory(strip, "&Desktop", "Ico\\20\\Computer\\Folders\\Desktop.ico", {}, "DESKTOP:\\");
    if (!folderChooser) {
        AddRemovableDrives(strip);
        addFavourites();
    }
    if (ownCategories.empty()) {
        AddCategory(strip, text("&Vorgabe", "&Default"), "Ico\\20\\Computer\\Folders\\ok.ico",
                    "Zum vom Programm vorgeschlagenen Speicherort wechseln", "DEFAULT:\\");
    }
    for (const CategoryRow& own : ownCategories)
        AddCategory(strip, own.Caption, own.IconPath, own.ToolTip, own.Location);
    AddCategory(strip, text("&Eigene Dateien", "&My files"), "Ico\\20\\Computer\\Folders\\user.ico",
                "Eigene Dateien anzeigen", "USER:\\");
    if (!places.SharedPath.empty())
        AddCategory(strip, text("&Gemeinsam", "&Shared files"),
                    "Ico\\20\\Computer\\Folders\\users.ico",
                    "Gemeinsam verwendete Dateien und Ordner", "SHARED:\\");
    if (!places.SamplesPath.empty())
        AddCategory(strip, text("&Beispiele", "&Examples"), "Ico\\20\\Computer\\Folders\\save.ico",
                    {}, "SAMPLES:\\");
    AddCategory(strip, text("&Arbeitsplatz", "&Workstation"),
                "Ico\\20\\Computer\\Hardware\\Workstation.ico", {}, "WORKSTATION:\\");
    AddCategory(strip, text("&Netzwerk", "&Network"), "Ico\\20\\Computer\\Hardware\\Nethood.ico",
                {}, "NETHOOD:\\");
    Resume([&] { strip.Redraw(); });
}

} // namespace fw
