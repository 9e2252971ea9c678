// The chooser commands against real temporary folders: the tools menu, new
// folder, delete, and adding and removing favourites, driven through a small
// chooser that records where it was sent.
#include "controls/ctl_CmdBar.h"
#include "desktop/DesktopFiles.h"
#include "desktop/DesktopText.h"
#include "filechooser/ChooserCommands.h"
#include "filechooser/ChooserFavorites.h"
#include "filechooser/ChooserSite.h"
#include "filechooser/LocationModel.h"
#include "folders/frm_DialogFolderFavorite.h"
#include "forms/ListView.h"
#include "forms/StdControls.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/DialogContext.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

using namespace fw;
using namespace fw::testing;
namespace fs = std::filesystem;

namespace {

const std::string kUserKey = "Software\\Valdrenix\\Core\\Settings\\FolderFavorites";
const std::string kAppKey = "Software\\Valdrenix\\TestApp\\Ext\\FolderFavorites";
const std::string kDeleteIcon = "Ico\\32\\Computer\\Signs\\Delete.ico";

// The desktop's real files, with the scripted host's network beside them and
// a switch that makes every change fail as a full or locked disk would.
class RealFiles final : public CoreDevFiles {
  public:
    explicit RealFiles(std::shared_ptr<NetworkService> network) : m_network(std::move(network)) {}
    bool refuseChanges = false;
    desktop::DesktopFiles real;

    bool WriteTextFile(const std::string& p, const std::string& t, const std::string& e,
                       int f) override
    {
        return real.WriteTextFile(p, t, e, f);
    }
    bool DeleteFile(const std::string& p) override { return !refuseChanges && real.DeleteFile(p); }
    std::vector<FileEntry> ListFiles(const std::string& f, const std::string& p) override
    {
        return real.ListFiles(f, p);
    }
    bool DeleteFolder(const std::string& p) override
    {
        return !refuseChanges && real.DeleteFolder(p);
    }
    bool FileExists(const std::string& p) override { return real.FileExists(p); }
    bool FolderExists(const std::string& p) override { return real.FolderExists(p); }
    std::int64_t FileSize(const std::string& p) override { return real.FileSize(p); }
    std::int64_t FileDate(const std::string& p) override { return real.FileDate(p); }
    bool CreateFolder(const std::string& p) override
    {
        return !refuseChanges && real.CreateFolder(p);
    }
    std::string SizeText(std::int64_t b) override { return real.SizeText(b); }
    bool IsRealFile(const std::string& p) override { return real.IsRealFile(p); }
    bool synchronise(const std::string& s, const std::string& t) override
    {
        return real.synchronise(s, t);
    }
    int DriveType(const std::string& d) override { return real.DriveType(d); }
    StringList DrivesOfType(int t) override { return real.DrivesOfType(t); }
    std::string VolumeLabel(const std::string& d) override { return real.VolumeLabel(d); }
    std::string FolderError(const std::string& f) override { return real.FolderError(f); }
    std::shared_ptr<NetworkService> Network() override { return m_network; }

  private:
    std::shared_ptr<NetworkService> m_network;
};

// A chooser with nothing but a list: moves and refills are recorded, not made.
class RecordingChooser final : public ChooserSite {
  public:
    Form form{QStringLiteral("frm_Chooser")};
    ListView* list = form.Add<ListView>(QStringLiteral("lst_Files"));
    LocationModel places;
    ChooserFavorites favourites;
    std::vector<std::string> steps;

    Form& ChooserForm() override { return form; }
    LocationModel& Places() override { return places; }
    ChooserFavorites& Favorites() override { return favourites; }
    ListView& Rows() override { return *list; }
    void GotoFolder(const std::string& location) override { steps.push_back("Goto " + location); }
    void UpdateFolder() override { steps.push_back("Update"); }
    void BuildSidebar() override { steps.push_back("Sidebar"); }
    void OpenSelected() override { steps.push_back("Open"); }
};

using Steps = std::vector<std::string>;

class ChooserCommandsTest : public ::testing::Test {
  protected:
    ScopedTestHost host;
    std::shared_ptr<RealFiles> files;
    QTemporaryDir dir;
    std::string root; ///< the temporary folder as a location, with "\"
    RecordingChooser chooser;
    ChooserCommands commands{chooser};
    ModalDriver driver;

    void SetUp() override
    {
        files = std::make_shared<RealFiles>(host->CoreDevFiles->Network());
        host->CoreDevFiles = files;
        host->CoreDevText = std::make_shared<desktop::DesktopText>();
        ASSERT_TRUE(dir.isValid());
        root = files->real.LocationOf(dir.path().toStdString() + "/");
        chooser.places.CurrentPath = root;
        chooser.favourites.Load();
    }

    std::string disk(const std::string& relative) const
    {
        return dir.path().toStdString() + "/" + relative;
    }
    void makeFile(const std::string& relative) const
    {
        fs::create_directories(fs::path(disk(relative)).parent_path());
        QFile file(QString::fromStdString(disk(relative)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    void makeFolder(const std::string& relative) const { fs::create_directories(disk(relative)); }
    /// A row of the list, selected as a click would.
    void selectRow(const std::string& key, const std::string& text)
    {
        ListItem& row = chooser.list->ListItems().Add(QString::fromStdString(key),
                                                      QString::fromStdString(text));
        chooser.list->SetSelectedItem(&row);
    }
    std::string lastMessage(const std::string& operation) const
    {
        const auto calls = host->callsTo(operation);
        return calls.empty() ? std::string() : calls.back();
    }
    void favourite(const std::string& key, const std::string& name, const std::string& path,
                   const std::string& icon = {})
    {
        host->favourites[key].push_back(FavoriteItem{name, {}, icon, path});
        chooser.favourites.Load();
    }
    std::vector<std::string> saved(const std::string& key)
    {
        std::vector<std::string> names;
        for (const FavoriteItem& item : host->favourites[key])
            names.push_back(item.Name + "=" + item.Path);
        return names;
    }
};

struct MenuCase {
    const char* name;
    bool onRow;
    bool selected;
    std::vector<std::string> mapped;
    std::vector<FavoriteItem> user, app;
    std::vector<std::string> rows;
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
const std::string kFavouriteIcon = "Ico\\20\\Computer\\Folders\\Favorite.ico";

TEST_F(ChooserCommandsTest, ToolsMenuShowsEachRowOnlyUnderItsCondition)
{
    const MenuCase cases[] = {
        {"bare", false, false, {}, {}, {}, {kCreate, "-", kConnect}},
        {"right click on a selected row",
         true,
         true,
         {},
         {},
         {},
         {"Öffnen|OPEN|-1|-1|0|Ico\\20\\Computer\\Signs\\OK.ico", "-", kCreate, kDelete, "-",
          kConnect}},
        {"mapped drives",
         false,
         false,
         {"Y:", "Z:"},
         {},
         {},
         {kCreate, "-", kConnect, kDisconnect,
          "> Y:|REMOVECONNECTION.Y:|-1|-1|0|Ico\\20\\Computer\\Folders\\Nethood.ico",
          "> Z:|REMOVECONNECTION.Z:|-1|-1|0|Ico\\20\\Computer\\Folders\\Nethood.ico"}},
        {"both favourite lists, the user's first",
         false,
         false,
         {},
         {{"Mine", "", "Ico\\16\\Own\\Star.ico", "C:\\a\\"}, {"Plain", "", "", "C:\\b\\"}},
         {{"Theirs", "", "", "C:\\c\\"}},
         {kCreate, "-", kConnect, "-", kFavourites,
          "> Mine|REMOVEFAVORITE.USER.1|-1|-1|0|Ico\\20\\Own\\Star.ico",
          "> Plain|REMOVEFAVORITE.USER.2|-1|-1|0|" + kFavouriteIcon, "> -",
          "> Theirs|REMOVEFAVORITE.APP.1|-1|-1|0|" + kFavouriteIcon}},
        {"application favourites alone, no separator",
         false,
         false,
         {},
         {},
         {{"Theirs", "", "", "C:\\c\\"}},
         {kCreate, "-", kConnect, "-", kFavourites,
          "> Theirs|REMOVEFAVORITE.APP.1|-1|-1|0|" + kFavouriteIcon}},
    };
    for (const MenuCase& c : cases) {
        SCOPED_TRACE(c.name);
        host->network.mapped.clear();
        for (const std::string& drive : c.mapped)
            host->network.mapped[drive] = "\\\\server\\" + drive.substr(0, 1);
        host->favourites[kUserKey] = c.user;
        host->favourites[kAppKey] = c.app;
        chooser.favourites.Load();
        chooser.list->ListItems().Clear();
        if (c.selected)
            selectRow(root + "a.txt", "a.txt");
        host->menus.clear();

        commands.ToolsMenu(c.onRow);
        ASSERT_FALSE(host->menus.empty());
        EXPECT_EQ(host->menus.back()->rows, c.rows);
        EXPECT_EQ(host->callsTo("PopupMenu.Popup").size(), 1u);
        host->clearCalls();
    }
}

struct RunCase {
    const char* name;
    std::string current;
    std::string chosen;
    Steps steps;
    std::vector<std::string> disconnected;
};

TEST_F(ChooserCommandsTest, ChosenMenuKeysRunTheirCommand)
{
    const RunCase cases[] = {
        {"open", "C:\\x\\", "OPEN", {"Open"}, {}},
        {"head compared in capitals", "C:\\x\\", "open", {"Open"}, {}},
        {"map drive has no dialog yet", "C:\\x\\", "ADDCONNECTION", {}, {}},
        {"disconnect needs a drive", "C:\\x\\", "REMOVECONNECTION", {}, {}},
        {"disconnect the shown drive",
         "Z:\\docs\\",
         "REMOVECONNECTION.Z:",
         {"Goto WORKSTATION:\\"},
         {"Disconnect(Z:)"}},
        {"disconnect another drive",
         "C:\\x\\",
         "REMOVECONNECTION.Z:",
         {"Update"},
         {"Disconnect(Z:)"}},
        {"a failed disconnect changes nothing",
         "C:\\x\\",
         "REMOVECONNECTION.Q:",
         {},
         {"Disconnect(Q:)"}},
        {"unknown key", "C:\\x\\", "NOTHING.AT.ALL", {}, {}},
        {"menu closed without a choice", "C:\\x\\", "", {}, {}},
    };
    for (const RunCase& c : cases) {
        SCOPED_TRACE(c.name);
        host->network.mapped = {{"Z:", "\\\\server\\share"}};
        chooser.places.CurrentPath = c.current;
        chooser.steps.clear();
        host->clearCalls();
        host->queueMenuChoice(c.chosen);

        commands.ToolsMenu(false);
        EXPECT_EQ(chooser.steps, c.steps);
        EXPECT_EQ(host->callsTo("Disconnect"), c.disconnected);
    }
}

struct CreateCase {
    const char* name;
    std::string place; ///< "" for the temporary folder itself
    std::string answer;
    bool diskRefuses;
    std::string made; ///< folder expected on disk, relative; "" for none
    std::string refusal, failure;
};

TEST_F(ChooserCommandsTest, NewFolderIsMadeWhereTheChooserStandsAndOpened)
{
    host->folders.desktop = files->real.LocationOf(disk("Desk"));
    makeFolder("Desk");
    makeFolder("Home");
    makeFolder("Taken");
    chooser.places.UserPath = files->real.LocationOf(disk("Home")) + "\\";
    const CreateCase cases[] = {
        {"in a real folder", "", "Neu", false, "Neu", "", ""},
        {"on the desktop", "DESKTOP:\\", "Notizen", false, "Desk/Notizen", "", ""},
        {"in the user folder", "USER:\\", "Briefe", false, "Home/Briefe", "", ""},
        {"cancelled", "", "", false, "", "", ""},
        {"not in a place without folders", "WORKSTATION:\\", "X", false, "",
         "ShowInfo(Hier können Sie keine Ordner anlegen!|)", ""},
        {"the disk refuses", "", "Voll", true, "", "",
         "ShowError(Der Ordner konnte nicht angelegt werden. Entweder besteht schon ein Ordner mit "
         "dem gleichen Namen oder Sie haben keine Schreibberichtigung in diesem Ordner.|)"},
        {"the name is taken", "", "Taken", false, "", "", "the same failure"},
    };
    for (const CreateCase& c : cases) {
        SCOPED_TRACE(c.name);
        chooser.places.CurrentPath = c.place.empty() ? root : c.place;
        chooser.steps.clear();
        host->clearCalls();
        files->refuseChanges = c.diskRefuses;
        host->answers("AskText") = {c.answer};

        commands.Run("CREATEFOLDER");
        EXPECT_EQ(lastMessage("ShowInfo"), c.refusal);
        if (std::string(c.failure) == "the same failure")
            EXPECT_NE(lastMessage("ShowError").find("Der Ordner konnte nicht"), std::string::npos);
        else
            EXPECT_EQ(lastMessage("ShowError"), c.failure);
        if (!c.refusal.empty()) {
            EXPECT_FALSE(host->wasCalled("AskText"));
            continue;
        }
        EXPECT_EQ(lastMessage("AskText"), "AskText(Geben Sie den Namen für den neuen Ordner ein:|"
                                          "Ordner anlegen:|Neuer Ordner)");
        if (c.made.empty()) {
            EXPECT_TRUE(chooser.steps.empty());
            continue;
        }
        EXPECT_TRUE(fs::is_directory(disk(c.made)));
        ASSERT_EQ(chooser.steps.size(), 1u);
        EXPECT_EQ(chooser.steps[0], "Goto " + files->real.LocationOf(disk(c.made)) + "\\");
    }
    files->refuseChanges = false;
}

struct DeleteCase {
    const char* name;
    std::string key; ///< relative to the temporary folder; "USER" for "USER:\"
    std::string text;
    std::int32_t answer;
    bool diskRefuses;
    std::string question; ///< "text|title|style|icon|key" as asked; "" for none
    std::string refusal, failure;
    Steps steps;
};

TEST_F(ChooserCommandsTest, DeleteAsksThenRemovesTheSelectedFileOrFolder)
{
    const auto fileQuestion = [](const std::string& name) {
        return "Sind sie sicher, daß Sie die Datei '" + name +
               "' endgültig löschen wollen?|Datei löschen?|4||";
    };
    const std::string folderQuestion = "|Ordner Löschen|4|" + kDeleteIcon + "|";
    const DeleteCase cases[] = {
        {"no row selected",
         "",
         "",
         0,
         false,
         "",
         "ShowInfo(Wählen Sie aus der Liste erst die Datei oder den Ordner aus, den Sie löschen "
         "wollen!|)",
         "",
         {}},
        {"file, answered No", "a.txt", "a.txt", ResultNo, false, fileQuestion("a.txt"), "", "", {}},
        {"file", "a.txt", "a.txt", ResultYes, false, fileQuestion("a.txt"), "", "", {"Update"}},
        {"file the disk keeps",
         "b.txt",
         "b.txt",
         ResultYes,
         true,
         fileQuestion("b.txt"),
         "",
         "ShowError(Die Datei 'b.txt' konnte nicht gelöscht werden. Möglicherweise greift noch "
         "ein anderes Programm auf diese Datei zu oder Sie verfügen nicht über die notwendigen "
         "Zugriffsrechte|)",
         {}},
        {"no real file",
         "gone.txt",
         "gone.txt",
         ResultYes,
         false,
         "",
         "ShowInfo(Sie können nur echte Dateie löschen!|)",
         "",
         {}},
        {"folder with content",
         "sub\\",
         "sub",
         ResultYes,
         false,
         "Sind Sie sicher, daß Sie den Ordner 'sub' endgültig löschen wollen?" + folderQuestion,
         "",
         "",
         {"Update"}},
        {"link to a folder",
         "link\\",
         "link",
         ResultYes,
         false,
         "Sind Sie sicher, daß Sie den Ordner 'link' endgültig löschen wollen?" + folderQuestion,
         "",
         "",
         {"Update"}},
        {"folder the disk keeps",
         "keep\\",
         "keep",
         ResultYes,
         true,
         "Sind Sie sicher, daß Sie den Ordner 'keep' endgültig löschen wollen?" + folderQuestion,
         "",
         "ShowError(Der Ordner 'keep' konnte nicht gelöscht werden. Möglicherweise greift noch ein "
         "Programm darauf zu oder Sie verfügen nicht über die benötigten Zugriffsrechte.|)",
         {}},
        {"no folder",
         "gone\\",
         "gone",
         ResultYes,
         false,
         "",
         "ShowInfo(Sie können nur normale Ordner löschen!|)",
         "",
         {}},
        {"the user folder's alias",
         "USER",
         "Eigene Dateien",
         ResultYes,
         false,
         "Sind Sie sicher, daß Sie den Ordner 'Eigene Dateien' endgültig löschen wollen?" +
             folderQuestion,
         "",
         "",
         {"Update"}},
    };
    makeFile("a.txt");
    makeFile("b.txt");
    makeFile("sub/inner.txt");
    makeFile("real/kept.txt");
    makeFolder("keep");
    makeFile("home/x.txt");
    fs::create_directory_symlink(disk("real"), disk("link"));
    chooser.places.UserPath = root + "home\\";
    for (const DeleteCase& c : cases) {
        SCOPED_TRACE(c.name);
        chooser.list->ListItems().Clear();
        if (!c.text.empty())
            selectRow(c.key == "USER" ? "USER:\\" : root + c.key, c.text);
        chooser.steps.clear();
        host->clearCalls();
        files->refuseChanges = c.diskRefuses;
        host->answers("AskQuestion") = {std::to_string(c.answer)};

        commands.Run("DELETE");
        const auto questions = host->callsTo("AskQuestion");
        EXPECT_EQ(questions.empty() ? "" : questions[0],
                  c.question.empty() ? "" : "AskQuestion(" + c.question + ")");
        EXPECT_EQ(lastMessage("ShowInfo"), c.refusal);
        EXPECT_EQ(lastMessage("ShowError"), c.failure);
        EXPECT_EQ(chooser.steps, c.steps);
    }
    files->refuseChanges = false;
    EXPECT_TRUE(fs::exists(disk("b.txt")));
    EXPECT_FALSE(fs::exists(disk("a.txt")));
    EXPECT_FALSE(fs::exists(disk("sub")));
    EXPECT_FALSE(fs::exists(fs::symlink_status(disk("link"))));
    EXPECT_TRUE(fs::exists(disk("real/kept.txt"))) << "a link's target keeps its content";
    EXPECT_TRUE(fs::exists(disk("keep")));
    EXPECT_FALSE(fs::exists(disk("home")));
}

struct AddCase {
    const char* name;
    std::string place; ///< "" for the temporary folder
    std::vector<FavoriteItem> user, app;
    std::function<void(frm_DialogFolderFavorite&)> edit; ///< null: no editor expected
    std::string refusal;
    std::vector<std::string> savedUser, savedApp;
    Steps steps;
    std::string addedDetails; ///< "list: description|icon" of the entry added last
};

TEST_F(ChooserCommandsTest, AddingAFavouriteGoesThroughTheEditorToTheChosenList)
{
    const auto typeName = [](frm_DialogFolderFavorite& editor, const QString& name) {
        Focus(*editor.txt_Text);
        PressKey(editor, Qt::Key_A, Qt::ControlModifier);
        Type(editor, name);
    };
    const auto mine = [&](frm_DialogFolderFavorite& editor) {
        typeName(editor, QStringLiteral("Projekte"));
        Focus(*editor.txt_Description);
        Type(editor, QStringLiteral("Alles Laufende"));
        host->queueIconChoice("Ico\\16\\Own\\Star.ico");
        Click(*editor.pic_Icon);
        Click(*editor.opt_FavUser);
        editor.ctl_CmdBar1->Press(QStringLiteral("OK"));
    };
    const auto theirs = [&](frm_DialogFolderFavorite& editor) {
        typeName(editor, QStringLiteral("Ablage"));
        host->queueIconChoice("Ico\\16\\Own\\Star.ico");
        Click(*editor.pic_Icon);
        editor.ctl_CmdBar1->Press(QStringLiteral("OK"));
    };
    const auto abort = [](frm_DialogFolderFavorite& editor) {
        editor.ctl_CmdBar1->Press(QStringLiteral("ABORT"));
    };
    const FavoriteItem other{"Alt", "", "", "C:\\alt\\"};
    const std::string here = "=" + root;
    const AddCase cases[] = {
        {"a virtual place",
         "DESKTOP:\\",
         {},
         {},
         nullptr,
         "ShowInfo(Sie können nur 'echte' Ordner zu Ihren Favoriten hinzufügen!|)",
         {},
         {},
         {},
         ""},
        {"already the application's",
         "",
         {},
         {{"Da", "", "", "ROOT"}},
         nullptr,
         "ShowInfo(Dieser Ordner gehört bereits zu Ihren Favoriten!|)",
         {},
         {"Da" + here},
         {},
         ""},
        {"the first favourite, for the user",
         "",
         {},
         {},
         mine,
         "",
         {"Projekte" + here},
         {},
         {"Sidebar"},
         "user: Alles Laufende|Ico\\16\\Own\\Star.ico"},
        {"for the application with an icon, after another",
         "",
         {other},
         {},
         theirs,
         "",
         {"Alt=C:\\alt\\"},
         {"Ablage" + here},
         {},
         "app: |"},
        {"abandoned", "", {}, {}, abort, "", {}, {}, {}, ""},
    };
    for (const AddCase& c : cases) {
        SCOPED_TRACE(c.name);
        host->favourites[kUserKey] = c.user;
        host->favourites[kAppKey] = c.app;
        for (FavoriteItem& item : host->favourites[kAppKey])
            if (item.Path == "ROOT")
                item.Path = root;
        chooser.favourites.Load();
        chooser.places.CurrentPath = c.place.empty() ? root : c.place;
        chooser.steps.clear();
        host->clearCalls();
        const int shown = int(driver.Seen().size());
        if (c.edit)
            driver.OnNextModal([&](Form& form) {
                auto& editor = dynamic_cast<frm_DialogFolderFavorite&>(form);
                EXPECT_EQ(editor.txt_URL->Text().toStdString(), root);
                c.edit(editor);
            });

        commands.AddFavorite();
        EXPECT_EQ(int(driver.Seen().size()) - shown, c.edit ? 1 : 0);
        EXPECT_EQ(lastMessage("ShowInfo"), c.refusal);
        EXPECT_EQ(saved(kUserKey), c.savedUser);
        EXPECT_EQ(saved(kAppKey), c.savedApp);
        EXPECT_EQ(chooser.steps, c.steps);
        // The user's entry keeps what was entered; the application's only name and target.
        const std::string list = c.addedDetails.substr(0, c.addedDetails.find(':'));
        if (list.empty())
            continue;
        const FavoriteItem& added = host->favourites[list == "user" ? kUserKey : kAppKey].back();
        EXPECT_EQ(list + ": " + added.Description + "|" + added.Icon, c.addedDetails);
    }
}

struct RemoveCase {
    const char* name;
    std::string place;
    std::function<void()> act;
    std::int32_t answer;
    std::vector<std::string> savedUser, savedApp;
    Steps steps;
};

TEST_F(ChooserCommandsTest, RemovingAFavouriteTakesItFromOneListByMenuAndFromBothByList)
{
    const auto byMenu = [this](const std::string& key) {
        return [this, key] { commands.Run(key); };
    };
    const auto byList = [this] {
        selectRow("C:\\both\\", "Beide");
        commands.Run("DELETE");
    };
    const RemoveCase cases[] = {
        {"menu entry of the user's list",
         "FAVORITES:\\",
         byMenu("REMOVEFAVORITE.USER.1"),
         ResultYes,
         {},
         {"Beide=C:\\both\\", "Nur=C:\\only\\"},
         {"Update"}},
        {"menu entry of the application's list",
         "C:\\x\\",
         byMenu("REMOVEFAVORITE.APP.2"),
         ResultYes,
         {"Beide=C:\\both\\"},
         {"Beide=C:\\both\\"},
         {}},
        {"menu entry answered No",
         "FAVORITES:\\",
         byMenu("REMOVEFAVORITE.user.1"),
         ResultNo,
         {"Beide=C:\\both\\"},
         {"Beide=C:\\both\\", "Nur=C:\\only\\"},
         {}},
        {"an index beyond the list",
         "FAVORITES:\\",
         byMenu("REMOVEFAVORITE.APP.9"),
         ResultYes,
         {"Beide=C:\\both\\"},
         {"Beide=C:\\both\\", "Nur=C:\\only\\"},
         {}},
        {"list row held in both lists",
         "FAVORITES:\\",
         byList,
         ResultYes,
         {},
         {"Nur=C:\\only\\"},
         {"Update"}},
    };
    for (const RemoveCase& c : cases) {
        SCOPED_TRACE(c.name);
        host->favourites[kUserKey] = {{"Beide", "", "", "C:\\both\\"}};
        host->favourites[kAppKey] = {{"Beide", "", "", "C:\\both\\"},
                                     {"Nur", "", "", "C:\\only\\"}};
        chooser.favourites.Load();
        chooser.places.CurrentPath = c.place;
        chooser.places.UpPath = c.place;
        chooser.list->ListItems().Clear();
        chooser.steps.clear();
        host->answers("AskQuestion") = {std::to_string(c.answer)};

        c.act();
        EXPECT_EQ(saved(kUserKey), c.savedUser);
        EXPECT_EQ(saved(kAppKey), c.savedApp);
        EXPECT_EQ(chooser.steps, c.steps);
    }
}

TEST_F(ChooserCommandsTest, RemovingTheLastFavouriteLeavesTheFavouritesForTheDesktop)
{
    favourite(kUserKey, "Einzig", "C:\\one\\");
    chooser.places.CurrentPath = "FAVORITES:\\";
    host->queueQuestionAnswer(ResultYes);

    commands.Run("REMOVEFAVORITE.USER.1");
    EXPECT_EQ(host->callsTo("AskQuestion"),
              std::vector<std::string>{"AskQuestion(Sind Sie sicher, daß Sie den Favoriten "
                                       "'Einzig' löschen wollen?|Favorit löschen?|4|" +
                                       kDeleteIcon + "|DIALOG.FILE.DELETEFAVORITE)"});
    EXPECT_EQ(chooser.steps, (Steps{"Sidebar", "Goto DESKTOP:\\"}));
    EXPECT_TRUE(saved(kUserKey).empty());
    EXPECT_EQ(chooser.favourites.Total(), 0);
}

} // namespace
