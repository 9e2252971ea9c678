// The palette: clicks on swatches, its look by property name, and named
// palettes kept in the host's settings through the buttons it is bound to.
#include "ControlsTestForm.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_Palette.h"
#include "controls/ctl_Pannel.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"

#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

using fw::ctl_Palette;
using fw::testing::ControlsTestForm;

const char* const kKey = "Software\\Test\\Palettes";

class PaletteTest : public ::testing::Test {
  protected:
    PaletteTest() : m_scope(host)
    {
        palette = form.Add<ctl_Palette>(QStringLiteral("ctl_Pal"));
        // Four swatches of 20 pixels with 4 between them fit in a row.
        palette->SetColorWidth(20);
        palette->SetColorHeight(20);
        palette->SetColorSpace(4);
        palette->widget()->setGeometry(0, 0, 100, 60);
        palette->SetColors({0x0000FF, 0x00FF00, 0xFF0000, 0x123456, 0xABCDEF});
        palette->SetStoreKey(kKey);
        palette->ColorClick = [this](std::uint32_t colour, int index) {
            clicks.emplace_back(colour, index);
        };
        shown = form.Add<fw::ctl_Pannel>(QStringLiteral("pan_Color"));
        for (const char* name : {"but_Load", "but_Save", "but_New", "but_Add", "but_Remove"})
            buttons.push_back(form.Add<fw::ctl_Button>(QString::fromLatin1(name)));
        palette->BindButtons(buttons[0], buttons[1], buttons[2], buttons[3], buttons[4], shown);
        form.ShowNow();
    }

    void clickAt(int x, int y) { QTest::mouseClick(palette->widget(), Qt::LeftButton, {}, {x, y}); }
    void press(int button) { fw::testing::Click(*buttons[std::size_t(button)]); }
    enum { Load, Save, New, Add, Remove };

    std::shared_ptr<fw::testing::TestHost> host = std::make_shared<fw::testing::TestHost>();
    fw::ScopedCoreDev m_scope;
    ControlsTestForm form;
    ctl_Palette* palette = nullptr;
    fw::ctl_Pannel* shown = nullptr;
    std::vector<fw::ctl_Button*> buttons;
    std::vector<std::pair<std::uint32_t, int>> clicks;
};

TEST_F(PaletteTest, AClickOnASwatchSelectsItAndTellsItsColourAndIndex)
{
    struct Row {
        const char* name;
        int x, y;
        int index; ///< 0: no click reported
    };
    const Row rows[] = {
        {"first swatch", 14, 14, 1},
        {"third swatch's corner", 52, 4, 3},
        {"second row wraps", 10, 30, 5},
        {"gap between swatches", 26, 14, 0},
        {"free place after the last", 40, 40, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        clicks.clear();
        palette->SetSelected(1);
        clickAt(row.x, row.y);
        if (row.index == 0) {
            EXPECT_TRUE(clicks.empty());
            EXPECT_EQ(palette->Selected(), 1);
            continue;
        }
        ASSERT_EQ(clicks.size(), 1u);
        EXPECT_EQ(clicks[0].second, row.index);
        EXPECT_EQ(clicks[0].first, *palette->Color(row.index));
        EXPECT_EQ(palette->Selected(), row.index);
    }
}

TEST_F(PaletteTest, TheLookSetByNameMovesAndPaintsTheSwatches)
{
    EXPECT_TRUE(palette->SetProperty("COLORWIDTH", 40));
    EXPECT_TRUE(palette->SetProperty("colorheight", 10));
    EXPECT_TRUE(palette->SetProperty("ColorSpace", 2));
    EXPECT_TRUE(palette->SetProperty("colorframe", 0x0000FF)); // red
    EXPECT_EQ(palette->GetProperty("colorwidth").toInt(), 40);
    EXPECT_EQ(palette->GetProperty("Count").toInt(), 5);
    // Two swatches of 40 now share the row: (60, 5) lies in the second.
    clickAt(60, 5);
    ASSERT_EQ(clicks.size(), 1u);
    EXPECT_EQ(clicks[0].second, 2);
    const QImage painted = palette->widget()->grab().toImage();
    EXPECT_EQ(painted.pixelColor(2, 6), QColor(Qt::red)) << "the frame's left line";
    EXPECT_EQ(painted.pixelColor(20, 6), QColor(Qt::red)) << "entry 1 is 0x0000FF, red too";
    EXPECT_EQ(painted.pixelColor(60, 6), QColor(Qt::green));
}

TEST_F(PaletteTest, ASavedPaletteComesBackByItsName)
{
    host->queueTextAnswer("Büro");
    press(Save);
    EXPECT_EQ(host->registryValue(fw::HiveCurrentUser, std::string(kKey) + "\\Palettes\\Büro"),
              "#FF0000;#00FF00;#0000FF;#563412;#EFCDAB");
    EXPECT_EQ(host->registryValue(fw::HiveCurrentUser, std::string(kKey) + "\\Names"), "Büro");

    press(New);
    EXPECT_EQ(palette->Count(), 0);
    host->queueTextAnswer(" Büro ");
    press(Load);
    EXPECT_EQ(palette->Colors(),
              (std::vector<std::uint32_t>{0x0000FF, 0x00FF00, 0xFF0000, 0x123456, 0xABCDEF}));
    EXPECT_EQ(palette->PaletteName(), "Büro");
    // Without a name of its own the question names the saved palettes and proposes the first.
    const auto asked = host->callsTo("AskText");
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(asked[1], "AskText(Name der Palette:\nGespeichert: Büro|Palette laden|Büro)");

    host->queueTextAnswer("Garten");
    press(Save);
    EXPECT_EQ(host->registryValue(fw::HiveCurrentUser, std::string(kKey) + "\\Names"),
              "Büro;Garten");
}

TEST_F(PaletteTest, LoadingAnUnknownOrNoNameLeavesThePaletteAlone)
{
    host->queueTextAnswer("Fehlt");
    press(Load);
    EXPECT_EQ(host->callsTo("ShowInfo").size(), 1u);
    press(Load); // no answer: the user cancelled
    press(Save);
    EXPECT_EQ(palette->Count(), 5);
    EXPECT_FALSE(host->wasCalled("WriteString"));
    EXPECT_EQ(host->callsTo("ShowInfo").size(), 1u);
}

TEST_F(PaletteTest, AddTakesTheShownColourAsAClickWouldAndRemoveDropsTheSelected)
{
    shown->SetBackColor(QColor(0x11, 0x22, 0x33));
    press(Add);
    ASSERT_EQ(palette->Count(), 6);
    EXPECT_EQ(*palette->Color(6), 0x332211u);
    ASSERT_EQ(clicks.size(), 1u);
    EXPECT_EQ(clicks[0], std::make_pair(std::uint32_t(0x332211), 6));

    clickAt(34, 14); // entry 2
    press(Remove);
    EXPECT_EQ(palette->Colors(),
              (std::vector<std::uint32_t>{0x0000FF, 0xFF0000, 0x123456, 0xABCDEF, 0x332211}));
    EXPECT_EQ(palette->Selected(), 2) << "the selection keeps its number";
}

} // namespace
