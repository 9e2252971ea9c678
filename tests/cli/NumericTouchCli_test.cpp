// The numeric pad through the `formwerk` command: a start value in, the
// value its target holds afterwards out.
#include "cli/Cli.h"
#include "controls/ctl_Button.h"
#include "forms/StdControls.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "touch/frm_DialogNumericTouch.h"

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTextStream>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

using fw::Form;
using fw::frm_DialogNumericTouch;

// The built program on the offscreen platform, answered by scripted keys.
std::pair<int, QJsonObject> answer(const QStringList& args, const QString& keys)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("DISPLAY");
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("FORMWERK_SCRIPT_KEYS", keys);
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(FORMWERK_CLI_PATH), args);
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "formwerk did not end; the pad stayed open";
    }
    return {process.exitCode(), QJsonDocument::fromJson(process.readAllStandardOutput()).object()};
}

TEST(NumericTouchCli, TypedValuesComeBackAsTheNumberTheHostReads)
{
    struct Row {
        const char* name;
        QStringList args;
        const char* keys;
        const char* value;
    };
    const Row rows[] = {
        {"a typed digit after the start value", {"--default", "3,5"}, "BackSpace 7 Return", "3,7"},
        {"the start value tidied", {"--default", "12,50", "--text", "Menge"}, "Return", "12,5"},
        {"a point reads as well", {"--default", "2.25"}, "Return", "2,25"},
        {"no number gives zero", {"--default", "3,5"}, "x Return", "0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto [code, json] =
            answer(QStringList{"frm_DialogNumericTouch"} + row.args, QString::fromUtf8(row.keys));
        EXPECT_EQ(code, 1);
        EXPECT_EQ(json, (QJsonObject{{"Result", 1}, {"Confirmed", true}, {"Value", row.value}}));
    }
}

int run(const QStringList& args, QString& out)
{
    QString err;
    QTextStream outStream(&out);
    QTextStream errStream(&err);
    const int code = fw::cli::Run(args, outStream, errStream);
    EXPECT_EQ(err, QString());
    return code;
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
    QString out;
    EXPECT_EQ(run({"frm_DialogNumericTouch", "--default", "3,5", "--text", "Menge"}, out), 1);
    EXPECT_EQ(out, "{\"Confirmed\":true,\"Result\":1,\"Value\":\"-7\"}\n");
    EXPECT_EQ(description, QStringLiteral("Menge"));

    driver.OnNextModal([](Form& form) {
        auto& pad = dynamic_cast<frm_DialogNumericTouch&>(form);
        fw::testing::Click(pad.lab_Key[9]);
        fw::testing::Click(*pad.but_Quit);
    });
    out.clear();
    EXPECT_EQ(run({"frm_DialogNumericTouch", "--default", "3,5"}, out), 2);
    EXPECT_EQ(out, "{\"Confirmed\":false,\"Result\":2,\"Value\":\"3,5\"}\n");
    for (QWidget* widget : QApplication::topLevelWidgets())
        EXPECT_FALSE(widget->isVisible()) << "a window outlived the run";
}

} // namespace
