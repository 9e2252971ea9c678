// The folder chooser driven as a user drives it, over real temporary folders:
// where clicks, keys and the strip lead, what OK hands back, and where it
// parts from the file chooser (folders only, German only, its own sizes).
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Frame.h"
#include "controls/ctl_Steps.h"
#include "core/cls_Formwerk.h"
#include "filechooser/ChooserTestSupport.h"
#include "folders/frm_DialogFolder.h"
#include "forms/Screen.h"
#include "forms/Text.h"
#include "forms/testing/ListInput.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"

#include <QAbstractButton>
#include <QTest>
#include <gtest/gtest.h>

namespace fw {
namespace {

using Texts = std::vector<std::string>;

void ClickStep(ctl_Steps& strip, const QString& caption)
{
    for (auto* entry : strip.widget()->findChildren<QAbstractButton*>())
        if (entry->accessibleName() == caption)
            return QTest::mouseClick(entry, Qt::LeftButton);
    ADD_FAILURE() << "no entry " << us(caption);
}

// With the mouse, so that the list loses the focus as it does for a user.
void ClickBar(frm_DialogFolder& f, const QString& key)
{
    auto* button =
        f.bar_Buttons->container()->findChild<QAbstractButton*>(QStringLiteral("cmd_") + key);
    ASSERT_NE(button, nullptr) << us(key);
    QTest::mouseClick(button, Qt::LeftButton);
}

ListItem* RowOf(frm_DialogFolder& f, const std::string& text)
{
    ListItems& rows = f.lst_Files->ListItems();
    for (int i = 1; i <= rows.Count(); ++i)
        if (rows.Item(i).Text() == qs(text))
            return &rows.Item(i);
    ADD_FAILURE() << "no row " << text;
    return nullptr;
}

std::vector<std::string> StripCaptions(const ctl_Steps& strip)
{
    std::vector<std::string> captions;
    for (int i = 1; i <= strip.Count(); ++i)
        captions.push_back(us(strip.Caption(i)));
    return captions;
}

class FolderChooser : public ::testing::Test {
  protected:
    void SetUp() override
    {
        world.host->folders.documents = world.FolderLocation("docs");
        world.host->folders.desktop = desktop::PosixToLocation(us(desktopDir.path()));
        world.Make({"docs/", "a.txt", "b/", "sub/inner/", "sub/x.txt"});
    }
    testing::TestHost& host() const { return *world.host; }
    std::shared_ptr<DialogContext> Request(const std::string& start) const
    {
        auto ctx = std::make_shared<DialogContext>();
        ctx->Items.ItemList.Add(start);
        return ctx;
    }
    void Run(const std::shared_ptr<DialogContext>& ctx,
             const std::function<void(frm_DialogFolder&)>& action)
    {
        frm_DialogFolder chooser;
        chooser.Context = ctx;
        driver.OnNextModal([&](Form&) {
            action(chooser);
            if (!chooser.IsUnloaded())
                chooser.Unload();
        });
        chooser.Show(true);
    }
    /// A user's step: "open NAME" (double click), "select NAME", "Return"
    /// (in the list), "Backspace", "Previous", "Next", "Up", "strip CAPTION".
    void Act(frm_DialogFolder& f, const std::string& step)
    {
        const auto arg = [&](const char* verb) {
            return step.rfind(verb, 0) == 0 ? step.substr(std::string(verb).size()) : std::string();
        };
        if (const std::string name = arg("open "); !name.empty()) {
            if (ListItem* row = RowOf(f, name))
                testing::DoubleClickItem(*f.lst_Files, *row);
        } else if (const std::string name = arg("select "); !name.empty()) {
            if (ListItem* row = RowOf(f, name))
                testing::ClickItem(*f.lst_Files, *row);
        } else if (const std::string caption = arg("strip "); !caption.empty()) {
            ClickStep(*f.cat_Folder, qs(caption));
        } else if (step == "Return" || step == "Backspace") {
            testing::Focus(*f.lst_Files);
            testing::PressKey(f, step == "Return" ? Qt::Key_Return : Qt::Key_Backspace);
        } else {
            ctl_Button* button = step == "Previous" ? f.but_Previous
                                 : step == "Next"   ? f.but_NavNext
                                                    : f.but_FolderUp;
            testing::Click(*button);
        }
    }
    std::string Where(const std::string& relative) const
    {
        if (relative.find(":\\") != std::string::npos)
            return relative;
        return relative == "=" ? world.FolderLocation() : world.Location(relative);
    }

    QTemporaryDir desktopDir;
    testing::ChooserWorld world;
    testing::ModalDriver driver;
};

struct WalkCase {
    const char* name;
    Texts steps;
    // Expected:
    std::string at; ///< relative to the start folder, "=" for it, or a place
    Texts rows;     ///< empty: not checked
};

TEST_F(FolderChooser, ClicksKeysAndTheStripWalkTheFolders)
{
    // clang-format off
    const std::vector<WalkCase> cases = {
        {"the start lists its folders only", {}, "=", {"b", "docs", "sub"}},
        {"a double click enters a folder", {"open sub"}, "sub/", {"inner"}},
        {"Previous right after opening does nothing", {"Previous"}, "=", {"b", "docs", "sub"}},
        {"Previous and Next walk the history", {"open sub", "Previous", "Next"}, "sub/", {}},
        {"Next after a fresh navigation does nothing", {"open sub", "Previous", "open b", "Next"}, "b/", {}},
        {"Backspace in the list goes one level up", {"open sub", "Backspace"}, "=", {}},
        {"the up button goes one level up", {"open sub", "open inner", "Up"}, "sub/", {"inner"}},
        {"Return in the list opens the selected row", {"select sub", "Return"}, "sub/", {"inner"}},
        {"a place row leads to its key", {"strip Desktop", "open Arbeitsplatz"}, "WORKSTATION:\\", {}},
        {"the strip leads to the network", {"strip Netzwerk"}, "NETHOOD:\\", {}},
        {"up from the network is the desktop", {"strip Netzwerk", "Up"}, "DESKTOP:\\", {}},
    };
    // clang-format on
    for (const WalkCase& c : cases) {
        SCOPED_TRACE(c.name);
        auto ctx = Request(world.FolderLocation());
        Run(ctx, [&](frm_DialogFolder& f) {
            for (const std::string& step : c.steps)
                Act(f, step);
            EXPECT_FALSE(f.IsUnloaded());
            EXPECT_EQ(f.Places().CurrentPath, Where(c.at));
            if (!c.rows.empty()) {
                EXPECT_EQ(testing::RowTexts(*f.lst_Files), c.rows);
            }
        });
        EXPECT_EQ(ctx->Request.Result, ResultAbort);
    }
}

struct OkCase {
    const char* name;
    std::string start; ///< relative; "desktop" for the desktop folder
    Texts steps;
    QString button;
    // Expected:
    int result;
    std::string chosen; ///< relative, or a place
};

TEST_F(FolderChooser, OkHandsBackTheLocationAsItStands)
{
    // clang-format off
    const std::vector<OkCase> cases = {
        {"OK takes the start folder", "=", {}, "OK", /**/ ResultOk, "="},
        {"OK takes the folder entered", "=", {"open sub"}, "OK", /**/ ResultOk, "sub/"},
        {"the desktop stays a place", "=", {"strip Desktop"}, "OK", /**/ ResultOk, "DESKTOP:\\"},
        {"a start at the desktop opens the place", "desktop", {}, "OK", /**/ ResultOk, "DESKTOP:\\"},
        {"a missing start opens the documents folder", "gone/", {}, "OK", /**/ ResultOk, "docs/"},
        {"the network place is handed back too", "=", {"strip Netzwerk"}, "OK", /**/ ResultOk, "NETHOOD:\\"},
        {"abort keeps the request's entry", "=", {"open sub"}, "ABORT", /**/ ResultAbort, "!"},
    };
    // clang-format on
    for (const OkCase& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string start =
            c.start == "desktop" ? desktop::PosixToLocation(us(desktopDir.path())) : Where(c.start);
        auto ctx = Request(start);
        Run(ctx, [&](frm_DialogFolder& f) {
            for (const std::string& step : c.steps)
                Act(f, step);
            ClickBar(f, c.button);
            EXPECT_TRUE(QTest::qWaitFor([&] { return f.IsUnloaded(); }, 1000));
        });
        EXPECT_EQ(ctx->Request.Result, c.result);
        ASSERT_EQ(ctx->Items.ItemList.Count(), 1);
        EXPECT_EQ(ctx->Items.ItemList.Item(1), c.chosen == "!" ? start : Where(c.chosen));
    }
}

TEST_F(FolderChooser, SpeaksGermanWhateverTheHostLanguage)
{
    host().language = 9;
    host().favourites["Software\\Valdrenix\\Core\\Settings\\FolderFavorites"] = {
        {"Projekte", "", "", world.FolderLocation("sub")}};
    auto ctx = Request(world.FolderLocation());
    Run(ctx, [&](frm_DialogFolder& f) {
        EXPECT_EQ(f.Caption(), QStringLiteral("Ordner wählen"));
        // Favourites first, no removable drives, German captions.
        EXPECT_EQ(StripCaptions(*f.cat_Folder),
                  (Texts{"&Favoriten", "&Desktop", "&Vorgabe", "&Eigene Dateien", "&Arbeitsplatz",
                         "&Netzwerk"}));
        const ListItem* row = RowOf(f, "sub");
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->Key(), qs(world.FolderLocation("sub")).toUpper());
        EXPECT_EQ(row->Icon(), QStringLiteral("CLOSED"));
        EXPECT_EQ(row->SubItem(1), QStringLiteral("-"));
        EXPECT_EQ(row->SubItem(2), QStringLiteral("Ordner"));
        EXPECT_EQ(row->SubItem(3), QStringLiteral("-"));
        EXPECT_EQ(row->SubItem(4), QStringLiteral("A:sub"));
        EXPECT_EQ(row->Tag(), qs(world.FolderLocation("sub")));

        host().queueMenuChoice("VIEW.DETAILS");
        testing::Click(*f.but_View);
        ASSERT_FALSE(host().menus.empty());
        EXPECT_EQ(host().menus.back()->rows.front(), "Große Symbole|VIEW.LARGE|-1|-1|0|");
        EXPECT_EQ(f.lst_Files->View(), 3);
        // An unknown key keeps the view but writes it all the same.
        host().registry.clear();
        host().queueMenuChoice("");
        testing::Click(*f.but_View);
        EXPECT_EQ(host().registryValue(HiveCurrentUser,
                                       "Software\\Valdrenix\\Core\\Settings\\FolderView"),
                  "3");

        // A folder that cannot be read is told in German; then the drive list.
        f.GotoFolder(world.FolderLocation("gone"));
        const auto errors = host().callsTo("ShowError");
        ASSERT_EQ(errors.size(), 1u);
        EXPECT_EQ(errors[0].rfind("ShowError(Das ausgewählte Laufwerk ist nicht bereit: ", 0), 0u)
            << errors[0];
        EXPECT_EQ(f.Places().CurrentPath, "WORKSTATION:\\");
    });
}

TEST_F(FolderChooser, TitleIconHelpAndTheFactoryNames)
{
    auto ctx = Request(world.FolderLocation());
    ctx->Request.Title = "Ziel für die Sicherung";
    std::vector<std::string> askedIcons;
    ctx->Request.IconFor = [&](const std::string& path) {
        askedIcons.push_back(path);
        return PicturePtr();
    };
    struct HelpSink : EventSink {
        std::vector<std::string> names;
        void Notify(Form&, const std::string& name) override { names.push_back(name); }
    };
    auto help = std::make_shared<HelpSink>();
    ctx->EventLink.EventSink = help;
    Run(ctx, [&](frm_DialogFolder& f) {
        EXPECT_EQ(f.Caption(), QStringLiteral("Ziel für die Sicherung"));
        ClickBar(f, QStringLiteral("HELP"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return !help->names.empty(); }, 1000));
        EXPECT_EQ(help->names, Texts{"FILE.HELP"});
        EXPECT_FALSE(f.IsUnloaded());
    });
    EXPECT_EQ(askedIcons, Texts{"Ico\\16\\Computer\\Folders\\Open.ico"});
    for (const char* name : {"frm_DialogFolder", "frm_DialogPath"})
        EXPECT_NE(dynamic_cast<frm_DialogFolder*>(cls_Formwerk().Create(name).get()), nullptr)
            << name;
}

struct SizeCase {
    const char* name;
    int width;
    int height;
    // Expected:
    int keptWidth;
    int keptHeight;
};

TEST_F(FolderChooser, OpensRoomyAndSnapsBackBelowItsLeastSize)
{
    // clang-format off
    const std::vector<SizeCase> cases = {
        {"too narrow snaps back", 6000, 7500, /**/ 9285, 7500},
        {"a height between the two least ones stays", 9990, 6000, /**/ 9990, 6000},
        {"too low snaps to the drag minimum", 9990, 4005, /**/ 9990, 5340},
    };
    // clang-format on
    auto ctx = Request(world.FolderLocation());
    Run(ctx, [&](frm_DialogFolder& f) {
        EXPECT_GE(f.Width(), 9285);
        EXPECT_GE(f.Height(), 6810);
        for (const SizeCase& c : cases) {
            SCOPED_TRACE(c.name);
            f.Move(f.Left(), f.Top(), c.width, c.height);
            testing::ProcessEvents();
            EXPECT_EQ(f.Width(), c.keptWidth);
            EXPECT_EQ(f.Height(), c.keptHeight);
            // The list fills the frame to its right edge.
            EXPECT_EQ(f.lst_Files->Left() + f.lst_Files->Width() + 2 * ToTwips(5),
                      f.frm_Folder->Width());
        }
    });
}

} // namespace
} // namespace fw
