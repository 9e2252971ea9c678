#include "ControlsTestForm.h"
#include "controls/ctl_TitleBar.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

namespace {

using fw::ctl_TitleBar;

// Set late-bound, as the translation walk and hosts do: the caption and the
// icon of the host's store both show in the strip.
TEST(TitleBar, ShowsTheCaptionAndTheHostsIconOnATintedStrip)
{
    fw::testing::ScopedTestHost host;
    fw::testing::ControlsTestForm form;
    auto* bar = form.Add<ctl_TitleBar>(QStringLiteral("ctl_TitleBar1"), nullptr);
    bar->Move(0, 0, fw::ToTwips(200), fw::ToTwips(ctl_TitleBar::PreferredHeight));
    const QImage empty = bar->widget()->grab().toImage();

    ASSERT_TRUE(bar->SetProperty(QStringLiteral("Caption"), QStringLiteral("Ordner")));
    ASSERT_TRUE(bar->SetProperty(QStringLiteral("IconPath"),
                                 QStringLiteral("Ico\\16\\Computer\\Files\\New.ico")));
    form.ShowNow();
    EXPECT_EQ(bar->GetProperty(QStringLiteral("caption")).toString(), QStringLiteral("Ordner"));
    EXPECT_EQ(host->callsTo("LoadPicture"),
              std::vector<std::string>{"LoadPicture(Ico\\16\\Computer\\Files\\New.ico)"});
    EXPECT_EQ(bar->Picture().size(), QSize(16, 16));

    const QImage shown = bar->widget()->grab().toImage();
    const QColor tint = shown.pixelColor(shown.width() - 3, 3);
    EXPECT_NE(tint, form.window()->palette().color(QPalette::Window));
    EXPECT_NE(shown.pixelColor(6 + 8, shown.height() / 2), tint) << "the icon";
    int textPixels = 0; // the caption right of the icon
    for (int x = 30; x < 90; ++x)
        for (int y = 4; y < shown.height() - 4; ++y)
            textPixels += shown.pixelColor(x, y) != tint;
    EXPECT_GT(textPixels, 20);
    EXPECT_NE(shown, empty);
}

} // namespace
