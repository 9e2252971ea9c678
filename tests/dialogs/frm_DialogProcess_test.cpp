// The progress window, shown without waiting and driven as a caller's loop
// drives it; the abort button clicked as a user clicks it.
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Percent.h"
#include "dialogs/frm_DialogProcess.h"
#include "forms/StdControls.h"
#include "testing/TestHost.h"

#include <QAbstractButton>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

using namespace fw;
using fw::testing::ScopedTestHost;

namespace {

class ProgressWindow : public ::testing::Test {
  protected:
    ScopedTestHost host;
    std::shared_ptr<DialogContext> context = std::make_shared<DialogContext>();
    frm_DialogProcess form;

    ProgressWindow()
    {
        form.Context = context;
        context->Request.Title = "Kopieren";
        context->Request.Subtitle = "Dateien werden kopiert…";
        context->Request.Result = ResultNo; // whatever the host left there
        form.Show(false);
    }
    ~ProgressWindow() override
    {
        if (form.IsLoaded())
            form.Unload();
    }

    void clickAbort()
    {
        auto* button =
            form.bar_Buttons->container()->findChild<QAbstractButton*>(QStringLiteral("cmd_ABORT"));
        ASSERT_NE(button, nullptr);
        QTest::mouseClick(button, Qt::LeftButton);
    }
};

TEST_F(ProgressWindow, OpensUnansweredWithTitleAndSubtitle)
{
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_EQ(context->Request.Result, ResultNone);
    EXPECT_EQ(form.Caption(), QStringLiteral("Kopieren"));
    EXPECT_EQ(form.lab_Description->Caption(), QStringLiteral("Dateien werden kopiert…"));
    EXPECT_TRUE(form.lab_Details->Caption().isEmpty());
    EXPECT_FALSE(form.img_Icon->Visible());
    EXPECT_EQ(form.lab_Description->Left(), form.img_Icon->Left());
}

TEST_F(ProgressWindow, ValuesMeasureAgainstTheRangeAndShowClampedOutsideIt)
{
    struct Step {
        int low, high; // low > high: no range call before this value
        int value;
        double shown;
    };
    const Step steps[] = {
        {1, 0, 40, 0.40},      // before any range: 0 to 100
        {1, 0, 250, 1.0},      // beyond the upper bound: full
        {10, 20, 15, 0.5},     //
        {10, 20, 5, 0.0},      // below the lower bound: empty
        {-100, 100, 50, 0.75}, // negative bounds
        {7, 7, 7, 0.0},        // an empty range shows nothing
    };
    for (const Step& step : steps) {
        if (step.low <= step.high)
            form.PROCESS_SET_RANGE(step.low, step.high);
        form.PROCESS_SET_CUR(step.value);
        EXPECT_EQ(form.bar->Value(), step.value);
        EXPECT_DOUBLE_EQ(form.bar->Fraction(), step.shown) << step.low << ".." << step.high;
    }
    EXPECT_TRUE(form.IsLoaded());
}

TEST_F(ProgressWindow, AbortReachesTheTargetAndTheWindowStaysUntilEnded)
{
    auto target = std::make_shared<AbortFlag>();
    form.Abort = target;
    form.PROCESS_SET_CUR(30);
    EXPECT_FALSE(form.PROCESS_ABORT());

    clickAbort();
    EXPECT_TRUE(target->Cancel);
    EXPECT_TRUE(form.PROCESS_ABORT());
    EXPECT_EQ(context->Request.Result, ResultAbort);
    EXPECT_TRUE(form.IsLoaded());

    form.PROCESS_SET_CUR(40); // the caller's loop runs on until it looks
    EXPECT_TRUE(form.PROCESS_ABORT());
    form.PROCESS_END();
    EXPECT_TRUE(form.IsUnloaded());
    EXPECT_EQ(context->Request.Result, ResultAbort);
}

TEST_F(ProgressWindow, AbortWithoutTargetOnlyAnswersAndEndLeavesTheResult)
{
    clickAbort();
    EXPECT_TRUE(form.PROCESS_ABORT());
    form.PROCESS_END();
    EXPECT_TRUE(form.IsUnloaded());
}

TEST_F(ProgressWindow, EndWithoutAbortLeavesNoAnswer)
{
    form.PROCESS_SET_CUR(100);
    form.PROCESS_END();
    EXPECT_TRUE(form.IsUnloaded());
    EXPECT_EQ(context->Request.Result, ResultNone);
}

} // namespace
