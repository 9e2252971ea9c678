// The input forms through the `formwerk` command: options and request arrays
// in, the typed texts out as JSON.
#include "cli/Options.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <gtest/gtest.h>

namespace {

struct Finished {
    int code = -1;
    QJsonObject json;
    QString err;
};

// The built program on the offscreen platform, answered by scripted keys.
Finished answer(const QStringList& args, const QString& keys, const QByteArray& input = {})
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("DISPLAY");
    env.remove("WAYLAND_DISPLAY");
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("FORMWERK_SCRIPT_KEYS", keys);
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(FORMWERK_CLI_PATH), args);
    EXPECT_TRUE(process.waitForStarted(10000));
    if (!input.isEmpty())
        process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "formwerk did not end; the dialog stayed open";
    }
    const QByteArray out = process.readAllStandardOutput();
    EXPECT_EQ(out.count('\n'), 1) << out.toStdString();
    return {process.exitCode(), QJsonDocument::fromJson(out).object(),
            QString::fromUtf8(process.readAllStandardError())};
}

TEST(CliInput, TypedTextComesBackAsInputText)
{
    struct Row {
        const char* name;
        QStringList args;
        const char* keys;
        QJsonObject expected;
    };
    const Row rows[] = {
        {"typing replaces the selected default",
         {"frm_DialogInput", "--default", "alt"},
         "n e u Return",
         {{"Result", 1}, {"InputText", "neu"}}},
        {"the default as given, umlauts and emoji",
         {"frm_DialogInputMulti", "--default", "Grüße 👋", "--password"},
         "Ctrl+Return",
         {{"Result", 1}, {"InputText", "Grüße 👋"}}},
        {"Escape cancels and answers no text",
         {"frm_DialogInput", "--default", "alt"},
         "x Escape",
         {{"Result", 2}, {"InputText", ""}}},
        {"the password dialog answers the new password",
         {"frm_DialogPassword", "--old", "a"},
         "a Tab x Tab x Return",
         {{"Result", 1}, {"InputText", "x"}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Finished f = answer(row.args, QString::fromUtf8(row.keys));
        EXPECT_EQ(f.json, row.expected) << f.err.toStdString();
        EXPECT_EQ(f.code, row.expected.value("Result").toInt());
    }
}

TEST(CliInput, TheTwoFieldFormTakesAndGivesTwoTexts)
{
    const QJsonArray pair{"A:1", "ü|2"};
    const Finished options = answer({"frm_DialogInputDbl", "--default2", "ü|2", "--default", "A:1",
                                     "--text", "Eins", "--text2", "Zwei"},
                                    "Return Return");
    EXPECT_EQ(options.json, (QJsonObject{{"Result", 1}, {"InputText", pair}}))
        << options.err.toStdString();

    const Finished request = answer({"frm_DialogInputDbl", "--request", "-"}, "Return Return",
                                    R"({"Texts":{"DefaultText":["A:1","ü|2"],
                                        "Description":["Eins","Zwei"]}})");
    EXPECT_EQ(request.json, (QJsonObject{{"Result", 1}, {"InputText", pair}}))
        << request.err.toStdString();
}

TEST(CliInput, PairOptionsFillTheirHalfInAnyOrder)
{
    using fw::cli::Parse;
    const auto defaults = [](const QStringList& args) {
        const auto parsed = Parse(args);
        EXPECT_TRUE(parsed.error.isEmpty()) << parsed.error.toStdString();
        return parsed.invocation.members.empty() ? QJsonValue()
                                                 : parsed.invocation.members.back().second;
    };
    EXPECT_EQ(defaults({"frm_DialogInputDbl", "--default2", "B", "--default", "A"}),
              QJsonValue(QJsonArray{"A", "B"}));
    EXPECT_EQ(defaults({"frm_DialogInputDbl", "--default", "A", "--default2", "B"}),
              QJsonValue(QJsonArray{"A", "B"}));
    EXPECT_EQ(defaults({"frm_DialogInput", "--default", "A"}), QJsonValue("A"));
    EXPECT_EQ(defaults({"frm_DialogInput", "--password"}), QJsonValue(true));
}

} // namespace
