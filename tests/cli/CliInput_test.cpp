// The input forms through the `formwerk` command: options and request arrays
// in, the typed texts out as JSON.
#include "CliRun.h"

#include <QJsonArray>
#include <clocale>

namespace {

using fw::testing::answerProgram;
using fw::testing::Ran;

// The program with --default given as raw bytes (printf escapes), which a
// QStringList argument could not carry.
Ran answerWithRawDefault(const char* locale, const char* printfBytes)
{
    QProcess process;
    QProcessEnvironment env = fw::testing::quietEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("FORMWERK_SCRIPT_KEYS", "Return");
    env.insert("LC_ALL", locale);
    process.setProcessEnvironment(env);
    process.start("/bin/sh", {"-c", R"sh(exec "$0" frm_DialogInput --default "$(printf "$1")")sh",
                              FORMWERK_CLI_PATH, printfBytes});
    EXPECT_TRUE(process.waitForFinished(30000));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

bool localeInstalled(const char* name)
{
    locale_t locale = newlocale(LC_CTYPE_MASK, name, locale_t(0));
    if (locale)
        freelocale(locale);
    return locale != locale_t(0);
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
        const Ran f = answerProgram(row.args, QString::fromUtf8(row.keys));
        EXPECT_EQ(f.json(), row.expected) << f.err.toStdString();
        EXPECT_EQ(f.out.count('\n'), 1) << f.out.toStdString();
        EXPECT_EQ(f.code, row.expected.value("Result").toInt());
    }
}

TEST(CliInput, TheTwoFieldFormTakesAndGivesTwoTexts)
{
    const QJsonArray pair{"A:1", "ü|2"};
    const Ran options = answerProgram({"frm_DialogInputDbl", "--default2", "ü|2", "--default",
                                       "A:1", "--text", "Eins", "--text2", "Zwei"},
                                      "Return Return");
    EXPECT_EQ(options.json(), (QJsonObject{{"Result", 1}, {"InputText", pair}}))
        << options.err.toStdString();

    const Ran request = answerProgram({"frm_DialogInputDbl", "--request", "-"}, "Return Return",
                                      R"({"Texts":{"DefaultText":["A:1","ü|2"],
                                        "Description":["Eins","Zwei"]}})");
    EXPECT_EQ(request.json(), (QJsonObject{{"Result", 1}, {"InputText", pair}}))
        << request.err.toStdString();
}

// What a shell script reads with $(formwerk ... --plain): the value alone, or
// nothing when the dialog was cancelled; the exit code as without --plain.
TEST(CliInput, PlainPrintsTheMainValueAloneAndNothingOnCancel)
{
    const struct Row {
        QStringList args;
        const char* keys;
        const char* out;
        int code;
    } rows[] = {
        {{"frm_DialogInput", "--default", "Grüße \"da\"", "--plain"},
         "Return",
         "Grüße \"da\"\n",
         1},
        {{"frm_DialogInput", "--default", "x", "--plain"}, "Escape", "", 2},
        {{"frm_DialogInputDbl", "--default", "a", "--default2", "b", "--plain"},
         "Return Return",
         "a\nb\n",
         1},
        {{"frm_DialogColor", "--color", "#102030", "--plain"}, "Return", "#102030\n", 1},
        {{"frm_DialogColor", "--color", "#102030", "--plain"}, "Escape", "", 2},
        {{"frm_DialogMessage", "--flags", "4", "--plain"}, "Escape", "7\n", 7},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.args.join(' ').toStdString() + " / " + row.keys);
        const Ran f = answerProgram(row.args, QString::fromUtf8(row.keys));
        EXPECT_EQ(f.out, QString::fromUtf8(row.out)) << f.err.toStdString();
        EXPECT_EQ(f.code, row.code);
    }
}

TEST(CliInput, ArgumentsAreReadInTheLocalesEncodingAndUndecodableOnesAreNamed)
{
    const struct Row {
        const char* locale;
        const char* bytes;
        QString shown;
        const char* warning;
    } rows[] = {
        {"C.UTF-8", "Gr\\303\\274n", QStringLiteral("Grün"), nullptr},
        {"C", "Gr\\303\\274n", QStringLiteral("Grün"), nullptr},
        {"de_DE.ISO-8859-1", "Gr\\374n", QStringLiteral("Grün"), nullptr},
        {"C.UTF-8", "Gr\\374n", QStringLiteral("Gr\uFFFDn"),
         "argument 3 \"Gr\uFFFDn\" is not valid UTF-8"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.locale);
        if (!localeInstalled(row.locale)) {
            std::printf("locale %s is not installed; row skipped\n", row.locale);
            continue;
        }
        const Ran f = answerWithRawDefault(row.locale, row.bytes);
        EXPECT_EQ(f.json().value("InputText").toString(), row.shown) << f.err.toStdString();
        if (row.warning)
            EXPECT_TRUE(f.err.startsWith(QString("formwerk: ") + row.warning))
                << f.err.toStdString();
        else
            EXPECT_EQ(f.err, "");
    }
}

} // namespace
