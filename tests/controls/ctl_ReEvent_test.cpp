#include "ControlsTestForm.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_Executor.h"
#include "controls/ctl_ReEvent.h"
#include "testing/TestHost.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

using namespace fw;
using namespace fw::testing;

TEST(ReEventTest, ScriptsRunAtOnceAndReEventsAfterTheRunningHandlerReturns)
{
    ScopedTestHost host;
    ControlsTestForm form;
    auto* executor = form.Add<ctl_Executor>(QStringLiteral("ctl_Executor"));
    auto* reEvent = form.Add<ctl_ReEvent>(QStringLiteral("ctl_ReEvent"));
    auto* button = form.Add<ctl_Button>(QStringLiteral("but_Help"), nullptr);
    std::vector<std::string> order;
    button->Click = [&] {
        order.push_back("click");
        executor->Execute("Dialog.Help();");
        order.push_back("click returns");
    };
    executor->Script = [&](const QString& script) {
        order.push_back("script " + script.toUpper().toStdString());
        reEvent->Raise("HELP");
        reEvent->Raise("PREVIEW");
        order.push_back("script returns");
    };
    reEvent->Event = [&](const QString& name) { order.push_back("event " + name.toStdString()); };
    form.ShowNow();
    Click(*button);
    EXPECT_EQ(order, (std::vector<std::string>{"click", "script DIALOG.HELP();", "script returns",
                                               "click returns"}));
    ProcessEvents();
    EXPECT_EQ(order.size(), 6u);
    EXPECT_EQ(order[4], "event HELP");
    EXPECT_EQ(order[5], "event PREVIEW");

    // Posted and then unloaded: nothing reaches a handler of a form that is gone.
    order.clear();
    reEvent->Raise("HELP");
    form.Unload();
    ProcessEvents();
    EXPECT_TRUE(order.empty());
}

} // namespace
