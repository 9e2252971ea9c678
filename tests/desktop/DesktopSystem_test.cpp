// Window edges and effects, monitors, control tools and the list of open forms.
#include "desktop/DesktopMessages.h"
#include "desktop/DesktopSystem.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"

#include <QApplication>
#include <QHeaderView>
#include <QScreen>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace fw::desktop;

namespace {

// A shown form with a text box, a two-column list and a second text box 50
// pixels to the right of the first; unloaded after the test.
struct ShownForm {
    fw::Form form{"frm_Test"};
    fw::TextBox* text = form.Add<fw::TextBox>("txt_Input");
    fw::TextBox* memo = form.Add<fw::TextBox>("txt_Memo", true);
    QTreeWidget* tree = new QTreeWidget(form.clientArea());
    fw::Control* list = form.Add<fw::Control>("lst_View", "ListView", tree);

    ShownForm()
    {
        tree->setColumnCount(2);
        tree->header()->setStretchLastSection(false);
        form.window()->resize(600, 400);
        tree->setGeometry(10, 100, 400, 200);
        text->widget()->setGeometry(10, 10, 100, 20);
        memo->widget()->setGeometry(60, 10, 100, 60);
        form.Show(false);
    }
    ~ShownForm() { form.Unload(); }
};

TEST(DesktopControls, SelectAllSelectsTheWholeTextOfOneAndMultiLineBoxes)
{
    ShownForm shown;
    shown.text->SetText("Hallo Welt");
    shown.memo->SetText("eins\nzwei");
    DesktopControls controls;
    controls.TextBoxes().SelectAll(*shown.text);
    controls.TextBoxes().SelectAll(*shown.memo);
    EXPECT_EQ(shown.text->SelText(), "Hallo Welt");
    EXPECT_EQ(shown.memo->SelLength(), 9);
    controls.TextBoxes().SelectAll(*shown.list); // not a text box: left alone
}

TEST(DesktopControls, ColumnWidthsShareTheVisibleWidthByPercent)
{
    ShownForm shown;
    DesktopControls controls;
    const int width = shown.tree->viewport()->width();
    controls.ListViews().SetColumnWidths(*shown.list, "40,60");
    EXPECT_NEAR(shown.tree->header()->sectionSize(0), width * 0.4, 1);
    EXPECT_NEAR(shown.tree->header()->sectionSize(1), width * 0.6, 1);
    controls.ListViews().SetColumnWidths(*shown.list, "junk,,20,40,40"); // bad or extra parts
    EXPECT_NEAR(shown.tree->header()->sectionSize(0), width * 0.4, 1) << "unchanged";
    EXPECT_NEAR(shown.tree->header()->sectionSize(1), width * 0.6, 1) << "unchanged";
    controls.ListViews().SetColumnWidths(*shown.text, "50,50"); // no list: nothing happens
}

TEST(DesktopControls, AListNotYetShownGetsColumnsOfTheWidthItWasGiven)
{
    fw::Form form{"frm_Test"};
    auto* list = form.Add<fw::ListView>("lst_Files");
    for (const char* text : {"Dateiname", "Größe", "Typ", "Geändert am", "Sortierung"})
        list->ColumnHeaders().Add(text);
    list->Move(0, 0, fw::ToTwips(640), fw::ToTwips(300));
    list->SetView(fw::lvwReport);
    DesktopControls().ListViews().SetColumnWidths(*list, "40,20,20,20,0");
    const int first = fw::ToPixels(list->ColumnHeaders().Item(1).Width());
    EXPECT_GT(first, 200); // 40 % of 640 less frame and scroll bar
    EXPECT_LE(first, 256);
    EXPECT_EQ(fw::ToPixels(list->ColumnHeaders().Item(5).Width()), 0);
    form.Unload();
}

TEST(DesktopWindows, EdgesFollowTheWidgetAndEffectsComeAndGo)
{
    ShownForm shown;
    DesktopWindows windows;
    EXPECT_EQ(windows.windowRight(*shown.list) - windows.windowLeft(*shown.list), 400);
    EXPECT_EQ(windows.windowBottom(*shown.list) - windows.windowTop(*shown.list), 200);
    EXPECT_EQ(windows.windowLeft(*shown.memo) - windows.windowLeft(*shown.text), 50);
    EXPECT_EQ(windows.windowTop(*shown.list) - windows.windowTop(*shown.text), 90);

    // Mode two fades the window, mode one keys a colour out, mode zero restores it.
    windows.setWindowColorKey(shown.form, 128, 2, 0);
    EXPECT_NEAR(shown.form.window()->windowOpacity(), 128 / 255.0, 0.01);
    windows.setWindowColorKey(shown.form, 255, 1, 0x00ff00ff);
    EXPECT_TRUE(shown.form.window()->testAttribute(Qt::WA_TranslucentBackground));
    windows.setWindowColorKey(shown.form, 0, 0, 0);
    EXPECT_DOUBLE_EQ(shown.form.window()->windowOpacity(), 1.0);
    EXPECT_FALSE(shown.form.window()->testAttribute(Qt::WA_TranslucentBackground));
}

TEST(DesktopSystem, MonitorsListThePrimaryScreenFirst)
{
    DesktopSystem system;
    const auto monitors = system.Monitors();
    ASSERT_GE(monitors->Count(), 1);
    const fw::MonitorInfo first = monitors->Item(1);
    EXPECT_EQ(first.Index, 1);
    EXPECT_EQ(first.Width, QApplication::primaryScreen()->geometry().width());
    EXPECT_EQ(monitors->Primary().Index, 1);
    EXPECT_EQ(monitors->ByIndex(1).Width, first.Width);
    EXPECT_GE(monitors->VirtualWidth(), first.Width);
    EXPECT_EQ(monitors->Item(0).Width, 0);
    EXPECT_EQ(monitors->Item(monitors->Count() + 1).Width, 0);
}

TEST(DesktopMessages, RegisteredFormsAreListedUntilUnregistered)
{
    DesktopMessages messages;
    fw::Form first("frm_A");
    fw::Form second("frm_B");
    messages.RegisterForm(first, "");
    messages.RegisterForm(second, "");
    messages.RegisterForm(first, "");
    EXPECT_EQ(messages.OpenForms(), (std::vector<fw::Form*>{&first, &second}));
    messages.UnregisterForm(first, "");
    EXPECT_EQ(messages.OpenForms(), (std::vector<fw::Form*>{&second}));
}

} // namespace
