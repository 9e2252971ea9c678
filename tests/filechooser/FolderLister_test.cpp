// The listing engine over real temporary folders and the scripted network:
// rows and their order, count lines and links, places that are not ready,
// the pseudo places, the place combo and the deferred completion of rows.
#include "filechooser/ChooserTestSupport.h"

#include "forms/ImageList.h"

#include <gtest/gtest.h>

#include <functional>

using fw::testing::ChooserWorld;
using fw::testing::ListerForm;
using Texts = std::vector<std::string>;

namespace {

std::string Row(const fw::ListItem& row)
{
    QStringList fields{row.Text(), row.Icon()};
    for (int column = 1; column <= 4; ++column)
        fields << row.SubItem(column);
    fields << row.Tag();
    return fields.join(QLatin1Char('|')).toStdString();
}

/// The place combo's rows as "key|shown|indentation", shown being text or picture.
template <typename Shown> Texts ComboRows(const ListerForm& form, Shown shown)
{
    Texts rows;
    for (int i = 1; i <= form.lst_Folder.ComboItems().Count(); ++i) {
        const fw::ComboItem& item = form.lst_Folder.ComboItems().Item(i);
        rows.push_back(item.Key().toStdString() + "|" + std::invoke(shown, item).toStdString() +
                       "|" + std::to_string(item.Indentation()));
    }
    return rows;
}

TEST(FolderLister, CountLineTellsFilesFoldersAndHiddenOnes)
{
    struct Case {
        std::initializer_list<std::string> entries;
        const char* filter;
        int language;
        std::string line;
    };
    const std::string link = ", <A HREF='SHOWALL'>";
    const std::initializer_list<std::string> mixed{"a.txt", "b.txt", "c.TXT", "d.doc", "e"};
    // clang-format off
    const Case cases[] = {
        {mixed, "*.txt", 7, "3 Dateien" + link + "2 ausgeblendete Dateien</A>"},
        {mixed, "*.txt", 9, "3 files" + link + "2 hidden files</A>"},
        {{"only.txt"}, "*.*", 7, "1 Datei"},
        {{"only.txt"}, "*.*", 9, "1 file"},
        {{"x/", "y/", "a.doc", "b.doc", "c.doc"}, "*.txt", 7, "2 Ordner" + link + "3 ausgeblendete Dateien</A>"},
        {{"x/", "a.txt", "b.txt"}, "*.*", 9, "2 files and 1 folders"},
        {{"x/"}, "*.*", 7, "1 Ordner"},
        {{"a.txt", "b.md", "c.doc"}, "*.txt;*.md", 7, "2 Dateien" + link + "1 ausgeblendete Dateien</A>"},
        {{}, "*.*", 7, "vorher"}, // an empty folder leaves the line
    };
    // clang-format on
    for (const Case& c : cases) {
        ChooserWorld world;
        world.host->language = c.language;
        world.Make(c.entries);
        ListerForm form;
        form.lab_FileCount.SetCaption(QStringLiteral("vorher"));
        form.lister.Filter = c.filter;
        form.Goto(world.FolderLocation());
        EXPECT_EQ(form.CountLine(), c.line) << c.line;
    }
}

// Keys are the paths in capitals and sort keys the paths as spelt, whatever
// the names are spelt in.
TEST(FolderLister, FoldersStandAboveFilesKeyedByTheirPaths)
{
    ChooserWorld world;
    world.Make({"b.txt", "Zeta/", "a.xyzq", "alpha/", "straße.ÄÖü"});
    ListerForm form;
    const std::string base = world.FolderLocation();
    form.Goto(base);
    const fw::ListItems& rows = form.lst_Files.ListItems();
    EXPECT_EQ(form.RowTexts(), (Texts{"alpha", "Zeta", "a.xyzq", "b.txt", "straße.ÄÖü"}));
    for (int i = 1; i <= rows.Count(); ++i) {
        const fw::ListItem& row = rows.Item(i);
        const QString path = QString::fromStdString(base) + row.Text() + (i <= 2 ? "\\" : "");
        EXPECT_EQ(row.Key(), path.toUpper()) << row.Text().toStdString();
        EXPECT_EQ(row.SubItem(4), (i <= 2 ? "A:" : "B:") + path) << row.Text().toStdString();
    }
    EXPECT_EQ(Row(rows.Item(1)),
              "alpha|CLOSED|-|Ordner|-|A:" + base + "alpha\\|" + base + "alpha\\");
    EXPECT_EQ(Row(rows.Item(3)), "a.xyzq|WAITLOAD||Unbekannt||B:" + base + "a.xyzq|");
    EXPECT_EQ(form.lst_Files.ColumnHeaders().Count(), 5);
    EXPECT_EQ(form.lst_Files.ColumnHeaders().Item(5).Text().toStdString(), "Sortierung");
    // The pictures are bound again after the fill, the timer waits for its tick.
    EXPECT_EQ(form.lst_Files.SmallIcons(), &fw::SharedIcons16());
    EXPECT_EQ(form.lst_Files.Icons(), &fw::SharedIcons32());
    EXPECT_TRUE(form.tmr_IconLoad.Enabled());
    EXPECT_EQ(form.places.UpPath, world.Location().substr(0, world.Location().rfind('\\') + 1));

    // Folders alone sort by their names and count nothing.
    const std::string line = form.CountLine();
    form.lister.FoldersOnly = true;
    form.lister.Update();
    EXPECT_EQ(form.RowTexts(), (Texts{"alpha", "Zeta"}));
    EXPECT_EQ(rows.Item(2).SubItem(4), "A:Zeta");
    EXPECT_EQ(form.CountLine(), line);
}

TEST(FolderLister, FolderThatCannotBeReadIsToldThenLeft)
{
    ChooserWorld world;
    ListerForm form;
    form.Goto(world.FolderLocation("gone"));
    // The reason is the system's own text, in whatever language it speaks.
    const std::string reason = world.host->CoreDevFiles->FolderError(world.FolderLocation("gone"));
    ASSERT_FALSE(reason.empty());
    EXPECT_EQ(world.host->callsTo("ShowError"),
              Texts{"ShowError(Das ausgewählte Laufwerk ist nicht bereit: " + reason + "|)"});
    EXPECT_EQ(form.notReady, 1);
    EXPECT_EQ(form.lst_Files.ListItems().Count(), 0);
}

TEST(FolderLister, NetworkLevelsListWhatTheServiceAnswers)
{
    struct Case {
        const char* place;
        Texts rows;
        std::string line;
        std::string up;
        int ghosted;
    };
    const char* upFromPc = "NETHOOD:\\Firma\\";
    // clang-format off
    const Case cases[] = {
        {"NETHOOD:\\", {"Firma", "Labor"}, "2 Domäne/n gefunden", "DESKTOP:\\", 0},
        {"NETHOOD:\\Firma\\", {"pc1", "pc2"}, "2 Rechner in der Domäne Firma", "NETHOOD:\\", 0},
        {"NETHOOD:\\Firma\\pc1\\", {"daten", "fotos", "C$", "ADMIN$"},
         "4 Freigaben (davon 2 versteckte Freigaben) auf Rechner pc1", upFromPc, 2},
        {"NETHOOD:\\Firma\\pc2\\", {"public"}, "1 Freigaben auf Rechner pc2", upFromPc, 0},
        {"NETHOOD:\\Labor\\", {}, "0 Rechner in der Domäne Labor", "NETHOOD:\\", 0},
    };
    // clang-format on
    for (const Case& c : cases) {
        ChooserWorld world(false);
        world.host->network.domains = {"Firma", "Labor"};
        world.host->network.hosts["Firma"] = {"pc1", "pc2"};
        world.host->network.shares["pc1"] = {"C$", "daten", "ADMIN$", "fotos"};
        world.host->network.shares["pc2"] = {"public"};
        ListerForm form;
        form.Goto(c.place);
        EXPECT_EQ(form.RowTexts(), c.rows) << c.place;
        EXPECT_EQ(form.CountLine(), c.line) << c.place;
        EXPECT_EQ(form.places.UpPath, c.up) << c.place;
        int ghosted = 0;
        for (int i = 1; i <= form.lst_Files.ListItems().Count(); ++i)
            ghosted += form.lst_Files.ListItems().Item(i).Ghosted() ? 1 : 0;
        EXPECT_EQ(ghosted, c.ghosted) << c.place;
    }
    ChooserWorld world(false);
    world.host->language = 9;
    world.host->network.shares["pc2"] = {"public"};
    ListerForm form;
    form.Goto("NETHOOD:\\Firma\\pc2\\");
    EXPECT_EQ(form.CountLine(), "1 Shares on worksation pc2");
    EXPECT_EQ(form.lst_Files.ListItems().Item(1).Key().toStdString(), "\\\\pc2\\public\\");
    // A row without a file gets two dashes once its tick comes.
    form.lister.IconTick();
    EXPECT_EQ(Row(form.lst_Files.ListItems().Item(1)), "public|CLOSED|-||-||");
}

TEST(FolderLister, DriveListAndPlaceComboShowTheDriveClasses)
{
    ChooserWorld world(false);
    world.host->language = 9;
    world.host->driveTypes = {{"C:", 3}, {"D:", 2}, {"E:", 4}, {"F:", 5}, {"G:", 1}, {"H:", 6}};
    world.host->volumeLabels = {{"C:", "System"}, {"D:", "STICK"}};
    world.host->network.mapped["E:"] = "\\\\server\\daten";
    ListerForm form;
    form.places.Domain = "Firma";
    form.Goto("WORKSTATION:\\");
    EXPECT_EQ(form.RowTexts(), (Texts{"System (C:)", "Removable drive (D:)",
                                      "daten auf server (E:)", "CD (F:)", "RAM drive (H:)"}));
    EXPECT_EQ(form.CountLine(), "5 Objects in my computer");
    EXPECT_EQ(Row(form.lst_Files.ListItems().Item(2)),
              "Removable drive (D:)|DRIVE.REMOVABLE||||A:Removable drive (D:)|D:\\");
    EXPECT_EQ(form.places.UpPath, "DESKTOP:\\");

    // The combo spells the removable fallback its own way.
    EXPECT_EQ(
        ComboRows(form, &fw::ComboItem::Text),
        (Texts{"DESKTOP:\\|Desktop|0", "USER:\\|My files|1", "WORKSTATION:\\|Workstation|1",
               "C:\\|System (C:)|2", "D:\\|Removeable drive (D:)|2", "E:\\|daten auf server (E:)|2",
               "F:\\|CD (F:)|2", "H:\\|RAM drive (H:)|2", "NETHOOD:\\|Network|1"}));
    ASSERT_NE(form.lst_Folder.SelectedItem(), nullptr);
    EXPECT_EQ(form.lst_Folder.SelectedItem()->Key().toStdString(), "WORKSTATION:\\");
}

TEST(FolderLister, PlaceComboOpensTheCurrentFolderBehindItsDrive)
{
    ChooserWorld world(false);
    world.host->driveTypes = {{"C:", 3}, {"D:", 3}};
    ListerForm form;
    form.places.SharedPath = "C:\\srv\\";
    form.places.CurrentPath = "c:\\Home\\Anna\\";
    form.places.CurrentDrive = "c:";
    form.lister.BuildPlaceTree();
    EXPECT_EQ(ComboRows(form, [](const fw::ComboItem& item) { return item.Image().toString(); }),
              (Texts{"DESKTOP:\\|DESKTOP|0", "USER:\\|USER|1", "SHARED:\\|USERS|1",
                     "WORKSTATION:\\|WORKSTATION|1", "C:\\|DRIVE.HDD|2", "C:\\HOME\\|CLOSED|3",
                     "C:\\HOME\\ANNA\\|OPEN|4", "D:\\|DRIVE.HDD|2", "NETHOOD:\\|NETHOOD|1"}));
    ASSERT_NE(form.lst_Folder.SelectedItem(), nullptr);
    EXPECT_EQ(form.lst_Folder.SelectedItem()->Key().toStdString(), "C:\\HOME\\ANNA\\");
}

TEST(FolderLister, DesktopRootShowsItsPlacesThenTheDesktopFolder)
{
    struct Case {
        const char* what;
        std::string shared, samples;
        Texts rows;
    };
    const Texts tail{"Arbeitsplatz", "Netzwerkumgebung", "Projekte", "notiz.txt"};
    // clang-format off
    const Case cases[] = {
        {"without shared and samples", "", "", {"Eigene Dateien"}},
        {"with both", "C:\\srv\\", "C:\\opt\\", {"Eigene Dateien", "Gemeinsame Dateien", "Beispiele"}},
    };
    // clang-format on
    for (const Case& c : cases) {
        ChooserWorld world;
        world.Make({"Desktop/", "Desktop/Projekte/", "Desktop/notiz.txt"});
        world.host->folders.desktop = world.Location("Desktop");
        ListerForm form;
        form.places.SharedPath = c.shared;
        form.places.SamplesPath = c.samples;
        form.Goto("DESKTOP:\\");
        Texts rows = c.rows;
        rows.insert(rows.end(), tail.begin(), tail.end());
        EXPECT_EQ(form.RowTexts(), rows) << c.what;
        EXPECT_EQ(form.lst_Files.ListItems().Item(1).Tag().toStdString(), "USER:\\") << c.what;
        EXPECT_EQ(form.places.UpPath, "") << c.what;
    }
}

TEST(FolderLister, FavouritesViewListsBothListsWithTheirPictures)
{
    ChooserWorld world(false);
    ListerForm form;
    form.favourites.App = world.host->CoreDevRegistry->NewFavoriteList();
    form.favourites.User = world.host->CoreDevRegistry->NewFavoriteList();
    form.favourites.App->Add({"Projekte", "", "Ico\\16\\Computer\\Folders\\Star.ico", "C:\\p\\"});
    form.favourites.User->Add({"Fotos", "", "", "C:\\f\\"});
    form.Goto("FAVORITES:\\");
    const fw::ListItems& rows = form.lst_Files.ListItems();
    ASSERT_EQ(rows.Count(), 2);
    EXPECT_EQ(rows.Item(1).Key().toStdString(), "C:\\p\\");
    EXPECT_EQ(rows.Item(1).SmallIcon().toStdString(), "Ico\\16\\Computer\\Folders\\Star.ico");
    EXPECT_EQ(rows.Item(1).Icon().toStdString(), "Ico\\32\\Computer\\Folders\\Star.ico");
    EXPECT_EQ(rows.Item(2).Icon().toStdString(), "FAVORITE");
    EXPECT_EQ(form.CountLine(), "2 favorisierte Ordner");
    EXPECT_EQ(form.places.UpPath, "FAVORITES:\\");
    EXPECT_EQ(form.lst_Folder.ComboItems().Item(1).Key().toStdString(), "FAVORITES:\\");
}

TEST(FolderLister, IconTickCompletesOneRowAndLooksUpOneTypePerTick)
{
    ChooserWorld world;
    // Extensions of this test only: the shared lists live for the process.
    world.host->setRegistry(fw::HiveClassesRoot, ".tka\\", "tkafile");
    world.host->setRegistry(fw::HiveClassesRoot, "tkafile\\", "Tick-A-Datei");
    world.host->setRegistry(fw::HiveClassesRoot, "tkafile\\DefaultIcon\\", "tka.dll,3");
    world.host->setRegistry(fw::HiveClassesRoot, ".tkb\\DefaultIcon\\", "tkb-icon");
    world.host->setRegistry(fw::HiveClassesRoot, ".tkc\\", "tkcfile");
    world.host->setRegistry(fw::HiveClassesRoot, ".tkd\\", "tkdfile");
    world.host->setRegistry(fw::HiveClassesRoot, "tkdfile\\DefaultIcon\\", "tkd.dll");
    world.Make({"d/", "1.tka", "2.tkb", "3.tkc", "4.tka", "5.tkd"});
    ListerForm form;
    form.Goto(world.FolderLocation());
    const fw::ListItems& rows = form.lst_Files.ListItems();
    struct Tick {
        Texts rows; ///< text|icon|size|type|date of the rows 2 to 5
        Texts lookups;
    };
    const auto state = [&] {
        Texts texts;
        for (int i = 2; i <= rows.Count(); ++i) {
            const fw::ListItem& row = rows.Item(i);
            const std::string date = row.SubItem(3).toStdString();
            texts.push_back(row.Text().toStdString() + "|" + row.Icon().toStdString() + "|" +
                            row.SubItem(1).toStdString() + "|" + row.SubItem(2).toStdString() +
                            "|" + (date.size() == 10 ? "date" : date));
        }
        return texts;
    };
    // Rows not yet completed, completed without a picture, and finished ones.
    const auto waiting = [](const std::string& name) { return name + "|WAITLOAD||Unbekannt|"; };
    const auto sized = [](const std::string& name) {
        return name + "|WAITLOAD|0 Bytes|Unbekannt|date";
    };
    const std::string a1 = "1.tka|EXT.TKA|0 Bytes|Tick-A-Datei|date";
    const std::string b2 = "2.tkb|EXT.TKB|0 Bytes||date";
    const std::string a4 = "4.tka|EXT.TKA|0 Bytes|Unbekannt|date";
    // clang-format off
    const Tick ticks[] = {
        {{sized("1.tka"), waiting("2.tkb"), waiting("3.tkc"), waiting("4.tka"), waiting("5.tkd")}, {}},
        {{a1, sized("2.tkb"), waiting("3.tkc"), waiting("4.tka"), waiting("5.tkd")},
         {"ExtractIcon(tka.dll|3|16|16777214)"}},
        {{a1, b2, sized("3.tkc"), waiting("4.tka"), waiting("5.tkd")},
         {"ExtractIcon(tkb-icon|0|16|16777214)"}},
        // A type without a picture adds nothing: the row keeps the question mark.
        {{a1, b2, sized("3.tkc"), sized("4.tka"), waiting("5.tkd")}, {}},
        // A cached type gives its picture and leaves the row's type text.
        {{a1, b2, sized("3.tkc"), a4, sized("5.tkd")}, {}},
        // The tick's one lookup went to the type without a picture again.
        {{a1, b2, sized("3.tkc"), a4, sized("5.tkd")}, {}},
    };
    // clang-format on
    for (std::size_t i = 0; i < std::size(ticks); ++i) {
        world.host->clearCalls();
        form.lister.IconTick();
        EXPECT_FALSE(form.tmr_IconLoad.Enabled()) << "tick " << i;
        EXPECT_EQ(state(), ticks[i].rows) << "tick " << i;
        EXPECT_EQ(world.host->callsTo("ExtractIcon"), ticks[i].lookups) << "tick " << i;
    }

    // Known now: a new listing gives the type's picture and text at once.
    form.lister.Update();
    EXPECT_EQ(Row(rows.Item(5)).substr(0, 27), "4.tka|EXT.TKA||Tick-A-Datei");
}

TEST(FolderLister, SharedPicturesFillOnceAndTakeFavouriteIcons)
{
    ChooserWorld world(false);
    ListerForm form; // fills the lists, if no chooser of this process did
    fw::ImageList& small = fw::SharedIcons16();
    fw::ImageList& large = fw::SharedIcons32();
    const Texts smallOrder{"FAVORITES",  "FAVORITE",  "DESKTOP",   "WORKSTATION",
                           "NETHOOD",    "OPEN",      "CLOSED",    "USER",
                           "USERS",      "SAMPLES",   "DRIVE.HDD", "DRIVE.CD",
                           "DRIVE.DISC", "DRIVE.NET", "DRIVE.RAM", "DRIVE.REMOVABLE",
                           "WAITLOAD",   "NONE",      "FILE"};
    Texts largeOrder = smallOrder;
    largeOrder.insert(largeOrder.begin() + 16, "FILE");
    largeOrder.pop_back();
    for (std::size_t i = 0; i < smallOrder.size(); ++i) {
        EXPECT_EQ(small.Key(int(i) + 1).toStdString(), smallOrder[i]);
        EXPECT_EQ(large.Key(int(i) + 1).toStdString(), largeOrder[i]);
    }
    EXPECT_EQ(small.MaskColor(), 0xFFFFFEu);
    world.host->clearCalls();
    fw::FillSharedImages(0);
    EXPECT_FALSE(world.host->wasCalled("LoadPicture"));
    EXPECT_EQ(small.MaskColor(), 0xFFFFFEu);

    // A favourite's icon that does not load shows the abort sign.
    world.host->failing.insert("LoadPicture");
    fw::AddIcon("Ico\\16\\Computer\\Folders\\Broken.ico");
    EXPECT_EQ(world.host->callsTo("LoadPicture"),
              (Texts{"LoadPicture(Ico\\16\\Computer\\Folders\\Broken.ico)",
                     "LoadPicture(Ico\\16\\Computer\\Signs\\abort.ico)",
                     "LoadPicture(Ico\\32\\Computer\\Folders\\Broken.ico)",
                     "LoadPicture(Ico\\32\\Computer\\Signs\\abort.ico)"}));
    EXPECT_TRUE(small.Exists(QStringLiteral("Ico\\16\\Computer\\Folders\\Broken.ico")));
    EXPECT_TRUE(large.Exists(QStringLiteral("Ico\\32\\Computer\\Folders\\Broken.ico")));
    world.host->clearCalls();
    fw::AddIcon("Ico\\16\\Computer\\Folders\\Broken.ico");
    EXPECT_FALSE(world.host->wasCalled("LoadPicture"));
}

} // namespace

TEST(FolderLister, UncPlaceComboNamesHostAndFoldersWithOrWithoutANetworkService)
{
    struct Case {
        const char* place;
        bool networkAbsent;
        Texts rows;
        const char* selected;
    };
    // clang-format off
    const Case cases[] = {
        // A host with a port and nothing below it: its own row stands selected.
        {"\\\\nas:4445\\", false,
         {"NETHOOD:\\Firma\\|Firma|2", "NETHOOD:\\Firma\\nas:4445\\|nas:4445|3"},
         "NETHOOD:\\Firma\\nas:4445\\"},
        // A host without a network service still lists and names its folders.
        {"\\\\nas\\daten\\bilder\\", true,
         {"NETHOOD:\\\\||2", "NETHOOD:\\\\nas\\|nas|3", "\\\\NAS\\DATEN\\|daten|4",
          "\\\\NAS\\DATEN\\BILDER\\|bilder|5"},
         "\\\\NAS\\DATEN\\BILDER\\"},
    };
    // clang-format on
    for (const Case& c : cases) {
        ChooserWorld world(false);
        world.host->network.domains = {"Firma"};
        world.host->network.absent = c.networkAbsent;
        ListerForm form;
        form.Goto(c.place);
        Texts rows = ComboRows(form, [](const fw::ComboItem& item) { return item.Text(); });
        Texts uncRows;
        for (const std::string& row : rows)
            if (row.ends_with("|2") || row.ends_with("|3") || row.ends_with("|4") ||
                row.ends_with("|5"))
                uncRows.push_back(row);
        EXPECT_EQ(uncRows, c.rows) << c.place;
        ASSERT_NE(form.lst_Folder.SelectedItem(), nullptr) << c.place;
        EXPECT_EQ(form.lst_Folder.SelectedItem()->Key().toStdString(), c.selected) << c.place;
    }
}
