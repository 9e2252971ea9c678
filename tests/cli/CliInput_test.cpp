// The input forms through the `formwerk` command: options and request arrays
// in, the typed texts out as JSON.
#include "CliRun.h"

#include <QJsonArray>

namespace {

using fw::testing::answerProgram;
using fw::testing::Ran;

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

} // namespace
