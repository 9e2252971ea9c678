// The monitor choice, driven by clicks on its map and its command bar.
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Pannel.h"
#include "folders/frm_DialogMonitor.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

class MonitorChoice : public ::testing::Test {
  protected:
    std::shared_ptr<TestHost> host = std::make_shared<TestHost>();
    ScopedCoreDev scope{host};
    ModalDriver driver;
    frm_DialogMonitor form;

    /// Shows the form modally, runs action in it, and aborts if it stays open.
    void run(const std::function<void()>& action)
    {
        driver.OnNextModal([&](Form&) {
            action();
            if (!form.IsUnloaded())
                form.bar_Buttons->Press(QStringLiteral("ABORT"));
        });
        form.Show(true);
    }

    /// Buttons given the marked look: dark and light shades by 50.
    int markedShades() const
    {
        int count = 0;
        for (const std::string& call : host->callsTo("ColorShadeB"))
            count += call.find("|0|50)") != std::string::npos;
        return count;
    }

    // A primary, one left of it and one above-right of it.
    void threeScreens()
    {
        host->monitors = {
            {1, 0, 0, 1920, 1080}, {2, -1280, 0, 1280, 1024}, {3, 1920, -200, 1024, 768}};
    }
};

TEST_F(MonitorChoice, OneMonitorIsThePrimaryCentredOnTheMap)
{
    run([&] {
        ASSERT_TRUE(form.but_Monitor.Exists(1));
        EXPECT_FALSE(form.but_Monitor.Exists(2));
        const ctl_Button& only = form.but_Monitor[1];
        EXPECT_EQ(only.Text(), "Primär 1");
        EXPECT_EQ(only.ToolTipText(), "Auflösung: 1920 x 1080 Pixel");
        EXPECT_NEAR(only.Left(), form.frm_Inner->Width() - only.Left() - only.Width(), 30);
        EXPECT_NEAR(only.Top(), form.frm_Inner->Height() - only.Top() - only.Height(), 30);
        EXPECT_FALSE(form.but_Monitor[0].Visible());
    });
}

TEST_F(MonitorChoice, MonitorsAtNegativeCoordinatesStayInsideTheMapAndKeepTheirLayout)
{
    threeScreens();
    form.Monitor = MonitorInfo{3, 1920, -200, 1024, 768};
    run([&] {
        const ctl_Button& primary = form.but_Monitor[1];
        const ctl_Button& left = form.but_Monitor[2];
        const ctl_Button& upper = form.but_Monitor[3];
        EXPECT_EQ(primary.Text(), "Primär 1");
        EXPECT_EQ(left.Text(), "2");
        EXPECT_EQ(upper.Text(), "3<br>(Ausgewählt)");
        for (const ctl_Button* button : {&primary, &left, &upper}) {
            EXPECT_GE(button->Left(), 0);
            EXPECT_GE(button->Top(), 0);
            EXPECT_LE(button->Left() + button->Width(), form.frm_Inner->Width());
            EXPECT_LE(button->Top() + button->Height(), form.frm_Inner->Height());
        }
        EXPECT_LT(left.Left() + left.Width(), primary.Left() + 30);
        EXPECT_LT(upper.Top(), primary.Top());
        EXPECT_EQ(markedShades(), 1);
    });
}

TEST_F(MonitorChoice, ClickingAMonitorHandsItToTheCaller)
{
    threeScreens();
    run([&] { Click(form.but_Monitor[2]); });
    EXPECT_TRUE(form.IsUnloaded());
    EXPECT_TRUE(form.Accepted);
    ASSERT_TRUE(form.Monitor.has_value());
    EXPECT_EQ(form.Monitor->Index, 2);
    EXPECT_EQ(form.Monitor->Left, -1280);
    EXPECT_EQ(form.GetPublic(QStringLiteral("Monitor")).toMap().value("Width").toInt(), 1280);
}

TEST_F(MonitorChoice, WithoutACurrentMonitorNoneIsMarked)
{
    threeScreens();
    run([&] {
        for (int i = 1; i <= 3; ++i)
            EXPECT_FALSE(form.but_Monitor[i].Text().contains("Ausgewählt")) << i;
    });
    EXPECT_EQ(markedShades(), 0);
}

TEST_F(MonitorChoice, AbortKeepsTheCallersMonitorAndHelpLeavesTheDialogOpen)
{
    form.Monitor = MonitorInfo{1, 0, 0, 1920, 1080};
    form.Accepted = true;
    run([&] {
        ASSERT_TRUE(form.bar_Buttons->Press(QStringLiteral("HELP")));
        EXPECT_FALSE(form.IsUnloaded());
        ASSERT_TRUE(form.bar_Buttons->Press(QStringLiteral("ABORT")));
    });
    EXPECT_TRUE(form.IsUnloaded());
    EXPECT_FALSE(form.Accepted);
    EXPECT_EQ(form.Monitor->Index, 1);
    ASSERT_EQ(host->callsTo("ShowHelp").size(), 1u);
    EXPECT_NE(host->callsTo("ShowHelp")[0].find("einen der angeschlossenen Monitor per Klick"),
              std::string::npos);
}

} // namespace
