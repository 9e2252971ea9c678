// The command's logic in this process: what it hands the dialog, what it
// prints, and how it refuses bad input without showing anything.
#include "cli/Cli.h"
#include "core/HasContext.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

using fw::Form;
using fw::testing::ModalDriver;

struct Outcome {
    int code = -1;
    QString out;
    QString err;
};

Outcome run(const QStringList& args)
{
    Outcome outcome;
    QTextStream out(&outcome.out);
    QTextStream err(&outcome.err);
    outcome.code = fw::cli::Run(args, out, err);
    return outcome;
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

class CliTest : public ::testing::Test {
  protected:
    void TearDown() override { EXPECT_FALSE(anyWindowVisible()) << "a window outlived the run"; }

    QString writeFile(const QString& name, const QByteArray& bytes)
    {
        const QString path = m_dir.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    QTemporaryDir m_dir;
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
    const QString png = m_dir.filePath("dialog.png");
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

TEST_F(CliTest, ScreenshotToAnUnwritablePlaceFails)
{
    const Outcome o = run({"frm_DialogMessage", "--screenshot", m_dir.filePath("no/such/x.png")});
    EXPECT_EQ(o.code, 73);
    EXPECT_TRUE(o.err.startsWith("formwerk: cannot write screenshot")) << o.err.toStdString();
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

    struct Row {
        const char* name;
        QStringList args;
        int code;
        QString message;
    };
    const Row rows[] = {
        {"unknown option",
         {"frm_DialogMessage", "--colour", "red"},
         64,
         "unknown option '--colour'"},
        {"missing value", {"frm_DialogMessage", "--title"}, 64, "--title needs a value"},
        {"switch with value", {"--list=yes"}, 64, "--list takes no value"},
        {"flags not a number",
         {"frm_DialogMessage", "--flags", "vier"},
         64,
         "--flags needs an integer, not 'vier'"},
        {"flags with a fraction",
         {"frm_DialogMessage", "--flags", "1.5"},
         64,
         "--flags needs an integer, not '1.5'"},
        {"flags in octal",
         {"frm_DialogMessage", "--flags", "0o4"},
         64,
         "--flags needs an integer, not '0o4'"},
        {"language unknown",
         {"frm_DialogMessage", "--language", "fr"},
         64,
         "--language takes de or en"},
        {"no dialog name", {"--flags", "4"}, 64, "which dialog?"},
        {"two dialog names", {"frm_DialogMessage", "frm_DialogInput"}, 64, "one dialog at a time"},
        {"name in other case", {"frm_dialogmessage"}, 64, "unknown dialog 'frm_dialogmessage'"},
        {"name not in the library", {"frm_DialogKeyboard"}, 64, "unknown dialog"},
        {"request not JSON",
         {"frm_DialogMessage", "--request", badJson},
         65,
         "request: not valid JSON"},
        {"member of wrong type",
         {"frm_DialogMessage", "--request", wrongType},
         65,
         "request: Request.Flags must be an integer"},
        {"fraction for an integer",
         {"frm_DialogMessage", "--request", fraction},
         65,
         "request: Request.Flags must be an integer"},
        {"unknown member",
         {"frm_DialogMessage", "--request", unknown},
         65,
         "request: unknown member Request.Colour"},
        {"unknown record",
         {"frm_DialogMessage", "--request", record},
         65,
         "request: unknown member Dialog"},
        {"not an object",
         {"frm_DialogMessage", "--request", array},
         65,
         "request: the top level must be a JSON object"},
        {"list with a number",
         {"frm_DialogMessage", "--request", list},
         65,
         "request: Items.ItemList must be an array of strings"},
        {"request file missing",
         {"frm_DialogMessage", "--request", m_dir.filePath("none.json")},
         66,
         "cannot read request file"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
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
