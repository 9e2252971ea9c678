// The file chooser driven as a user drives it, over real temporary folders:
// what the name box, Return, the rows, the search box, the filter combo and
// the place strip make of it, and what reaches the host.
#include "ChooserTestSupport.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Steps.h"
#include "filechooser/FileDialogLayout.h"
#include "filechooser/frm_DialogFile.h"
#include "forms/Text.h"
#include "forms/testing/ListInput.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"

#include <QAbstractButton>
#include <QTest>
#include <gtest/gtest.h>

namespace fw {
namespace {

using testing::ModalDriver;

using Texts = std::vector<std::string>;

Texts RowTexts(const frm_DialogFile& f)
{
    return testing::RowTexts(*f.lst_Files);
}

/// Types into a box as a user does (focus, then keys), optionally pressing Return.
void TypeInto(frm_DialogFile& f, TextBox& box, const QString& text, bool enter = false)
{
    testing::Focus(box);
    testing::Type(f, text);
    if (enter)
        testing::PressKey(f, Qt::Key_Return);
}

/// Clicks the place strip's entry of a caption, as a user does.
void ClickStep(ctl_Steps& strip, const QString& caption)
{
    for (auto* entry : strip.widget()->findChildren<QAbstractButton*>())
        if (entry->accessibleName() == caption)
            return QTest::mouseClick(entry, Qt::LeftButton);
    ADD_FAILURE() << "no entry " << us(caption);
}

bool WaitClosed(const frm_DialogFile& f, int ms = 2000)
{
    return QTest::qWaitFor([&] { return f.IsUnloaded(); }, ms);
}

// A chooser over a temporary folder that is also the user's documents folder.
class FileChooser : public ::testing::Test {
  protected:
    void SetUp() override { FreshFolder(); }

    /// A new folder and a new host for the next case.
    void FreshFolder()
    {
        world.reset();
        world = std::make_unique<testing::ChooserWorld>();
        world->host->folders.documents = world->FolderLocation();
        world->host->folders.desktop = desktop::PosixToLocation(us(desktopDir.path()));
    }
    testing::TestHost& host() const { return *world->host; }
    std::string Location(const QString& relative) const
    {
        return relative.isEmpty() ? world->FolderLocation() : world->Location(us(relative));
    }
    static std::shared_ptr<DialogContext> Request(int mode)
    {
        auto ctx = std::make_shared<DialogContext>();
        ctx->Request.Mode = mode;
        return ctx;
    }
    static std::string Chosen(const DialogContext& ctx)
    {
        return ctx.Items.ItemList.Count() ? ctx.Items.ItemList.Item(1) : std::string();
    }

    /// Shows a chooser on ctx modally and runs action inside it; closes it if
    /// the action left it open.
    void Run(const std::shared_ptr<DialogContext>& ctx,
             const std::function<void(frm_DialogFile&)>& action)
    {
        frm_DialogFile chooser;
        chooser.Context = ctx;
        driver.OnNextModal([&](Form&) {
            action(chooser);
            if (!chooser.IsUnloaded())
                chooser.Unload();
        });
        chooser.Show(true);
    }

    QTemporaryDir desktopDir;
    std::unique_ptr<testing::ChooserWorld> world;
    ModalDriver driver;
};

struct OkCase {
    const char* name;
    int mode;
    Texts files;
    QString typed; ///< a leading "/" stands for the folder's own path
    const char* defaultExtension;
    bool overwritePrompt;
    int answer; ///< to the overwrite question; 0 asks nothing
    // Expected:
    int result;
    QString chosen; ///< relative to the folder; empty: entry 1 untouched
    bool closed;
    QString box;
    QString current; ///< where the chooser stands, relative; "=" for the start; or a drive
    Texts rows;
};

TEST_F(FileChooser, ReturnInTheNameBoxFollowsTheOkRules)
{
    // clang-format off
    const std::vector<OkCase> cases = {
        {"empty list and empty box do nothing",
         1, {}, "", "", false, 0, /**/ 2, "", false, "", "=", {}},
        {"a typed file of the folder is chosen",
         1, {"a.txt"}, "a.txt", "", false, 0, /**/ 1, "a.txt", true, "", "=", {}},
        {"a missing file is still handed back in open mode",
         1, {}, "neu.txt", "", false, 0, /**/ 1, "neu.txt", true, "", "=", {}},
        {"a relative folder part moves there first",
         2, {"sub/inner/"}, "sub\\inner\\x.txt", "", false, 0, /**/ 1, "sub/inner/x.txt", true, "", "=", {}},
        {"a star pattern filters and stays in the box",
         1, {"a.txt", "b.log", "c.txt"}, "*.txt", "", false, 0, /**/ 2, "", false, "*.txt", "=", {"a.txt", "c.txt"}},
        {"a question mark filters too",
         1, {"a.txt", "b.log", "cc.log"}, "?.log", "", false, 0, /**/ 2, "", false, "?.log", "=", {"b.log"}},
        {"a folder name beats the file of the same stem",
         1, {"report/", "report.txt"}, "report", "", false, 0, /**/ 2, "", false, "", "report/", {}},
        {"the file of that stem is taken with its extension",
         1, {"report/", "report.txt"}, "report.txt", "", false, 0, /**/ 1, "report.txt", true, "", "=", {}},
        {"declining the overwrite keeps the dialog open with an empty box",
         2, {"a.txt"}, "a.txt", "", true, 7, /**/ 1, "", false, "", "=", {"a.txt"}},
        {"accepting the overwrite chooses the file",
         2, {"a.txt"}, "a.txt", "", true, 6, /**/ 1, "a.txt", true, "", "=", {}},
        {"the default extension is added in save mode",
         2, {}, "brief", "txt", false, 0, /**/ 1, "brief.txt", true, "", "=", {}},
        {"a default extension with its dot gets no second one",
         2, {}, "brief", ".md", false, 0, /**/ 1, "brief.md", true, "", "=", {}},
        {"a name with an extension keeps it",
         2, {}, "brief.log", "txt", false, 0, /**/ 1, "brief.log", true, "", "=", {}},
        {"a missing file is not overwritten, so nothing is asked",
         2, {}, "neu.txt", "", true, 0, /**/ 1, "neu.txt", true, "", "=", {}},
        {"a typed posix path is understood",
         1, {"deep/hosts"}, "/deep/hosts", "", false, 0, /**/ 1, "deep/hosts", true, "", "=", {}},
        {"a drive moves there",
         1, {}, "C:", "", false, 0, /**/ 2, "", false, "C:", "C:\\", {}},
    };
    // clang-format on
    for (const OkCase& c : cases) {
        SCOPED_TRACE(c.name);
        FreshFolder();
        world->Make(c.files);
        auto ctx = Request(c.mode);
        ctx->Request.OverwritePrompt = c.overwritePrompt;
        ctx->Items.DefaultExtension = c.defaultExtension;
        if (c.answer)
            host().queueQuestionAnswer(c.answer);
        host().clearCalls();
        Run(ctx, [&](frm_DialogFile& f) {
            const bool posix = c.typed.startsWith(u'/');
            TypeInto(f, *f.txt_Filename, posix ? qs(world->Posix(us(c.typed.mid(1)))) : c.typed,
                     true);
            EXPECT_EQ(WaitClosed(f, c.closed ? 2000 : 250), c.closed);
            if (f.IsUnloaded())
                return;
            EXPECT_EQ(f.txt_Filename->Text(), c.box);
            EXPECT_EQ(f.Places().CurrentPath, c.current.contains(u':')
                                                  ? us(c.current)
                                                  : Location(c.current == u"=" ? "" : c.current));
            if (!c.rows.empty()) {
                EXPECT_EQ(RowTexts(f), c.rows);
            }
        });
        EXPECT_EQ(ctx->Request.Result, c.result);
        EXPECT_EQ(Chosen(*ctx), c.chosen.isEmpty() ? std::string() : Location(c.chosen));
        EXPECT_EQ(host().callsTo("AskQuestion").size(), c.answer ? 1u : 0u);
    }
}

TEST_F(FileChooser, ANameThatDiffersFromTheProposalInCaseIsAnotherFile)
{
    world->Make({"Bericht.txt", "BERICHT.txt"});
    for (const char* typed : {"BERICHT.txt", "Bericht.txt"}) {
        auto ctx = Request(1);
        ctx->Items.ItemList.Add(Location("Bericht.txt"));
        Run(ctx, [&](frm_DialogFile& f) {
            TypeInto(f, *f.txt_Filename, typed, true);
            EXPECT_TRUE(WaitClosed(f));
        });
        EXPECT_EQ(Chosen(*ctx), Location(typed));
    }
}

struct SetupCase {
    const char* name;
    int mode;
    std::vector<std::string> filters;
    int filterIndex;
    std::vector<std::string> items; ///< relative to the folder; "!" marks an absolute one
    const char* view;               ///< the registry's value, null for none
    // Expected:
    int filterRow;
    std::string filter;
    QString box;
    int listView;
};

TEST_F(FileChooser, SetUpReadsFiltersStartFileAndView)
{
    // clang-format off
    const std::vector<SetupCase> cases = {
        {"filter index picks its pair", 1, {"Text", "*.txt", "Log", "*.log"}, 2, {}, nullptr, /**/ 1, "*.log", "", 2},
        {"filter index 0 takes the first pair", 1, {"Text", "*.txt", "Log", "*.log"}, 0, {}, nullptr, /**/ 0, "*.txt", "", 2},
        {"filter index beyond the pairs takes the first", 1, {"Text", "*.txt"}, 5, {}, nullptr, /**/ 0, "*.txt", "", 2},
        {"an empty filter list filters nothing", 1, {}, 1, {}, nullptr, /**/ -1, "*.*", "", 2},
        {"an odd filter list keeps its last label", 1, {"Text", "*.txt", "Alle"}, 2, {}, nullptr, /**/ 1, "*.*", "", 2},
        {"an existing start file is proposed in open mode", 1, {}, 0, {"a.txt"}, nullptr, /**/ -1, "*.*", "a.txt", 2},
        {"a start file in a missing folder is not proposed for opening", 1, {}, 0, {"gone/x.txt"}, nullptr, /**/ -1, "*.*", "", 2},
        {"but is proposed for saving", 2, {}, 0, {"gone/x.txt"}, nullptr, /**/ -1, "*.*", "x.txt", 2},
        {"a wildcard start file with a folder proposal is dropped", 2, {}, 0, {"*.txt", "sub/"}, nullptr, /**/ -1, "*.*", "x", 2},
        {"a view beyond the four shows the list", 1, {}, 0, {}, "7", /**/ -1, "*.*", "", 2},
        {"details view", 1, {}, 0, {}, "3", /**/ -1, "*.*", "", 3},
    };
    // clang-format on
    for (const SetupCase& c : cases) {
        SCOPED_TRACE(c.name);
        world->Make({"a.txt", "sub/"});
        host().registry.clear();
        if (c.view)
            host().setRegistry(HiveCurrentUser, "Software\\Valdrenix\\Core\\Settings\\FolderView",
                               c.view);
        auto ctx = Request(c.mode);
        ctx->Request.FilterIndex = c.filterIndex;
        for (const std::string& f : c.filters)
            ctx->Request.FilterList.Add(f);
        // Wildcards go in as typed: a location would keep "*" as a name character.
        for (const std::string& item : c.items)
            ctx->Items.ItemList.Add(item[0] == '*' ? Location("") + "\\" + item
                                                   : Location(qs(item)));
        Run(ctx, [&](frm_DialogFile& f) {
            EXPECT_EQ(f.lst_Filter->ListIndex(), c.filterRow);
            EXPECT_EQ(f.lst_Filter->ListCount(), int(c.filters.size() + 1) / 2);
            EXPECT_EQ(f.Filter(), c.filter);
            if (c.box != u"x") {
                EXPECT_EQ(f.txt_Filename->Text(), c.box);
            }
            EXPECT_EQ(f.lst_Files->View(), c.listView);
            EXPECT_EQ(ctx->Request.Result, 2);
        });
        if (c.box == u"x") {
            ASSERT_EQ(ctx->Items.ItemList.Count(), 1);
            EXPECT_EQ(ctx->Items.ItemList.Item(1), Location("sub/"));
        }
    }
}

TEST_F(FileChooser, SearchThinsRowsAndRefillsOnlyWhenNeeded)
{
    world->Make({"apple.txt", "apricot.txt", "banana.txt", "grape.txt", "kiwi.txt"});
    Run(Request(1), [&](frm_DialogFile& f) {
        TypeInto(f, *f.txt_SearchFor, QStringLiteral("a"));
        EXPECT_EQ(RowTexts(f).size(), 4u);
        // A file that goes now shows until a refill: typing on needs none.
        QFile::remove(qs(world->Posix("apple.txt")));
        testing::Type(f, QStringLiteral("p"));
        EXPECT_EQ(RowTexts(f), (Texts{"apple.txt", "apricot.txt", "grape.txt"}));
        EXPECT_EQ(f.lab_FileCount->Caption(), QStringLiteral("3 Treffer für *ap*"));
        EXPECT_EQ(f.txt_Filename->Text(), QStringLiteral("apple.txt"));
        testing::PressKey(f, Qt::Key_Backspace);
        EXPECT_EQ(RowTexts(f), (Texts{"apricot.txt", "banana.txt", "grape.txt"}));
        testing::PressKey(f, Qt::Key_Down);
        EXPECT_TRUE(f.lst_Files->HasFocus());
        // A refill for another cause empties the box.
        f.lab_FileCount->LinkClick(QStringLiteral("SHOWALL"));
        EXPECT_EQ(f.txt_SearchFor->Text(), QString());
        EXPECT_EQ(RowTexts(f).size(), 4u);
    });
}

TEST_F(FileChooser, FilterComboListsTheChosenPattern)
{
    world->Make({"a.txt", "b.log", "sub/"});
    auto ctx = Request(1);
    ctx->Request.FilterList = {"Text", "*.txt", "Log", "*.log"};
    Run(ctx, [&](frm_DialogFile& f) {
        EXPECT_EQ(RowTexts(f), (Texts{"sub", "a.txt"}));
        testing::Focus(*f.lst_Filter);
        testing::PressKey(f, Qt::Key_Down);
        EXPECT_EQ(f.Filter(), "*.log");
        EXPECT_EQ(RowTexts(f), (Texts{"sub", "b.log"}));
    });
}

TEST_F(FileChooser, RowsKeysAndStripMoveBetweenPlaces)
{
    world->Make({"sub/inner.txt", "top.txt"});
    auto ctx = Request(1);
    Run(ctx, [&](frm_DialogFile& f) {
        ListItems& rows = f.lst_Files->ListItems();
        testing::DoubleClickItem(*f.lst_Files, rows.Item(1));
        EXPECT_EQ(f.Places().CurrentPath, Location("sub/"));
        EXPECT_EQ(RowTexts(f), Texts{"inner.txt"});
        testing::Focus(*f.lst_Files);
        testing::PressKey(f, Qt::Key_Backspace);
        EXPECT_EQ(f.Places().CurrentPath, Location(""));
        ClickStep(*f.cat_Folder, QStringLiteral("Netzwerk"));
        EXPECT_EQ(f.Places().CurrentPath, "NETHOOD:\\");
        EXPECT_GT(f.cat_Folder->SelectedIndex(), 0);
        testing::Click(*f.but_FolderUp);
        EXPECT_EQ(f.Places().CurrentPath, "DESKTOP:\\");
        EXPECT_EQ(f.cat_Folder->SelectedIndex(), 0);
        f.GotoFolder(Location(""));
        host().queueMenuChoice("CREATEFOLDER");
        host().queueTextAnswer("Neu");
        testing::Click(*f.but_Tool);
        EXPECT_TRUE(QDir(qs(world->Posix({})) + QStringLiteral("/Neu")).exists());
        f.GotoFolder(Location(""));
        testing::DoubleClickItem(*f.lst_Files, rows.Item(rows.Count()));
        WaitClosed(f);
    });
    EXPECT_EQ(ctx->Request.Result, 1);
    EXPECT_EQ(Chosen(*ctx), Location("top.txt"));
}

struct HelpSink : EventSink {
    std::vector<std::string> names;
    void Notify(Form&, const std::string& name) override { names.push_back(name); }
};

TEST_F(FileChooser, ViewMenuHelpAndRightClickReachTheHost)
{
    world->Make({"a.txt"});
    auto ctx = Request(1);
    auto help = std::make_shared<HelpSink>();
    ctx->EventLink.EventSink = help;
    Run(ctx, [&](frm_DialogFile& f) {
        host().queueMenuChoice("VIEW.DETAILS");
        testing::Click(*f.but_View);
        EXPECT_EQ(f.lst_Files->View(), 3);
        EXPECT_EQ(host().registryValue(HiveCurrentUser,
                                       "Software\\Valdrenix\\Core\\Settings\\FolderView"),
                  "3");
        // Help stays open and reaches the host once the click has returned.
        f.bar_Buttons->Press(QStringLiteral("HELP"));
        EXPECT_TRUE(help->names.empty());
        EXPECT_TRUE(QTest::qWaitFor([&] { return !help->names.empty(); }, 1000));
        EXPECT_EQ(help->names, std::vector<std::string>{"FILE.HELP"});
        // A right click on a row offers "Öffnen"; choosing it opens the row.
        host().queueMenuChoice("OPEN");
        const QRect row = f.lst_Files->ItemRect(f.lst_Files->ListItems().Item(1));
        QTest::mousePress(f.lst_Files->viewport(), Qt::RightButton, {}, row.center());
        WaitClosed(f);
    });
    EXPECT_EQ(ctx->Request.Result, 1);
    EXPECT_EQ(Chosen(*ctx), Location("a.txt"));
}

struct LayoutCase {
    const char* name;
    int width;
    bool preview;
    bool search;
};

TEST(FileDialogLayout, PanesTileTheFormWithoutOverlap)
{
    const std::vector<LayoutCase> cases = {
        {"minimum", MinimumFileDialogWidth(false), false, true},
        {"minimum with preview", MinimumFileDialogWidth(true), true, true},
        {"wide without search", 19200, false, false},
        {"wide with preview and search", 19200, true, true},
    };
    for (const LayoutCase& c : cases) {
        SCOPED_TRACE(c.name);
        // clang-format off
        const FileDialogSizes s{.scaleWidth = c.width, .scaleHeight = 9000, .headerHeight = 900,
                                .buttonsHeight = 600, .stripWidth = 2250, .preview = c.preview,
                                .searchVisible = c.search, .fileFrameHeight = 1500, .folderFrameTop = 75,
                                .nameBoxLeft = 1500, .buttonsWidth = 1600, .searchLabelWidth = 700,
                                .placeComboLeft = 150, .listTop = 700, .countHeight = 270};
        // clang-format on
        const FileDialogPlacement p = PlaceFileDialog(s);
        // Stacked: folder frame, then the name frame, then the command bar.
        EXPECT_EQ(p.folderFrame.top + p.folderFrame.height + 75, p.fileFrame.top);
        EXPECT_EQ(p.fileFrame.top + p.fileFrame.height + 75, s.scaleHeight - s.buttonsHeight);
        EXPECT_EQ(p.strip.left + p.strip.width + 75, p.fileFrame.left);
        EXPECT_LE(p.countLine.top + p.countLine.height, p.folderFrame.top + p.folderFrame.height);
        EXPECT_EQ(p.list.width, p.folderFrame.width - 300);
        const int right = c.preview ? p.previewFrame.left : s.scaleWidth;
        EXPECT_EQ(p.folderFrame.left + p.folderFrame.width + 75, right);
        if (c.preview) {
            EXPECT_EQ(p.previewFrame.width, c.width / 4);
        }
        if (c.search) {
            EXPECT_LT(s.placeComboLeft + p.placeComboWidth, p.searchLabelLeft);
            EXPECT_EQ(p.searchBoxLeft + p.searchBoxWidth + 75, p.buttonsLeft);
        } else {
            EXPECT_EQ(p.placeComboWidth,
                      int(std::lround((p.buttonsLeft - s.placeComboLeft - 75) * 0.6)));
        }
    }
}

} // namespace
} // namespace fw
