#include "filechooser/ChooserSidebar.h"

#include "controls/ctl_Steps.h"
#include "core/hLangText.h"
#include "filechooser/ChooserFavorites.h"
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
                  const std::vector<CategoryRow>& ownCategories)
{
    Resume([&] { strip.Clear(); });
    AddCategory(strip, "&Desktop", "Ico\\20\\Computer\\Folders\\Desktop.ico", {}, "DESKTOP:\\");
    AddRemovableDrives(strip);
    bool anyFavourite = false;
    Resume([&] { anyFavourite = favourites.Total() > 0; });
    if (anyFavourite)
        AddCategory(strip, hLangText("&Favoriten", "&Favorites"),
                    "Ico\\20\\Computer\\Signs\\Favorite.ico", {}, "FAVORITES:\\");
    if (ownCategories.empty()) {
        AddCategory(strip, hLangText("&Vorgabe", "&Default"), "Ico\\20\\Computer\\Folders\\ok.ico",
                    "Zum vom Programm vorgeschlagenen Speicherort wechseln", "DEFAULT:\\");
    }
    for (const CategoryRow& own : ownCategories)
        AddCategory(strip, own.Caption, own.IconPath, own.ToolTip, own.Location);
    AddCategory(strip, hLangText("&Eigene Dateien", "&My files"),
                "Ico\\20\\Computer\\Folders\\user.ico", "Eigene Dateien anzeigen", "USER:\\");
    if (!places.SharedPath.empty())
        AddCategory(strip, hLangText("&Gemeinsam", "&Shared files"),
                    "Ico\\20\\Computer\\Folders\\users.ico",
                    "Gemeinsam verwendete Dateien und Ordner", "SHARED:\\");
    if (!places.SamplesPath.empty())
        AddCategory(strip, hLangText("&Beispiele", "&Examples"),
                    "Ico\\20\\Computer\\Folders\\save.ico", {}, "SAMPLES:\\");
    AddCategory(strip, hLangText("&Arbeitsplatz", "&Workstation"),
                "Ico\\20\\Computer\\Hardware\\Workstation.ico", {}, "WORKSTATION:\\");
    AddCategory(strip, hLangText("&Netzwerk", "&Network"),
                "Ico\\20\\Computer\\Hardware\\Nethood.ico", {}, "NETHOOD:\\");
    Resume([&] { strip.Redraw(); });
}

} // namespace fw
