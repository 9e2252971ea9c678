#include "ControlsTestForm.h"
#include "controls/ctl_Button.h"
#include "testing/TestHost.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

using fw::ctl_Button;

class ButtonTest : public ::testing::Test {
  protected:
    ButtonTest()
    {
        button = form.Add<ctl_Button>(QStringLiteral("but_Sel"), nullptr);
        button->Move(fw::ToTwips(20), fw::ToTwips(20));
        button->Click = [this] { ++clicks; };
        form.ShowNow();
    }

    QImage face() const { return button->widget()->grab().toImage(); }

    fw::testing::ScopedTestHost host;
    fw::testing::ControlsTestForm form;
    ctl_Button* button = nullptr;
    int clicks = 0;
};

TEST_F(ButtonTest, TextStaysExactlyAsSetWhileTheAcceleratorIsDrawn)
{
    button->SetText("&Vorgabe");
    EXPECT_EQ(button->GetProperty("Caption").toString(), "&Vorgabe");
    EXPECT_EQ(button->Text().at(1), u'V'); // the dialogs read the accelerator here
    EXPECT_EQ(button->widget()->accessibleName(), "Vorgabe");
    const QImage marked = face();
    button->SetText("Vorgabe");
    EXPECT_NE(face(), marked) << "the accelerator letter is underlined";
    button->SetText("A&&B");
    EXPECT_EQ(button->Text(), "A&&B");
    EXPECT_EQ(button->widget()->accessibleName(), "A&B");
}

TEST_F(ButtonTest, BreakTagPutsTheCaptionOnTwoLines)
{
    button->widget()->resize(100, 48);
    button->SetText("Monitor<br>2");
    const QImage twoLines = face();
    auto inkRows = [](const QImage& image) {
        int rows = 0;
        for (int y = 4; y < image.height() - 4; ++y)
            for (int x = 4; x < image.width() - 4; ++x)
                if (qGray(image.pixel(x, y)) < 128) {
                    ++rows;
                    break;
                }
        return rows;
    };
    button->SetText("Monitor 2");
    EXPECT_GT(inkRows(twoLines), inkRows(face()) * 3 / 2);
}

TEST_F(ButtonTest, MouseAndSpaceClickIt)
{
    fw::testing::Click(*button);
    fw::testing::Focus(*button);
    fw::testing::PressKey(form, Qt::Key_Space);
    fw::testing::PressKey(form, Qt::Key_Return);
    EXPECT_EQ(clicks, 3);
}

TEST_F(ButtonTest, DisabledOrHiddenButtonsIgnoreClicks)
{
    button->SetEnabled(false);
    fw::testing::Click(*button);
    EXPECT_FALSE(button->PerformClick());
    button->SetEnabled(true);
    button->SetVisible(false);
    EXPECT_FALSE(button->PerformClick());
    EXPECT_EQ(clicks, 0);
}

TEST_F(ButtonTest, DefaultButtonAnswersReturnAndLooksDifferent)
{
    const QImage plain = face();
    button->SetProperty("Default", true);
    EXPECT_TRUE(button->Default());
    const QRgb fill = face().pixel(50, 4);
    EXPECT_NE(fill, plain.pixel(50, 4));
    EXPECT_LT(qGray(fill), 160) << "an accent fill, not white";
    fw::testing::PressKey(form, Qt::Key_Return);
    EXPECT_EQ(clicks, 1);
}

TEST_F(ButtonTest, IconComesFromTheHostAndFailingHostsAreSkipped)
{
    button->SetIconPath("Ico\\32\\Computer\\Signs\\ok.ico");
    EXPECT_EQ(host->callsTo("LoadPicture"),
              std::vector<std::string>{"LoadPicture(Ico\\32\\Computer\\Signs\\ok.ico)"});
    EXPECT_EQ(button->IconPath(), "Ico\\32\\Computer\\Signs\\ok.ico");
    button->SetText("OK");
    const QImage withIcon = face();

    host->failing.insert("LoadPicture");
    button->SetIconPath("Ico\\20\\Computer\\Signs\\no.ico");
    EXPECT_EQ(button->IconPath(), "Ico\\20\\Computer\\Signs\\no.ico");
    EXPECT_NE(face(), withIcon);
}

} // namespace
