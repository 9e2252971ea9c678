#include "ControlsTestForm.h"
#include "controls/ctl_Steps.h"
#include "forms/StdControls.h"
#include "testing/TestHost.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

using fw::ctl_Steps;
using namespace fw::testing;

class StepsTest : public ::testing::Test {
  public:
    StepsTest()
    {
        steps = form.Add<ctl_Steps>(QStringLiteral("cat_Folder"));
        steps->Move(0, 0, fw::ToTwips(180), fw::ToTwips(280));
        name = form.Add<fw::TextBox>(QStringLiteral("txt_Filename"));
        name->Move(fw::ToTwips(200), fw::ToTwips(20), fw::ToTwips(200), fw::ToTwips(24));
        steps->AddStep("&Desktop", "Ico\\20\\Desktop.ico", "Der Schreibtisch", "DESKTOP");
        steps->AddStep("&Eigene Dateien", "Ico\\20\\Documents.ico", {}, "PERSONAL");
        steps->AddStep("Ar&beitsplatz", "Ico\\20\\Computer.ico", "Laufwerke", "DRIVES");
        steps->StepClick = [this](int index) { clicks.push_back(index); };
        form.ShowNow();
        Focus(*name);
    }

    void clickStep(int index)
    {
        QWidget* entry = steps->stepWidget(index);
        QTest::mouseClick(entry, Qt::LeftButton, {}, entry->rect().center());
    }

    ScopedTestHost host;
    ControlsTestForm form;
    ctl_Steps* steps = nullptr;
    fw::TextBox* name = nullptr;
    std::vector<int> clicks;
};

TEST_F(StepsTest, MouseAcceleratorsAndKeysClickAndLightTheEntry)
{
    struct Step {
        const char* name;
        std::function<void(StepsTest&)> act;
        std::vector<int> clicks;
        int lit;
    };
    const auto key = [](Qt::Key k, Qt::KeyboardModifiers mods = {}) {
        return [k, mods](StepsTest& t) { PressKey(t.form, k, mods); };
    };
    const std::vector<Step> cases{
        {"mouse", [](StepsTest& t) { t.clickStep(2); }, {2}, 2},
        {"accelerator from another control",
         [](StepsTest& t) {
             Focus(*t.name);
             PressKey(t.form, Qt::Key_B, Qt::AltModifier);
         },
         {3},
         3},
        {"the letter alone types", key(Qt::Key_D), {}, 3},
        {"up moves the focus only",
         [](StepsTest& t) {
             t.steps->stepWidget(3)->setFocus();
             PressKey(t.form, Qt::Key_Up);
         },
         {},
         3},
        {"return clicks the focused entry", key(Qt::Key_Return), {2}, 2},
        {"up stops at the first",
         [](StepsTest& t) {
             PressKey(t.form, Qt::Key_Up);
             PressKey(t.form, Qt::Key_Up);
         },
         {},
         2},
        {"space clicks", key(Qt::Key_Space), {1}, 1},
        {"down then return",
         [](StepsTest& t) {
             PressKey(t.form, Qt::Key_Down);
             PressKey(t.form, Qt::Key_Return);
         },
         {2},
         2},
    };
    for (const Step& step : cases) {
        clicks.clear();
        step.act(*this);
        EXPECT_EQ(clicks, step.clicks) << step.name;
        EXPECT_EQ(steps->SelectedIndex(), step.lit) << step.name;
    }
    EXPECT_EQ(name->Text(), "d");
}

TEST_F(StepsTest, EntriesKeepTheirTextsAndCodeLightsWithoutAClick)
{
    EXPECT_EQ(steps->Caption(3), "Ar&beitsplatz");
    EXPECT_EQ(steps->Tag(2), "PERSONAL");
    EXPECT_EQ(steps->stepWidget(1)->toolTip(), "Der Schreibtisch");
    const QImage unlit = steps->stepWidget(2)->grab().toImage();
    steps->SetSelectedIndex(2);
    EXPECT_NE(steps->stepWidget(2)->grab().toImage(), unlit) << "the lit entry looks different";
    steps->ClearSelection();
    EXPECT_EQ(steps->SelectedIndex(), 0);
    EXPECT_EQ(steps->stepWidget(2)->grab().toImage(), unlit);
    // A handler may rebuild the strip from inside the click.
    steps->StepClick = [this](int index) {
        clicks.push_back(index);
        steps->Clear();
        steps->AddStep("&Netzwerk", {});
    };
    clickStep(3);
    PressKey(form, Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(clicks, (std::vector<int>{3, 1}));
    EXPECT_EQ(steps->Count(), 1);
}

} // namespace
