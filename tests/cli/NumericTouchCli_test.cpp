// The numeric pad through the `formwerk` command, run in-process: a start
// value in, taps on the pad, the value its target holds afterwards out.
#include "CliRun.h"
#include "controls/ctl_Button.h"
#include "forms/StdControls.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "touch/frm_DialogNumericTouch.h"

#include <QApplication>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

using fw::Form;
using fw::frm_DialogNumericTouch;

QString run(const QStringList& args, int code)
{
    const fw::testing::Ran ran = fw::testing::runInProcess(args);
    EXPECT_EQ(ran.code, code);
    EXPECT_EQ(ran.err, QString());
    return ran.out;
}

TEST(NumericTouchCli, KeysOnThePadAnswerAndQuitLeavesTheValue)
{
    fw::testing::ModalDriver driver;
    QString description;
    driver.OnNextModal([&](Form& form) {
        auto& pad = dynamic_cast<frm_DialogNumericTouch&>(form);
        description = pad.lab_Description->Caption();
        for (int key : {7, 0, 11}) // 7, sign change, OK
            fw::testing::Click(pad.lab_Key[key]);
    });
    EXPECT_EQ(run({"frm_DialogNumericTouch", "--default", "3,5", "--text", "Menge"}, 1),
              "{\"Confirmed\":true,\"Result\":1,\"Value\":\"-7\"}\n");
    EXPECT_EQ(description, QStringLiteral("Menge"));

    driver.OnNextModal([](Form& form) {
        auto& pad = dynamic_cast<frm_DialogNumericTouch&>(form);
        fw::testing::Click(pad.lab_Key[9]);
        fw::testing::Click(*pad.but_Quit);
    });
    EXPECT_EQ(run({"frm_DialogNumericTouch", "--default", "3,5"}, 2),
              "{\"Confirmed\":false,\"Result\":2,\"Value\":\"3,5\"}\n");
    for (QWidget* widget : QApplication::topLevelWidgets())
        EXPECT_FALSE(widget->isVisible()) << "a window outlived the run";
}

} // namespace
