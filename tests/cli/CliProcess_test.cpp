// The built `formwerk` program in its own process, answered through
// FORMWERK_SCRIPT_KEYS as a shell script would answer it.
#include "CliRun.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace {

using fw::testing::answerProgram;
using fw::testing::quietEnvironment;
using fw::testing::Ran;
using fw::testing::startProgram;

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
        const Ran f = answerProgram({"frm_DialogMessage", "--flags", row.flags}, row.keys);
        EXPECT_EQ(f.code, row.exitCode) << f.err.toStdString();
        EXPECT_EQ(f.err, "") << "stderr is for formwerk's own lines";
        EXPECT_EQ(f.json(), QJsonObject({{"Result", row.result}})) << f.out.toStdString();
        EXPECT_TRUE(f.out.endsWith("}\n"));
        EXPECT_EQ(f.out.count('\n'), 1) << "one JSON object on one line";
    }
}

TEST(CliProcess, BadScriptKeyIsRefusedBeforeTheDialogOpens)
{
    const Ran f = answerProgram({"frm_DialogMessage"}, "Escape Nonsense");
    EXPECT_EQ(f.code, 64);
    EXPECT_TRUE(f.err.contains("'Nonsense' is not a key")) << f.err.toStdString();
}

TEST(CliProcess, WithoutAWayToBeAnsweredItRefusesRatherThanFailOrWait)
{
    QProcessEnvironment offscreen = quietEnvironment();
    offscreen.insert("QT_QPA_PLATFORM", "offscreen");
    // No X server listens on a display number this high.
    QProcessEnvironment deadDisplay = quietEnvironment();
    deadDisplay.insert("DISPLAY", ":193");
    const struct {
        QProcessEnvironment env;
        QStringList args;
        int code;
        QString err;
    } rows[] = {
        {quietEnvironment(),
         {"frm_DialogMessage", "--flags", "4"},
         69,
         "formwerk: no display to show the dialog on (set DISPLAY, or use --screenshot)\n"},
        {offscreen, {"frm_DialogMessage"}, 69, "formwerk: the offscreen platform shows no window"},
        {deadDisplay, {"frm_DialogMessage"}, 69, "formwerk: cannot open display :193: "},
        // A message box here would hang or crash the process.
        {offscreen, {"frm_DialogNothing"}, 64, "formwerk: unknown dialog 'frm_DialogNothing'"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.args.join(' ').toStdString());
        const Ran f = startProgram(row.args, row.env);
        EXPECT_EQ(f.code, row.code);
        EXPECT_TRUE(f.err.startsWith(row.err)) << f.err.toStdString();
        EXPECT_EQ(f.err.count('\n'), 1);
        EXPECT_TRUE(f.out.isEmpty());
    }
}

TEST(CliProcess, AbortingTheProgressWindowEndsTheRunWithTwoWhileInputIsStillOpen)
{
    const Ran f = answerProgram({"frm_DialogProcess", "--title", "Kopieren"}, "Escape",
                                "range 0 10\n3\n", true);
    EXPECT_EQ(f.code, 2) << f.err.toStdString();
}

TEST(CliProcess, KeysThatLeaveTheDialogOpenEndAtTheTimeLimit)
{
    QTemporaryDir dir;
    QFile xml(dir.filePath("a.xml"));
    ASSERT_TRUE(xml.open(QIODevice::WriteOnly));
    xml.write("<a><b/></a>");
    xml.close();
    const QJsonObject timedOut{{"Result", 0}, {"TimedOut", true}};
    const struct {
        QStringList args;
        const char* keys;
        QJsonObject answer;
        int code;
    } rows[] = {
        {{"frm_DialogText", "--text", "Protokoll", "--timeout", "0.5"}, "Escape", timedOut, 124},
        {{"frm_DialogXMLInspector", "--xml", xml.fileName(), "--timeout", "0.5"},
         "Escape",
         timedOut,
         124},
        {{"frm_DialogNumericTouch", "--timeout=0.5"}, "Escape", timedOut, 124},
        // No choice made: Return leaves the choice, and the veil behind it, open.
        {{"frm_DialogCritical", "--choice", "Leeren", "--timeout", "0.5"}, "Return", timedOut, 124},
        // Waiting for more input that never comes.
        {{"frm_DialogProcess", "--timeout", "0.5"}, "", timedOut, 124},
        {{"frm_DialogMessage", "--flags", "4", "--timeout", "20"}, "Escape", {{"Result", 7}}, 7},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.args.join(' ').toStdString());
        const Ran f = answerProgram(row.args, row.keys, "range 0 10\n3\n", true);
        EXPECT_EQ(f.code, row.code) << f.err.toStdString();
        EXPECT_EQ(f.json(), row.answer) << f.out.toStdString();
        EXPECT_FALSE(f.err.contains("formwerk:")) << "a limit asked for needs no notice";
    }
}

TEST(CliProcess, CriticalChoiceAnswersBehindItsFadingNotice)
{
    Ran f = answerProgram({"frm_DialogCritical", "--text", "Datenbank leeren?", "--choice",
                           "Leeren", "--choice", "Sichern und leeren", "--choice", "Nichts tun"},
                          "3 Return");
    EXPECT_EQ(f.code, 1) << f.err.toStdString();
    EXPECT_EQ(f.json(), QJsonObject({{"Result", 1}, {"Confirmed", true}, {"ChoiceIndex", 3}}));

    f = answerProgram({"frm_DialogCritical"}, "1 Escape"); // chosen, but left without "Weiter"
    EXPECT_EQ(f.code, 2) << f.err.toStdString();
    EXPECT_EQ(f.json(), QJsonObject({{"Result", 2}, {"Confirmed", false}, {"ChoiceIndex", 0}}));

    f = answerProgram({"frm_DialogCritical", "--choice", "a", "--choice", "b", "--choice", "c",
                       "--choice", "d", "--choice", "e"},
                      "Escape");
    EXPECT_TRUE(f.err.contains("only the first 3 of 5 choices are shown")) << f.err.toStdString();

    QTemporaryDir dir;
    const QString png = dir.filePath("choice.png");
    // No display is needed for a screenshot.
    f = startProgram({"frm_DialogCritical", "--choice", "Ja", "--screenshot", png},
                     quietEnvironment());
    EXPECT_EQ(f.code, 0) << f.err.toStdString();
    EXPECT_TRUE(f.out.isEmpty());
    const QImage picture(png);
    EXPECT_LT(picture.width(), 1000) << "the choice, not the screen-wide veil";
    EXPECT_NE(picture.pixel(picture.width() / 2, picture.height() / 2), qRgb(0, 0, 0));
}

TEST(CliProcess, ProgressLinesDriveTheBarGarbageIsWarnedAboutAndTheEndOfInputCloses)
{
    QProcessEnvironment env = quietEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    const Ran f = startProgram({"frm_DialogProcess", "--title", "Kopieren"}, env,
                               "range 0 10\n3\nfünf\n\nrange 1\n7\n10");
    EXPECT_EQ(f.code, 0) << f.err.toStdString();
    EXPECT_EQ(f.json(), QJsonObject({{"Result", 0}}));
    EXPECT_TRUE(f.err.contains(QStringLiteral("'fünf'"))) << f.err.toStdString();
    EXPECT_TRUE(f.err.contains(QStringLiteral("'range 1'"))) << f.err.toStdString();
    EXPECT_EQ(f.err.count(QStringLiteral("ignored input line")), 2) << f.err.toStdString();
}

TEST(CliProcess, TheProgressWindowShowsTextWhereItShowsSubtitle)
{
    QTemporaryDir dir;
    const auto picture = [&](const QStringList& options) {
        const QString png = dir.filePath(QString::number(qHash(options.join(' '))) + ".png");
        const Ran f = startProgram(QStringList{"frm_DialogProcess", "--screenshot", png} + options,
                                   quietEnvironment());
        EXPECT_EQ(f.code, 0) << f.err.toStdString();
        return QImage(png);
    };
    const QImage byText = picture({"--text", "Dateien werden kopiert"});
    EXPECT_FALSE(byText.isNull());
    EXPECT_EQ(byText, picture({"--subtitle", "Dateien werden kopiert"}));
    EXPECT_NE(byText, picture({}));
}

} // namespace
