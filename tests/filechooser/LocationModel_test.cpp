// Where a chooser stands: history steps, aliases resolved on entry and the
// way one level up from every kind of place.
#include "ChooserTestSupport.h"
#include "controls/ctl_Steps.h"
#include "filechooser/ChooserSidebar.h"

#include <gtest/gtest.h>

using fw::LocationModel;
using fw::StringList;
using fw::testing::ChooserWorld;

namespace {

LocationModel ModelWithFolders()
{
    LocationModel places;
    places.UserPath = "C:\\home\\anna\\Dokumente\\";
    places.SharedPath = "C:\\srv\\shared\\";
    places.SamplesPath = "C:\\opt\\app\\samples\\";
    places.DefaultPath = "C:\\tmp\\start\\";
    return places;
}

TEST(LocationModel, HistoryStepsWalkBackAndForth)
{
    struct Step {
        const char* move;
        bool moved;
        const char* current;
        StringList back;
        StringList forward;
    };
    struct Case {
        const char* what;
        std::vector<Step> steps;
    };
    const Step atA{"C:\\a\\", true, "C:\\a\\", {"C:\\a\\"}, {}};
    const Step atB{"C:\\b\\", true, "C:\\b\\", {"C:\\a\\", "C:\\b\\"}, {}};
    const Step backToA{"PREVIOUS:\\", true, "C:\\a\\", {"C:\\a\\"}, {"C:\\b\\"}};
    // clang-format off
    const Case cases[] = {
        {"back or next with nowhere to go do nothing",
         {atA, {"PREVIOUS:\\", false, "C:\\a\\", {"C:\\a\\"}, {}}, {"NEXT:\\", false, "C:\\a\\", {"C:\\a\\"}, {}}}},
        {"back then forward", {atA, atB, backToA, {"NEXT:\\", true, "C:\\b\\", {"C:\\a\\", "C:\\b\\"}, {}}}},
        {"a normal move after going back clears the forward list",
         {atA, atB, backToA, {"C:\\c\\", true, "C:\\c\\", {"C:\\a\\", "C:\\c\\"}, {}}}},
        {"the history keeps the alias, the current path its target",
         {{"USER:\\", true, "C:\\home\\anna\\Dokumente\\", {"USER:\\"}, {}},
          {"FAVORITES:\\C:\\fav\\", true, "C:\\fav\\", {"USER:\\", "FAVORITES:\\C:\\fav\\"}, {}},
          {"PREVIOUS:\\", true, "C:\\home\\anna\\Dokumente\\", {"USER:\\"}, {"FAVORITES:\\C:\\fav\\"}}}},
    };
    // clang-format on
    const ChooserWorld paths(false); // the desktop path rules, scripted files
    for (const Case& c : cases) {
        LocationModel places = ModelWithFolders();
        for (const Step& step : c.steps) {
            EXPECT_EQ(places.Enter(step.move), step.moved) << c.what << ": " << step.move;
            EXPECT_EQ(places.CurrentPath, step.current) << c.what << ": " << step.move;
            EXPECT_EQ(places.BackList, step.back) << c.what << ": " << step.move;
            EXPECT_EQ(places.ForwardList, step.forward) << c.what << ": " << step.move;
        }
    }
}

TEST(LocationModel, AliasesResolveOnEntryAndPseudoPlacesStay)
{
    struct Row {
        const char* path;
        const char* current;
        const char* drive;
        bool pseudo;
    };
    const Row rows[] = {
        {"USER:\\", "C:\\home\\anna\\Dokumente\\", "C:", false},
        {"SHARED:\\", "C:\\srv\\shared\\", "C:", false},
        {"SAMPLES:\\", "C:\\opt\\app\\samples\\", "C:", false},
        {"DEFAULT:\\", "C:\\tmp\\start\\", "C:", false},
        {"FAVORITES:\\D:\\Projekte\\", "D:\\Projekte\\", "D:", false},
        {"FAVORITES:\\", "FAVORITES:\\", nullptr, true},
        {"DESKTOP:\\", "DESKTOP:\\", nullptr, true},
        {"WORKSTATION:\\", "WORKSTATION:\\", nullptr, true},
        {"NETHOOD:\\Firma\\pc1\\", "NETHOOD:\\Firma\\pc1\\", nullptr, true},
        {"\\\\pc1\\daten\\", "\\\\pc1\\daten\\", "\\\\pc1\\daten", false},
        // Words compare with case: a lower-case alias is no alias.
        {"user:\\", "user:\\", nullptr, false},
    };
    const ChooserWorld paths(false); // the desktop path rules, scripted files
    for (const Row& row : rows) {
        LocationModel places = ModelWithFolders();
        places.Enter(row.path);
        EXPECT_EQ(places.CurrentPath, row.current) << row.path;
        if (row.drive) {
            EXPECT_EQ(places.CurrentDrive, row.drive) << row.path;
        }
        EXPECT_EQ(places.IsPseudo(), row.pseudo) << row.path;
    }
}

TEST(LocationModel, UpPathFollowsTheTable)
{
    struct Row {
        const char* current;
        const char* up;
    };
    const Row rows[] = {
        {"C:\\home\\anna\\Bilder\\", "C:\\home\\anna\\"},
        {"C:\\home\\", "C:\\"},
        {"C:\\", "WORKSTATION:\\"},
        {"D:\\", "WORKSTATION:\\"},
        {"c:\\HOME\\ANNA\\DOKUMENTE\\", "DESKTOP:\\"},
        {"WORKSTATION:\\", "DESKTOP:\\"},
        {"NETHOOD:\\", "DESKTOP:\\"},
        {"NETHOOD:\\Firma\\", "NETHOOD:\\"},
        {"NETHOOD:\\Firma\\pc1\\", "NETHOOD:\\Firma\\"},
        {"\\\\pc1\\daten\\", "NETHOOD:\\Firma\\pc1\\"},
        {"\\\\PC1\\daten\\", "NETHOOD:\\Firma\\PC1\\"},
        {"\\\\pc1\\daten\\2024\\", "\\\\pc1\\daten\\"},
        {"FAVORITES:\\", "FAVORITES:\\"},
        {"DESKTOP:\\", ""},
    };
    const ChooserWorld paths(false); // the desktop path rules, scripted files
    for (const Row& row : rows) {
        LocationModel places = ModelWithFolders();
        places.Domain = "Firma";
        places.CurrentPath = row.current;
        places.ComputeUpPath();
        EXPECT_EQ(places.UpPath, row.up) << row.current;
    }
}

TEST(LocationModel, CategoryStripLeadsToThePlaces)
{
    struct Case {
        const char* what;
        int language;
        bool favourite, folders;
        std::vector<fw::CategoryRow> own;
        std::vector<std::string> steps; ///< caption|tool tip|tag
    };
    const std::string tip = "Zum vom Programm vorgeschlagenen Speicherort wechseln";
    // clang-format off
    const Case cases[] = {
        {"German, everything", 7, true, true, {},
         {"&Desktop||DESKTOP:\\", "USB (D:)||D:", "&Favoriten||FAVORITES:\\",
          "&Vorgabe|" + tip + "|DEFAULT:\\", "&Eigene Dateien|Eigene Dateien anzeigen|USER:\\",
          "&Gemeinsam|Gemeinsam verwendete Dateien und Ordner|SHARED:\\", "&Beispiele||SAMPLES:\\",
          "&Arbeitsplatz||WORKSTATION:\\", "&Netzwerk||NETHOOD:\\"}},
        {"English with the request's own categories, tool tips stay German", 9, false, false,
         {{"&Berichte", "Ico\\20\\x.ico", "Alle Berichte", "C:\\b\\"}},
         {"&Desktop||DESKTOP:\\", "USB (D:)||D:", "&Berichte|Alle Berichte|C:\\b\\",
          "&My files|Eigene Dateien anzeigen|USER:\\", "&Workstation||WORKSTATION:\\",
          "&Network||NETHOOD:\\"}},
    };
    // clang-format on
    for (const Case& c : cases) {
        fw::testing::ScopedTestHost host;
        host->language = c.language;
        host->driveTypes = {{"C:", 3}, {"D:", 2}};
        fw::Form form(QStringLiteral("frm_StripTest"));
        auto& strip = *form.Add<fw::ctl_Steps>(QStringLiteral("cat_Folder"));
        LocationModel places = ModelWithFolders();
        if (!c.folders)
            places.SharedPath = places.SamplesPath = "";
        fw::ChooserFavorites favourites;
        favourites.App = host->CoreDevRegistry->NewFavoriteList();
        favourites.User = host->CoreDevRegistry->NewFavoriteList();
        if (c.favourite)
            favourites.User->AddNew("Fotos", "C:\\f\\");
        fw::BuildSidebar(strip, places, favourites, c.own);
        std::vector<std::string> steps;
        for (int i = 1; i <= strip.Count(); ++i)
            steps.push_back(
                (strip.Caption(i) + "|" + strip.ToolTip(i) + "|" + strip.Tag(i)).toStdString());
        EXPECT_EQ(steps, c.steps) << c.what;
    }
}

} // namespace
