// The chooser commands against real temporary folders: the tools menu, new
// folder, delete, and adding and removing favourites, driven through a small
// chooser that records where it was sent.
#include "ChooserTestSupport.h"
#include "controls/ctl_CmdBar.h"
#include "filechooser/ChooserCommands.h"
#include "filechooser/ChooserSite.h"
#include "folders/frm_DialogFolderFavorite.h"
#include "folders/frm_DialogNetworkAdd.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/DialogContext.h"
#include "host/mdl_CoreDevWrapper.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

using namespace fw;
using namespace fw::testing;
namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

namespace {

const std::string kUserKey = "Software\\Valdrenix\\Core\\Settings\\FolderFavorites";
const std::string kAppKey = "Software\\Valdrenix\\TestApp\\Ext\\FolderFavorites";
const std::string kDeleteIcon = "Ico\\32\\Computer\\Signs\\Delete.ico";

// The desktop's real files with the scripted host's network beside them, and a
// switch that makes every change fail as a full or locked disk would.
// clang-format off
class RealFiles final : public CoreDevFiles {
  public:
    explicit RealFiles(std::shared_ptr<NetworkService> network) : m_network(std::move(network)) {}
    bool refuseChanges = false;
    desktop::DesktopFiles real;

    bool WriteTextFile(const std::string& p, const std::string& t, const std::string& e, int f) override { return real.WriteTextFile(p, t, e, f); }
    bool DeleteFile(const std::string& p) override { return !refuseChanges && real.DeleteFile(p); }
    std::vector<FileEntry> ListFiles(const std::string& f, const std::string& p) override { return real.ListFiles(f, p); }
    bool DeleteFolder(const std::string& p) override { return !refuseChanges && real.DeleteFolder(p); }
    bool FileExists(const std::string& p) override { return real.FileExists(p); }
    bool FolderExists(const std::string& p) override { return real.FolderExists(p); }
    std::int64_t FileSize(const std::string& p) override { return real.FileSize(p); }
    std::int64_t FileDate(const std::string& p) override { return real.FileDate(p); }
    bool CreateFolder(const std::string& p) override { return !refuseChanges && real.CreateFolder(p); }
    std::string SizeText(std::int64_t b) override { return real.SizeText(b); }
    bool IsRealFile(const std::string& p) override { return real.IsRealFile(p); }
    std::int32_t synchronise(const std::string& a, const std::string& b, SyncProgress& w,
                             SyncJob& j) override
    {
        return real.synchronise(a, b, w, j);
    }
    int DriveType(const std::string& d) override { return real.DriveType(d); }
    StringList DrivesOfType(int t) override { return real.DrivesOfType(t); }
    std::string VolumeLabel(const std::string& d) override { return real.VolumeLabel(d); }
    std::string FolderError(const std::string& f) override { return real.FolderError(f); }
    std::shared_ptr<NetworkService> Network() override { return m_network; }

  private:
    std::shared_ptr<NetworkService> m_network;
};
// clang-format on

// A chooser with nothing but a list: moves and refills are recorded, not made.
class RecordingChooser final : public ChooserSite {
  public:
    Form form{QStringLiteral("frm_Chooser")};
    ListView* list = form.Add<ListView>(QStringLiteral("lst_Files"));
    LocationModel places;
    ChooserFavorites favourites;
    Texts steps;

    Form& ChooserForm() override { return form; }
    LocationModel& Places() override { return places; }
    ChooserFavorites& Favorites() override { return favourites; }
    ListView& Rows() override { return *list; }
    void GotoFolder(const std::string& location) override { steps.push_back("Goto " + location); }
    void UpdateFolder() override { steps.push_back("Update"); }
    void BuildSidebar() override { steps.push_back("Sidebar"); }
    void OpenSelected() override { steps.push_back("Open"); }
};

class ChooserCommandsTest : public ::testing::Test {
  protected:
    ChooserWorld world{false};
    ScopedTestHost& host = world.host;
    std::shared_ptr<RealFiles> files = std::make_shared<RealFiles>(host->CoreDevFiles->Network());
    std::string root = files->real.LocationOf(world.Posix("") + "/"); ///< with its "\"
    RecordingChooser chooser;
    ChooserCommands commands{chooser};
    ModalDriver driver;

    void SetUp() override { host->CoreDevFiles = files; }

    /// Starts a case: the lists as saved, the chooser at place, nothing recorded.
    void start(const std::string& place, const std::vector<FavoriteItem>& user = {},
               const std::vector<FavoriteItem>& app = {})
    {
        host->favourites[kUserKey] = user;
        host->favourites[kAppKey] = app;
        chooser.favourites.Load();
        chooser.places.CurrentPath = place.empty() ? root : place;
        chooser.list->ListItems().Clear();
        chooser.steps.clear();
        host->clearCalls();
    }
    /// A row of the list, selected as a click would.
    void selectRow(const std::string& key, const std::string& text)
    {
        chooser.list->SetSelectedItem(&chooser.list->ListItems().Add(QString::fromStdString(key),
                                                                     QString::fromStdString(text)));
    }
    /// The last message shown, refusal or failure; "" for none.
    std::string lastMessage() const
    {
        std::string last;
        for (const std::string& call : host->calls)
            if (call.rfind("ShowInfo(", 0) == 0 || call.rfind("ShowError(", 0) == 0)
                last = call;
        return last;
    }
    std::string firstQuestion() const
    {
        const auto asked = host->callsTo("AskQuestion");
        return asked.empty() ? std::string() : asked.front();
    }
    /// A saved list as "name=path" entries.
    Texts saved(const std::string& key)
    {
        Texts entries;
        for (const FavoriteItem& item : host->favourites[key])
            entries.push_back(item.Name + "=" + item.Path);
        return entries;
    }
};

const std::string kCreate = "Neuen Ordner erstellen|CREATEFOLDER|-1|-1|0|"
                            "Ico\\20\\Computer\\Folders\\Closed.ico#Ico\\20\\Overlay\\New.ico";
const std::string kDelete =
    "Ordner oder Datei löschen|DELETE|-1|-1|0|Ico\\20\\Computer\\Signs\\Delete.ico";
const std::string kConnect = "Netzwerklaufwerk verbinden|ADDCONNECTION|-1|-1|0|"
                             "Ico\\20\\Computer\\Hardware\\Nethood.ico#ico\\20\\overlay\\new.ico";
const std::string kDisconnect =
    "Netzwerklaufwerk trennen|REMOVECONNECTION|-1|-1|0|"
    "Ico\\20\\Computer\\Hardware\\Nethood.ico#ico\\20\\overlay\\remove.ico";
const std::string kFavourites =
    "Favoriten löschen|REMOVEFAVORITE|-1|-1|0|"
    "Ico\\20\\Computer\\Signs\\Favorite.ico#Ico\\20\\Overlay\\Remove.ico";
const std::string kStar = "-1|-1|0|Ico\\20\\Computer\\Folders\\Favorite.ico";
const std::string kNethood = "-1|-1|0|Ico\\20\\Computer\\Folders\\Nethood.ico";

struct MenuCase {
    const char* name;
    bool onRow, selected;
    Texts mapped;
    std::vector<FavoriteItem> user, app;
    Texts rows;
};

TEST_F(ChooserCommandsTest, ToolsMenuShowsEachRowOnlyUnderItsCondition)
{
    const FavoriteItem mine{"Mine", "", "Ico\\16\\Own\\Star.ico", "C:\\a\\"};
    const FavoriteItem plain{"Plain", "", "", "C:\\b\\"}, theirs{"Theirs", "", "", "C:\\c\\"};
    // clang-format off
    const MenuCase cases[] = {
        {"bare", false, false, {}, {}, {}, {kCreate, "-", kConnect}},
        {"right click on a selected row", true, true, {}, {}, {},
         {"Öffnen|OPEN|-1|-1|0|Ico\\20\\Computer\\Signs\\OK.ico", "-", kCreate, kDelete, "-", kConnect}},
        {"mapped drives", false, false, {"Y:", "Z:"}, {}, {},
         {kCreate, "-", kConnect, kDisconnect, "> Y:|REMOVECONNECTION.Y:|" + kNethood,
          "> Z:|REMOVECONNECTION.Z:|" + kNethood}},
        {"both favourite lists, the user's first", false, false, {}, {mine, plain}, {theirs},
         {kCreate, "-", kConnect, "-", kFavourites,
          "> Mine|REMOVEFAVORITE.USER.1|-1|-1|0|Ico\\20\\Own\\Star.ico",
          "> Plain|REMOVEFAVORITE.USER.2|" + kStar, "> -", "> Theirs|REMOVEFAVORITE.APP.1|" + kStar}},
        {"application favourites alone, no separator", false, false, {}, {}, {theirs},
         {kCreate, "-", kConnect, "-", kFavourites, "> Theirs|REMOVEFAVORITE.APP.1|" + kStar}},
    };
    // clang-format on
    for (const MenuCase& c : cases) {
        SCOPED_TRACE(c.name);
        start("", c.user, c.app);
        host->network.mapped.clear();
        for (const std::string& drive : c.mapped)
            host->network.mapped[drive] = "\\\\server\\" + drive;
        if (c.selected)
            selectRow(root + "a.txt", "a.txt");
        host->menus.clear();

        commands.ToolsMenu(c.onRow);
        ASSERT_FALSE(host->menus.empty());
        EXPECT_EQ(host->menus.back()->rows, c.rows);
        EXPECT_EQ(host->callsTo("PopupMenu.Popup").size(), 1u);
    }
}

struct RunCase {
    const char* name;
    std::string current, chosen;
    Texts steps, disconnected;
    /// What the user does in the map-drive dialog, if one opens.
    std::function<void(Form&)> inMapper = {};
};

TEST_F(ChooserCommandsTest, ChosenMenuKeysRunTheirCommand)
{
    const auto mapDrive = [this](Form& mapper) {
        Focus(*static_cast<frm_DialogNetworkAdd&>(mapper).lst_DriveLetter);
        Type(mapper, QStringLiteral("Q"));
        Focus(*static_cast<frm_DialogNetworkAdd&>(mapper).txt_NetworkShare);
        Type(mapper, QStringLiteral("\\\\server\\daten"));
        host->queueConnectResult(true);
        PressKey(mapper, Qt::Key_Return);
    };
    // clang-format off
    const RunCase cases[] = {
        {"open, the head compared in capitals", "C:\\x\\", "open", {"Open"}, {}},
        {"map drive, connected: to the new root", "C:\\x\\", "ADDCONNECTION", {"Goto Q:\\"}, {}, mapDrive},
        {"map drive, abandoned: nowhere", "C:\\x\\", "ADDCONNECTION", {}, {}, [](Form& f) { PressKey(f, Qt::Key_Escape); }},
        {"disconnect needs a drive", "C:\\x\\", "REMOVECONNECTION", {}, {}},
        {"disconnect the shown drive", "Z:\\docs\\", "REMOVECONNECTION.Z:", {"Goto WORKSTATION:\\"}, {"Disconnect(Z:)"}},
        {"disconnect the shown drive, case-blind", "z:\\docs\\", "REMOVECONNECTION.Z:", {"Goto WORKSTATION:\\"}, {"Disconnect(Z:)"}},
        {"disconnect another drive", "C:\\x\\", "REMOVECONNECTION.Z:", {"Update"}, {"Disconnect(Z:)"}},
        {"a failed disconnect changes nothing", "C:\\x\\", "REMOVECONNECTION.Q:", {}, {"Disconnect(Q:)"}},
        {"unknown key", "C:\\x\\", "NOTHING.AT.ALL", {}, {}},
        {"menu closed without a choice", "C:\\x\\", "", {}, {}},
    };
    // clang-format on
    for (const RunCase& c : cases) {
        SCOPED_TRACE(c.name);
        start(c.current);
        host->network.mapped = {{"Z:", "\\\\server\\share"}};
        host->queueMenuChoice(c.chosen);
        if (c.inMapper)
            driver.OnNextModal(c.inMapper);

        commands.ToolsMenu(false);
        EXPECT_EQ(driver.Pending(), 0);
        EXPECT_EQ(chooser.steps, c.steps);
        EXPECT_EQ(host->callsTo("Disconnect"), c.disconnected);
    }
}

const std::string kCreateFailed =
    "ShowError(Der Ordner konnte nicht angelegt werden. Entweder besteht schon ein Ordner mit dem "
    "gleichen Namen oder Sie haben keine Schreibberichtigung in diesem Ordner.|)";

struct CreateCase {
    const char* name;
    std::string place, answer;
    bool diskRefuses;
    std::string made; ///< the new folder, relative; "" for none
    std::string message;
};

TEST_F(ChooserCommandsTest, NewFolderIsMadeWhereTheChooserStandsAndOpened)
{
    host->folders.desktop = files->real.LocationOf(world.Posix("Desk"));
    chooser.places.UserPath = root + "Home\\";
    world.Make({"Desk/", "Home/", "Taken/"});
    // clang-format off
    const CreateCase cases[] = {
        {"in a real folder", "", "Neu", false, "Neu", ""},
        {"on the desktop", "DESKTOP:\\", "Notizen", false, "Desk/Notizen", ""},
        {"in the user folder", "USER:\\", "Briefe", false, "Home/Briefe", ""},
        {"cancelled", "", "", false, "", ""},
        {"no folders in a virtual place", "WORKSTATION:\\", "X", false, "", "ShowInfo(Hier können Sie keine Ordner anlegen!|)"},
        {"the disk refuses", "", "Voll", true, "", kCreateFailed},
        {"the name is taken", "", "Taken", false, "", kCreateFailed},
    };
    // clang-format on
    for (const CreateCase& c : cases) {
        SCOPED_TRACE(c.name);
        start(c.place);
        files->refuseChanges = c.diskRefuses;
        host->answers("AskText") = {c.answer};

        commands.Run("CREATEFOLDER");
        EXPECT_EQ(lastMessage(), c.message);
        const bool refused = c.message.rfind("ShowInfo", 0) == 0;
        EXPECT_EQ(host->callsTo("AskText"),
                  refused ? Texts{}
                          : Texts{"AskText(Geben Sie den Namen für den neuen Ordner ein:|"
                                  "Ordner anlegen:|Neuer Ordner)"});
        if (c.made.empty()) {
            EXPECT_EQ(chooser.steps, Texts{});
            continue;
        }
        EXPECT_TRUE(fs::is_directory(world.Posix(c.made)));
        EXPECT_EQ(chooser.steps,
                  Texts{"Goto " + files->real.LocationOf(world.Posix(c.made)) + "\\"});
    }
}

struct DeleteCase {
    const char* name;
    std::string key; ///< relative to the temporary folder; "USER:\" as it is
    std::string text;
    std::int32_t answer;
    bool diskRefuses;
    std::string question, message;
    Texts steps;
};

TEST_F(ChooserCommandsTest, DeleteAsksThenRemovesTheSelectedFileOrFolder)
{
    const auto aboutFile = [](const std::string& name) {
        return "AskQuestion(Sind sie sicher, daß Sie die Datei '" + name +
               "' endgültig löschen wollen?|Datei löschen?|4||)";
    };
    const auto aboutFolder = [](const std::string& name) {
        return "AskQuestion(Sind Sie sicher, daß Sie den Ordner '" + name +
               "' endgültig löschen wollen?|Ordner Löschen|4|" + kDeleteIcon + "|)";
    };
    // clang-format off
    const DeleteCase cases[] = {
        {"no row selected", "", "", 0, false, "",
         "ShowInfo(Wählen Sie aus der Liste erst die Datei oder den Ordner aus, den Sie löschen wollen!|)", {}},
        {"file, answered No", "a.txt", "a.txt", ResultNo, false, aboutFile("a.txt"), "", {}},
        {"file", "a.txt", "a.txt", ResultYes, false, aboutFile("a.txt"), "", {"Update"}},
        {"file the disk keeps", "b.txt", "b.txt", ResultYes, true, aboutFile("b.txt"),
         "ShowError(Die Datei 'b.txt' konnte nicht gelöscht werden. Möglicherweise greift noch ein anderes "
         "Programm auf diese Datei zu oder Sie verfügen nicht über die notwendigen Zugriffsrechte|)", {}},
        {"no real file", "gone.txt", "gone.txt", ResultYes, false, "", "ShowInfo(Sie können nur echte Dateie löschen!|)", {}},
        {"folder with content", "sub\\", "sub", ResultYes, false, aboutFolder("sub"), "", {"Update"}},
        {"link to a folder", "link\\", "link", ResultYes, false, aboutFolder("link"), "", {"Update"}},
        {"folder the disk keeps", "keep\\", "keep", ResultYes, true, aboutFolder("keep"),
         "ShowError(Der Ordner 'keep' konnte nicht gelöscht werden. Möglicherweise greift noch ein Programm "
         "darauf zu oder Sie verfügen nicht über die benötigten Zugriffsrechte.|)", {}},
        {"no folder", "gone\\", "gone", ResultYes, false, "", "ShowInfo(Sie können nur normale Ordner löschen!|)", {}},
        {"the user folder's alias", "USER:\\", "Eigene", ResultYes, false, aboutFolder("Eigene"), "", {"Update"}},
    };
    // clang-format on
    world.Make({"a.txt", "b.txt", "sub/inner.txt", "real/kept.txt", "keep/x", "home/x"});
    fs::create_directory_symlink(world.Posix("real"), world.Posix("link"));
    chooser.places.UserPath = root + "home\\";
    for (const DeleteCase& c : cases) {
        SCOPED_TRACE(c.name);
        start("");
        if (!c.text.empty())
            selectRow(c.key == "USER:\\" ? c.key : root + c.key, c.text);
        files->refuseChanges = c.diskRefuses;
        host->answers("AskQuestion") = {std::to_string(c.answer)};

        commands.Run("DELETE");
        EXPECT_EQ(firstQuestion(), c.question);
        EXPECT_EQ(lastMessage(), c.message);
        EXPECT_EQ(chooser.steps, c.steps);
    }
    const auto exists = [&](const char* path) {
        return fs::exists(fs::symlink_status(world.Posix(path)));
    };
    EXPECT_FALSE(exists("a.txt") || exists("sub") || exists("link") || exists("home"));
    EXPECT_TRUE(exists("b.txt") && exists("keep"));
    EXPECT_TRUE(exists("real/kept.txt")) << "a link's target keeps its content";
}

struct AddCase {
    const char* name;
    std::string place; ///< "" for the temporary folder
    std::vector<FavoriteItem> user, app;
    std::function<void(frm_DialogFolderFavorite&)> edit; ///< null: no editor may show
    std::string message;
    Texts savedUser, savedApp, steps;
    std::string added; ///< "list: description|icon" of the entry added
};

TEST_F(ChooserCommandsTest, AddingAFavouriteGoesThroughTheEditorToTheChosenList)
{
    const auto mine = [&](frm_DialogFolderFavorite& editor) {
        Type(editor, QStringLiteral("Projekte")); // over the proposed name, selected
        Focus(*editor.txt_Description);
        Type(editor, QStringLiteral("Alles Laufende"));
        host->queueIconChoice("Ico\\16\\Own\\Star.ico");
        Click(*editor.pic_Icon);
        Click(*editor.opt_FavUser);
        editor.ctl_CmdBar1->Press(QStringLiteral("OK"));
    };
    const auto theirs = [&](frm_DialogFolderFavorite& editor) {
        Type(editor, QStringLiteral("Ablage"));
        host->queueIconChoice("Ico\\16\\Own\\Star.ico");
        Click(*editor.pic_Icon);
        editor.ctl_CmdBar1->Press(QStringLiteral("OK"));
    };
    const auto abort = [](frm_DialogFolderFavorite& editor) {
        editor.ctl_CmdBar1->Press(QStringLiteral("ABORT"));
    };
    const FavoriteItem other{"Alt", "", "", "C:\\alt\\"}, here{"Da", "", "", root};
    const std::string at = "=" + root;
    // clang-format off
    const AddCase cases[] = {
        {"a virtual place", "DESKTOP:\\", {}, {}, nullptr,
         "ShowInfo(Sie können nur 'echte' Ordner zu Ihren Favoriten hinzufügen!|)", {}, {}, {}, ""},
        {"already the application's", "", {}, {here}, nullptr,
         "ShowInfo(Dieser Ordner gehört bereits zu Ihren Favoriten!|)", {}, {"Da" + at}, {}, ""},
        {"the first favourite, for the user", "", {}, {}, mine, "", {"Projekte" + at}, {}, {"Sidebar"},
         "user: Alles Laufende|Ico\\16\\Own\\Star.ico"},
        {"for the application with an icon, after another", "", {other}, {}, theirs, "",
         {"Alt=C:\\alt\\"}, {"Ablage" + at}, {}, "app: |"},
        {"abandoned", "", {}, {}, abort, "", {}, {}, {}, ""},
    };
    // clang-format on
    for (const AddCase& c : cases) {
        SCOPED_TRACE(c.name);
        start(c.place, c.user, c.app);
        const std::size_t shown = driver.Seen().size();
        if (c.edit)
            driver.OnNextModal([&](Form& form) {
                auto& editor = dynamic_cast<frm_DialogFolderFavorite&>(form);
                EXPECT_EQ(editor.txt_URL->Text().toStdString(), root);
                c.edit(editor);
            });

        commands.AddFavorite();
        EXPECT_EQ(driver.Seen().size() - shown, c.edit ? 1u : 0u);
        EXPECT_EQ(lastMessage(), c.message);
        EXPECT_EQ(saved(kUserKey), c.savedUser);
        EXPECT_EQ(saved(kAppKey), c.savedApp);
        EXPECT_EQ(chooser.steps, c.steps);
        // The user's entry keeps what was entered; the application's only name and target.
        const std::string list = c.added.substr(0, c.added.find(':'));
        if (list.empty())
            continue;
        const FavoriteItem& added = host->favourites[list == "user" ? kUserKey : kAppKey].back();
        EXPECT_EQ(list + ": " + added.Description + "|" + added.Icon, c.added);
    }
}

struct RemoveCase {
    const char* name;
    std::string place, key; ///< key: a menu key, or "" for the list's delete
    std::vector<FavoriteItem> user;
    std::int32_t answer;
    Texts savedUser, savedApp, steps;
    std::string question;
};

TEST_F(ChooserCommandsTest, RemovingAFavouriteTakesItFromOneListByMenuAndFromBothByList)
{
    const FavoriteItem both{"Beide", "", "", "C:\\both\\"}, only{"Nur", "", "", "C:\\only\\"};
    const std::string b = "Beide=C:\\both\\", n = "Nur=C:\\only\\";
    const std::string byMenu = "AskQuestion(Sind Sie sicher, daß Sie den Favoriten 'Beide' "
                               "löschen wollen?|Favorit löschen?|4|" +
                               kDeleteIcon + "|DIALOG.FILE.DELETEFAVORITE)";
    const std::string byList =
        "AskQuestion(Wollen Sie den Favoriten 'Beide' wirklich entfernen?||4||)";
    const std::string favourites = "FAVORITES:\\";
    // clang-format off
    const RemoveCase cases[] = {
        {"the user's entry by menu", favourites, "REMOVEFAVORITE.USER.1", {both}, ResultYes, {}, {b, n}, {"Update"}, byMenu},
        {"the application's entry by menu", "C:\\x\\", "REMOVEFAVORITE.APP.2", {both}, ResultYes, {b}, {b}, {}, ""},
        {"by menu, answered No", favourites, "REMOVEFAVORITE.user.1", {both}, ResultNo, {b}, {b, n}, {}, byMenu},
        {"an index beyond the list", favourites, "REMOVEFAVORITE.APP.9", {both}, ResultYes, {b}, {b, n}, {}, ""},
        {"a row held in both lists", favourites, "", {both}, ResultYes, {}, {n}, {"Update"}, byList},
        {"the last one leaves for the desktop", favourites, "REMOVEFAVORITE.USER.1", {both}, ResultYes, {}, {}, {"Sidebar", "Goto DESKTOP:\\"}, byMenu},
    };
    // clang-format on
    for (const RemoveCase& c : cases) {
        SCOPED_TRACE(c.name);
        const bool last = c.savedApp.empty() && c.savedUser.empty();
        start(c.place, c.user, last ? std::vector<FavoriteItem>{} : std::vector{both, only});
        chooser.places.UpPath = c.place;
        host->answers("AskQuestion") = {std::to_string(c.answer)};

        if (c.key.empty()) {
            selectRow(both.Path, both.Name);
            commands.Run("DELETE");
        } else {
            commands.Run(c.key);
        }
        EXPECT_EQ(saved(kUserKey), c.savedUser);
        EXPECT_EQ(saved(kAppKey), c.savedApp);
        EXPECT_EQ(chooser.steps, c.steps);
        if (!c.question.empty()) {
            EXPECT_EQ(firstQuestion(), c.question);
        }
    }
}

} // namespace
