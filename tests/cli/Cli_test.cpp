// The command's logic in this process: what it hands the dialog, what it
// prints, and how it refuses bad input without showing anything.
#include "CliRun.h"
#include "core/HasContext.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

using fw::Form;
using fw::testing::CliFilesTest;
using fw::testing::ModalDriver;

using Outcome = fw::testing::Ran;

Outcome run(const QStringList& args)
{
    return fw::testing::runInProcess(args);
}

fw::DialogContext& contextOf(Form& form)
{
    return dynamic_cast<fw::HasContext&>(form).context();
}

bool anyWindowVisible()
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible())
            return true;
    return false;
}

class CliTest : public CliFilesTest {
  protected:
    void TearDown() override { EXPECT_FALSE(anyWindowVisible()) << "a window outlived the run"; }
    ModalDriver m_driver;
};

TEST_F(CliTest, PrintsTheAnswerAndExitsWithItsCode)
{
    m_driver.OnNextModal([](Form& form) { fw::testing::PressKey(form, Qt::Key_Escape); });
    const Outcome o = run({"frm_DialogMessage", "--flags", "4"});
    EXPECT_EQ(o.code, 7);
    EXPECT_EQ(o.out, "{\"Result\":7}\n");
    EXPECT_EQ(o.err, "");
}

TEST_F(CliTest, OptionsFillTheHostRecordsAndPublicVariables)
{
    fw::DialogContext seen;
    QVariant mode;
    m_driver.OnNextModal([&](Form& form) {
        seen = contextOf(form);
        mode = form.GetPublic("DialogMode");
        fw::testing::PressKey(form, Qt::Key_F12);
    });
    const Outcome o = run({"frm_DialogMessage", "--title", "Fehler: Datei fehlt", "--text",
                           "Zeile \"eins\"\nZeile zwei", "--text2=Zweiter", "--flags", "0x1",
                           "--icon", "Ico\\32\\Computer\\Signs\\Question.ico", "--mode", "1"});
    EXPECT_EQ(o.code, 1);
    EXPECT_EQ(seen.Request.Title, "Fehler: Datei fehlt");
    EXPECT_EQ(seen.Texts.Description, "Zeile \"eins\"\nZeile zwei");
    EXPECT_EQ(seen.Texts.Description2, "Zweiter");
    EXPECT_EQ(seen.Request.Flags, 1);
    EXPECT_EQ(seen.Request.IconPath, "Ico\\32\\Computer\\Signs\\Question.ico");
    EXPECT_EQ(mode.toInt(), 1);
}

TEST_F(CliTest, CommandLineOptionsOverrideSingleMembersOfTheRequestFile)
{
    const QString request = writeFile("request.json", R"({
        "Request": {"Title": "Aus der Datei", "Flags": 4, "Result": 9},
        "Texts": {"Description": "Text aus der Datei"},
        "Public": {"DialogMode": 0}
    })");
    fw::DialogContext seen;
    m_driver.OnNextModal([&](Form& form) {
        seen = contextOf(form);
        fw::testing::CloseWindow(form);
    });
    const Outcome o = run({"--title", "Von der Zeile", "frm_DialogMessage", "--request", request});
    EXPECT_EQ(seen.Request.Title, "Von der Zeile");
    EXPECT_EQ(seen.Request.Flags, 4);
    EXPECT_EQ(seen.Texts.Description, "Text aus der Datei");
    // Closing the window answers nothing, so the preset result stands.
    EXPECT_EQ(o.out, "{\"Result\":9}\n");
    EXPECT_EQ(o.code, 9);
}

TEST_F(CliTest, LanguageOptionHoldsForTheRunOnly)
{
    const int before = fw::GetCoreDevLanguage().GetLanguage();
    int during = 0;
    m_driver.OnNextModal([&](Form& form) {
        during = fw::GetCoreDevLanguage().GetLanguage();
        fw::testing::PressKey(form, Qt::Key_Escape);
    });
    run({"frm_DialogMessage", "--language", before == 7 ? "en" : "de"});
    EXPECT_EQ(during, before == 7 ? 9 : 7);
    EXPECT_EQ(fw::GetCoreDevLanguage().GetLanguage(), before);
}

TEST_F(CliTest, ScreenshotSavesThePaintedDialogWithoutAnAnswer)
{
    const QString png = dir.filePath("dialog.png");
    const Outcome o =
        run({"frm_DialogMessage", "--flags", "3", "--title", "Speichern: Geändert", "--text",
             "Sollen die Änderungen gespeichert werden?", "--screenshot", png});
    EXPECT_EQ(o.code, 0) << o.err.toStdString();
    EXPECT_EQ(o.out, "");
    const QImage image(png);
    ASSERT_FALSE(image.isNull());
    EXPECT_GT(image.width(), 100);
    EXPECT_GT(image.height(), 50);
    EXPECT_TRUE(m_driver.Seen().empty()) << "a screenshot must not run the dialog modally";
}

TEST_F(CliTest, ListAndHelpNeedNoDialogName)
{
    const Outcome list = run({"--list"});
    EXPECT_EQ(list.code, 0);
    EXPECT_TRUE(list.out.split('\n').contains("frm_DialogMessage")) << list.out.toStdString();

    const Outcome help = run({"--help"});
    EXPECT_EQ(help.code, 0);
    for (const char* option : {"--title", "--flags", "--request", "--screenshot", "--language"})
        EXPECT_TRUE(help.out.contains(option)) << option;

    const Outcome version = run({"--version"});
    EXPECT_EQ(version.code, 0);
    EXPECT_TRUE(QRegularExpression("^formwerk \\d+\\.\\d+\\.\\d+\n$").match(version.out).hasMatch())
        << version.out.toStdString();

    // A dialog's own help: what it takes, not what it would ignore, and its keys.
    const Outcome input = run({"frm_DialogInput", "--help"});
    EXPECT_EQ(input.code, 0);
    for (const char* taken : {"--default", "--password", "--request", "Keys: Return"})
        EXPECT_TRUE(input.out.contains(taken)) << taken;
    for (const char* ignored : {"--mode", "--default2", "--flags", "--xml", "--list"})
        EXPECT_FALSE(input.out.contains(QString(ignored) + ' ')) << ignored;
}

TEST_F(CliTest, BadInputIsRefusedWithOneLineAndNoDialog)
{
    const QString badJson = writeFile("bad.json", R"({"Request": {"Title": "x",}})");
    const QString wrongType = writeFile("type.json", R"({"Request": {"Flags": "4"}})");
    const QString fraction = writeFile("fraction.json", R"({"Request": {"Flags": 1.5}})");
    const QString unknown = writeFile("unknown.json", R"({"Request": {"Colour": 1}})");
    const QString record = writeFile("record.json", R"({"Dialog": {}})");
    const QString array = writeFile("array.json", R"([1, 2])");
    const QString list = writeFile("list.json", R"({"Items": {"ItemList": ["a", 2]}})");
    const QString password = writeFile("password.json", R"({"Public": {"PasswordEntry": true}})");
    const QString mode = writeFile("mode.json", R"({"Public": {"DialogMode": 1}})");
    const QString pair =
        writeFile("pair.json", R"({"Texts": {"DefaultText": ["hello", "world"]}})");
    const QString prompts = writeFile("prompts.json", R"({"Texts": {"Description": ["A", "B"]}})");

    const QString msg = "frm_DialogMessage";
    const struct Row {
        int code;
        const char* message;
        QStringList args;
    } rows[] = {
        {64, "unknown option '--colour'", {msg, "--colour", "red"}},
        {64, "--title needs a value", {msg, "--title"}},
        {64, "--list takes no value", {"--list=yes"}},
        {64, "--flags needs an integer, not 'vier'", {msg, "--flags", "vier"}},
        {64, "--flags needs an integer, not '1.5'", {msg, "--flags", "1.5"}},
        {64, "--flags needs an integer, not '0o4'", {msg, "--flags", "0o4"}},
        {64, "--language takes de or en", {msg, "--language", "fr"}},
        {64, "which dialog?", {"--flags", "4"}},
        {64, "one dialog at a time", {msg, "frm_DialogInput"}},
        {64, "unknown dialog 'frm_dialogmessage'", {"frm_dialogmessage"}},
        {64, "unknown dialog", {"frm_DialogKeyboard"}}, // not in the library
        {65, "request: not valid JSON", {msg, "--request", badJson}},
        {65, "request: Request.Flags must be an integer", {msg, "--request", wrongType}},
        {65, "request: Request.Flags must be an integer", {msg, "--request", fraction}},
        {65, "request: unknown member Request.Colour", {msg, "--request", unknown}},
        {65, "request: unknown member Dialog", {msg, "--request", record}},
        {65, "request: the top level must be a JSON object", {msg, "--request", array}},
        {65, "request: Items.ItemList must be an array of strings", {msg, "--request", list}},
        {64, "frm_DialogMessage does not take Public.PasswordEntry", {msg, "--request", password}},
        {64,
         "frm_DialogInput does not take Public.DialogMode",
         {"frm_DialogInput", "--request", mode}},
        {64, "--mode does not apply to frm_DialogInput", {"frm_DialogInput", "--mode", "1"}},
        {64, "--mode needs an integer, not 'open'", {msg, "--mode", "open"}},
        {64,
         "--mode of frm_DialogFile takes open or save (1 or 2), not '3'",
         {"frm_DialogFile", "--mode", "3"}},
        {64, "--filter does not apply to frm_DialogMessage", {msg, "--filter", "A|*.a"}},
        {64, "--plain takes no value", {msg, "--plain=yes"}},
        {64,
         "--default2 does not apply to frm_DialogInput",
         {"frm_DialogInput", "--default2", "x"}},
        {64, "--xml does not apply to frm_DialogMessage", {msg, "--xml", "a.xml"}},
        {64, "--icon does not apply to frm_DialogColor", {"frm_DialogColor", "--icon", "a.png"}},
        // Only the two-field input unpacks pairs; elsewhere they would show packed.
        {65, "request: Texts.DefaultText must be a string", {"frm_DialogInput", "--request", pair}},
        {65, "request: Texts.Description must be a string", {msg, "--request", prompts}},
        {66, "cannot read request file", {msg, "--request", dir.filePath("none.json")}},
        {73, "cannot write screenshot", {msg, "--screenshot", dir.filePath("no/such/x.png")}},
        {64, "--timeout needs a number of seconds", {msg, "--timeout", "bald"}},
        {64, "--timeout needs a number of seconds", {msg, "--timeout", "-1"}},
        // Endless inputs are cut off at the limit instead of filling the memory.
        {65,
         "request file '/dev/zero' is larger than the limit of 64 MB",
         {msg, "--request", "/dev/zero"}},
        {65,
         "text file '/dev/zero' is larger than the limit of 64 MB",
         {"frm_DialogText", "--text-file", "/dev/zero"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.args.join(' ').toStdString());
        // Should a message box open after all, close it so that the test ends.
        bool sawModal = false;
        QTimer watchdog;
        watchdog.setInterval(200);
        QObject::connect(&watchdog, &QTimer::timeout, [&] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                sawModal = true;
                modal->close();
            }
        });
        watchdog.start();
        const Outcome o = run(row.args);
        EXPECT_EQ(o.code, row.code);
        EXPECT_TRUE(o.err.startsWith("formwerk: ")) << o.err.toStdString();
        EXPECT_TRUE(o.err.contains(row.message)) << o.err.toStdString();
        EXPECT_EQ(o.err.count('\n'), 1) << o.err.toStdString();
        EXPECT_EQ(o.out, "");
        EXPECT_FALSE(sawModal);
    }
    EXPECT_TRUE(m_driver.Seen().empty());
}

} // namespace
