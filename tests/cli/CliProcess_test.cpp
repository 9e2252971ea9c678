// The built `formwerk` program in its own process, answered through
// FORMWERK_SCRIPT_KEYS as a shell script would answer it.
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Finished {
    int code = -1;
    QByteArray out;
    QString err;
};

// Offscreen, with no trace of a desktop session unless a test adds one.
QProcessEnvironment quietEnvironment()
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name :
         {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "FORMWERK_SCRIPT_KEYS"})
        env.remove(name);
    return env;
}

// With keepInputOpen the program's standard input stays open, as a pipe from a
// script that is still working would.
Finished start(const QStringList& args, QProcessEnvironment env, const QByteArray& input = {},
               bool keepInputOpen = false)
{
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(FORMWERK_CLI_PATH), args);
    EXPECT_TRUE(process.waitForStarted(10000));
    if (!input.isEmpty())
        process.write(input);
    if (!keepInputOpen)
        process.closeWriteChannel();
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "formwerk did not end; the dialog stayed open";
    }
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput(), QString::fromUtf8(process.readAllStandardError())};
}

Finished answer(const QStringList& args, const QString& keys, const QByteArray& input = {},
                bool keepInputOpen = false)
{
    QProcessEnvironment env = quietEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("FORMWERK_SCRIPT_KEYS", keys);
    return start(args, env, input, keepInputOpen);
}

QJsonObject json(const Finished& f)
{
    return QJsonDocument::fromJson(f.out).object();
}

TEST(CliProcess, ScriptedKeysAnswerTheDialog)
{
    struct Row {
        const char* name;
        const char* flags;
        const char* keys;
        int result;
        int exitCode;
    };
    const Row rows[] = {
        {"Esc in Yes/No answers No", "4", "Escape", 7, 7},
        {"K in OK answers OK", "0", "k", 1, 1},
        {"O reaches the hidden button", "0", "o", -3, 253},
        {"Shift+F12 in OK/Cancel cancels", "1", "Shift+F12", 2, 2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Finished f = answer({"frm_DialogMessage", "--flags", row.flags}, row.keys);
        EXPECT_EQ(f.code, row.exitCode) << f.err.toStdString();
        QJsonParseError error;
        const QJsonDocument json = QJsonDocument::fromJson(f.out, &error);
        ASSERT_EQ(error.error, QJsonParseError::NoError) << f.out.toStdString();
        EXPECT_EQ(json.object(), QJsonObject({{"Result", row.result}}));
        EXPECT_TRUE(f.out.endsWith("}\n"));
        EXPECT_EQ(f.out.count('\n'), 1) << "one JSON object on one line";
    }
}

TEST(CliProcess, RequestComesFromStandardInput)
{
    const Finished f = answer({"frm_DialogMessage", "--request", "-"}, "Escape",
                              R"({"Request":{"Flags":4,"Title":"Löschen?"}})");
    EXPECT_EQ(f.code, 7) << f.err.toStdString();
    EXPECT_EQ(f.out, "{\"Result\":7}\n");
}

TEST(CliProcess, BadScriptKeyIsRefusedBeforeTheDialogOpens)
{
    const Finished f = answer({"frm_DialogMessage"}, "Escape Nonsense");
    EXPECT_EQ(f.code, 64);
    EXPECT_TRUE(f.err.contains("'Nonsense' is not a key")) << f.err.toStdString();
}

TEST(CliProcess, ScreenshotWorksWithoutAnyDisplay)
{
    QTemporaryDir dir;
    const QString png = dir.filePath("message.png");
    const Finished f = start(
        {"frm_DialogMessage", "--flags", "4", "--text", "Wirklich löschen?", "--screenshot", png},
        quietEnvironment());
    EXPECT_EQ(f.code, 0) << f.err.toStdString();
    EXPECT_TRUE(f.out.isEmpty());
    EXPECT_FALSE(QImage(png).isNull());
}

TEST(CliProcess, WithoutDisplayItRefusesInsteadOfFailingInQt)
{
    const Finished f = start({"frm_DialogMessage", "--flags", "4"}, quietEnvironment());
    EXPECT_EQ(f.code, 69);
    EXPECT_EQ(f.err,
              "formwerk: no display to show the dialog on (set DISPLAY, or use --screenshot)\n");
    EXPECT_TRUE(f.out.isEmpty());
}

TEST(CliProcess, OffscreenWithoutScriptRefusesRatherThanWaitForever)
{
    QProcessEnvironment env = quietEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    const Finished f = start({"frm_DialogMessage"}, env);
    EXPECT_EQ(f.code, 69);
    EXPECT_TRUE(f.err.startsWith("formwerk: the offscreen platform shows no window"))
        << f.err.toStdString();
}

TEST(CliProcess, UnknownDialogEndsWithUsageErrorAndNoMessageBox)
{
    // No display, no script: a message box would hang or crash the process.
    QProcessEnvironment env = quietEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    const Finished f = start({"frm_DialogNothing"}, env);
    EXPECT_EQ(f.code, 64);
    EXPECT_TRUE(f.err.startsWith("formwerk: unknown dialog 'frm_DialogNothing'"));
}

TEST(CliProcess, AbortingTheProgressWindowEndsTheRunWithTwoWhileInputIsStillOpen)
{
    const Finished f =
        answer({"frm_DialogProcess", "--title", "Kopieren"}, "Escape", "range 0 10\n3\n", true);
    EXPECT_EQ(f.code, 2) << f.err.toStdString();
}

TEST(CliProcess, CriticalChoiceAnswersBehindItsFadingNotice)
{
    Finished f = answer({"frm_DialogCritical", "--text", "Datenbank leeren?", "--choice", "Leeren",
                         "--choice", "Sichern und leeren", "--choice", "Nichts tun"},
                        "3 Return");
    EXPECT_EQ(f.code, 1) << f.err.toStdString();
    EXPECT_EQ(json(f), QJsonObject({{"Result", 1}, {"Confirmed", true}, {"ChoiceIndex", 3}}));

    f = answer({"frm_DialogCritical"}, "1 Escape"); // chosen, but left without "Weiter"
    EXPECT_EQ(f.code, 2) << f.err.toStdString();
    EXPECT_EQ(json(f), QJsonObject({{"Result", 2}, {"Confirmed", false}, {"ChoiceIndex", 0}}));

    f = answer({"frm_DialogCritical", "--choice", "a", "--choice", "b", "--choice", "c", "--choice",
                "d", "--choice", "e"},
               "Escape");
    EXPECT_TRUE(f.err.contains("only the first 3 of 5 choices are shown")) << f.err.toStdString();

    QTemporaryDir dir;
    const QString png = dir.filePath("choice.png");
    f = start({"frm_DialogCritical", "--choice", "Ja", "--screenshot", png}, quietEnvironment());
    EXPECT_EQ(f.code, 0) << f.err.toStdString();
    const QImage picture(png);
    EXPECT_LT(picture.width(), 1000) << "the choice, not the screen-wide veil";
    EXPECT_NE(picture.pixel(picture.width() / 2, picture.height() / 2), qRgb(0, 0, 0));
}

} // namespace
