#include "ControlsTestForm.h"
#include "controls/ctl_Frame.h"
#include "forms/StdControls.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

namespace {

using namespace fw;
using namespace fw::testing;

TEST(FrameTest, CaptionShowsInTheTopLineAndTheControlsInsideKeepAPlainFont)
{
    ScopedTestHost host;
    ControlsTestForm form;
    auto* frame = form.Add<ctl_Frame>(QStringLiteral("frm_Folder"));
    frame->Move(0, 0, ToTwips(300), ToTwips(200));
    auto* inside = form.Add<TextBox>(QStringLiteral("txt_Filename"), false, frame->container());
    inside->Move(ToTwips(10), frame->InsideTop() + ToTwips(10), ToTwips(200), ToTwips(24));
    form.ShowNow();
    const auto captionLine = [&] {
        const QImage image = frame->widget()->grab().toImage();
        return image.copy(0, 0, image.width(), ToPixels(frame->InsideTop()));
    };
    const QImage empty = captionLine();
    frame->SetCaption("Ordnerinhalt");
    EXPECT_NE(captionLine(), empty);
    EXPECT_EQ(frame->GetProperty("Caption").toString(), "Ordnerinhalt");
    EXPECT_FALSE(inside->widget()->font().bold()) << "only the caption is bold";
}

} // namespace
