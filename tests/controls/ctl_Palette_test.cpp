// The palette: clicks on swatches, its look by property name, and named
// palettes kept in the host's settings through the buttons it is bound to.
#include "ControlsTestForm.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_Palette.h"
#include "controls/ctl_Pannel.h"
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
    PaletteTest()
    {
        palette = form.Add<ctl_Palette>(QStringLiteral("ctl_Pal"));
        // Four swatches of 20 pixels with 4 between them fit in a row; set by
        // name, as late-bound hosts set them.
        for (const auto& [look, value] :
             {std::pair{"ColorWidth", 20}, {"colorheight", 20}, {"COLORSPACE", 4}})
            palette->SetProperty(QString::fromLatin1(look), value);
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

    fw::testing::ScopedTestHost host;
    ControlsTestForm form;
    ctl_Palette* palette = nullptr;
    fw::ctl_Pannel* shown = nullptr;
    std::vector<fw::ctl_Button*> buttons;
    std::vector<std::pair<std::uint32_t, int>> clicks;
};

TEST_F(PaletteTest, AClickOnASwatchSelectsItAndTellsItsColourAndIndex)
{
    struct Row {
        int x, y;
        int index; ///< 0: no click reported
    } const rows[] = {
        {14, 14, 1}, {52, 4, 3},  {10, 30, 5}, // the third's corner; the second row wraps
        {26, 14, 0}, {40, 40, 0},              // a gap; the place after the last
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.x * 100 + row.y);
        clicks.clear();
        palette->SetSelected(1);
        clickAt(row.x, row.y);
        using Clicks = std::vector<std::pair<std::uint32_t, int>>;
        const Clicks want = row.index ? Clicks{{*palette->Color(row.index), row.index}} : Clicks{};
        EXPECT_EQ(clicks, want);
        EXPECT_EQ(palette->Selected(), row.index ? row.index : 1);
    }
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

    // An unknown name is told and changes nothing; no name at all is a cancel.
    host->queueTextAnswer("Fehlt");
    press(Load);
    press(Load);
    EXPECT_EQ(palette->Count(), 5);
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
