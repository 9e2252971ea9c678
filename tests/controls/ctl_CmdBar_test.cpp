#include "ControlsTestForm.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "testing/TestHost.h"

#include <QAbstractButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using fw::CmdBarButton;
using fw::ctl_CmdBar;
using fw::testing::ControlsTestForm;

QAbstractButton* rowButton(ctl_CmdBar& bar, const QString& key)
{
    return bar.container()->findChild<QAbstractButton*>(QStringLiteral("cmd_") + key);
}

class CmdBarTest : public ::testing::Test {
  protected:
    CmdBarTest()
    {
        bar = form.Add<ctl_CmdBar>(QStringLiteral("ctl_Sidebar"), nullptr);
        bar->AddButton("OK", "OK", "Ico\\20\\Computer\\Signs\\ok.ico", "DIALOG.OK();");
        bar->AddButton("ABORT", "&Abbrechen", "", "DIALOG.ABORT();");
        bar->AddButton("HELP", "Hilfe", "", "DIALOG.HELP();");
        bar->Script = [this](const QString& s) { events << "Script " + s; };
        bar->Key = [this](const QString& k) { events << "Key " + k; };
        form.ShowNow();
    }

    fw::testing::ScopedTestHost host;
    ControlsTestForm form;
    ctl_CmdBar* bar = nullptr;
    QStringList events;
};

TEST_F(CmdBarTest, ClickReturnOrSpaceOnARowRaisesItsScriptThenItsKey)
{
    QAbstractButton* abort = rowButton(*bar, "ABORT");
    ASSERT_NE(abort, nullptr);
    QTest::mouseClick(abort, Qt::LeftButton);
    abort->setFocus();
    fw::testing::PressKey(form, Qt::Key_Return);
    fw::testing::PressKey(form, Qt::Key_Space);
    EXPECT_EQ(events, QStringList({"Script DIALOG.ABORT();", "Key ABORT", "Script DIALOG.ABORT();",
                                   "Key ABORT", "Script DIALOG.ABORT();", "Key ABORT"}));
}

TEST_F(CmdBarTest, ReturnAndEscapePressTheOkAndAbortRowsOnlyWhileTheyExist)
{
    fw::testing::PressKey(form, Qt::Key_Return);
    fw::testing::PressKey(form, Qt::Key_Escape);
    EXPECT_EQ(events, QStringList({"Script DIALOG.OK();", "Key OK", "Script DIALOG.ABORT();",
                                   "Key ABORT"}));
    events.clear();
    bar->ClearButtons();
    bar->AddButton("SAVE", "&Speichern", "", "DIALOG.SAVE();");
    EXPECT_FALSE(bar->IsDefaultButton());
    EXPECT_FALSE(bar->IsCancelButton());
    fw::testing::PressKey(form, Qt::Key_Return);
    fw::testing::PressKey(form, Qt::Key_Escape);
    EXPECT_TRUE(events.isEmpty());
    EXPECT_FALSE(bar->Press("OK"));
    EXPECT_TRUE(bar->Press("save"));
    EXPECT_EQ(events, QStringList({"Script DIALOG.SAVE();", "Key SAVE"}));
}

TEST_F(CmdBarTest, HelpShowsAtTheLeftUntilSwitchedOff)
{
    QAbstractButton* help = rowButton(*bar, "HELP");
    QAbstractButton* ok = rowButton(*bar, "OK");
    QAbstractButton* abort = rowButton(*bar, "ABORT");
    EXPECT_TRUE(help->isVisible());
    EXPECT_LT(help->x(), ok->x());
    EXPECT_LT(ok->x(), abort->x());
    EXPECT_GT(abort->geometry().right(), bar->container()->width() - 24);

    bar->SetHelpVisible(false);
    fw::testing::ProcessEvents();
    for (auto* button : bar->container()->findChildren<QAbstractButton*>("cmd_HELP"))
        EXPECT_FALSE(button->isVisible());
    EXPECT_FALSE(bar->Press("HELP"));
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(CmdBarTest, DocksToTheBottomAtFullWidthAndFollowsResizes)
{
    EXPECT_EQ(bar->container()->height(), 48);
    form.window()->resize(600, 360);
    fw::testing::ProcessEvents();
    EXPECT_EQ(bar->container()->geometry(), QRect(0, 360 - 48, 600, 48));
}

TEST_F(CmdBarTest, LeavesButtonsOfTheFormWhereTheFormPutThem)
{
    bar->ClearButtons();
    auto* answer = form.Add<fw::ctl_Button>(QStringLiteral("but_Sel"), bar->container());
    answer->SetText("&Ja");
    answer->SetDefault(true);
    answer->Move(fw::ToTwips(37), fw::ToTwips(9));
    int clicks = 0;
    answer->Click = [&] { ++clicks; };
    form.window()->resize(520, 320);
    bar->ButtonsChanged();
    fw::testing::ProcessEvents();
    EXPECT_EQ(answer->widget()->pos(), QPoint(37, 9));
    fw::testing::PressKey(form, Qt::Key_Return);
    EXPECT_EQ(clicks, 1);
}

TEST(CmdBarButton, PropertyListHasTheStoredLayoutAndRoundTripsAnyText)
{
    struct Row {
        const char* name;
        CmdBarButton row;
    };
    const std::vector<Row> rows = {
        {"plain", {"PRINT", "Drucken", "Ico\\20\\Computer\\Signs\\Print.ico", "DIALOG.PRINT();"}},
        {"pipes", {"A|B", "|x||", "|", "a|b|c"}},
        {"backslashes", {"\\", "\\|\\\\", "C:\\a\\", "\\n"}},
        {"line breaks", {"K", "zwei\nZeilen\r\n", "\n", "x\\\ny"}},
        {"empty", {"", "", "", ""}},
        {"hidden and disabled", {"X", "X", "", "", false, false}},
    };
    for (const Row& r : rows) {
        const QString list = r.row.ToPropertyList();
        EXPECT_FALSE(list.contains(u'\n')) << r.name;
        const CmdBarButton back = CmdBarButton::FromPropertyList(list);
        EXPECT_EQ(back.Key, r.row.Key) << r.name;
        EXPECT_EQ(back.Caption, r.row.Caption) << r.name;
        EXPECT_EQ(back.IconPath, r.row.IconPath) << r.name;
        EXPECT_EQ(back.Script, r.row.Script) << r.name;
        EXPECT_EQ(back.Visible, r.row.Visible) << r.name;
        EXPECT_EQ(back.Enabled, r.row.Enabled) << r.name;
    }
    EXPECT_EQ(rows[0].row.ToPropertyList(),
              "1.3|PRINT|Drucken|Ico\\\\20\\\\Computer\\\\Signs\\\\Print.ico"
              "|-1|-1|PRINT|DIALOG.PRINT();|0|0||")
        << "the stored layout";
}

} // namespace
