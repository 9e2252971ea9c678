// Keystroke strings typed into a text box as a German keyboard types them.
#include "forms/Form.h"
#include "forms/KeyCodes.h"
#include "forms/Screen.h"
#include "forms/SendKeys.h"
#include "forms/StdControls.h"
#include "forms/testing/UserInput.h"

#include <QWidget>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

class TypingForm : public Form {
  public:
    TypingForm() : Form(QStringLiteral("frm_Typing"))
    {
        window()->resize(300, 100);
        txt = Add<TextBox>(QStringLiteral("txt_Line"));
        txt->Move(ToTwips(10), ToTwips(10), ToTwips(200), ToTwips(24));
        txt->KeyDown = [this](int& keyCode, int shift) {
            keys += QString::number(keyCode) + "/" + QString::number(shift) + ";";
        };
    }
    TextBox* txt;
    QString keys;
};

struct TypedCase {
    const char* keys;
    QString start; ///< text in the box before, caret at its end
    QString typed; ///< text in the box after
};

void PrintTo(const TypedCase& row, std::ostream* os)
{
    *os << '"' << row.keys << '"';
}

class SendKeysTyping : public ::testing::TestWithParam<TypedCase> {};

TEST_P(SendKeysTyping, TypesWhatAGermanKeyboardTypes)
{
    const TypedCase& row = GetParam();
    TypingForm form;
    form.Show();
    form.txt->SetText(row.start);
    form.txt->SetSelStart(row.start.size());
    Focus(*form.txt);
    SendKeys(QString::fromUtf8(row.keys), form.txt->widget());
    ProcessEvents();
    EXPECT_EQ(form.txt->Text(), row.typed) << row.keys;
}

INSTANTIATE_TEST_SUITE_P(
    Notation, SendKeysTyping,
    ::testing::Values(
        // Plain characters, shifted ones and the upper row.
        TypedCase{"abc", "", "abc"}, TypedCase{"+a", "", "A"}, TypedCase{"A!", "", "A!"},
        TypedCase{"+1+2+3", "", "!\"§"}, TypedCase{"+ß", "", "?"}, TypedCase{"+<", "", ">"},
        TypedCase{"+7+0", "", "/="}, TypedCase{"+http://", "", "Http://"},
        TypedCase{"www.", "", "www."},
        // Ctrl+Alt is AltGr: the third character of the key.
        TypedCase{"^%q", "", "@"}, TypedCase{"^%e", "", "€"}, TypedCase{"^%m", "", "µ"},
        TypedCase{"^%7^%8^%9^%0", "", "{[]}"}, TypedCase{"^%ß", "", "\\"},
        TypedCase{"^%{+}", "x", "x~"}, TypedCase{"^%2^%3", "", "²³"}, TypedCase{"^%1", "x", "x"},
        TypedCase{"^%{}}", "", "}"},
        // Ctrl or Alt alone type nothing.
        TypedCase{"^a", "x", "x"}, TypedCase{"%a", "x", "x"},
        // Quoted specials.
        TypedCase{"{+}{^}{%}{~}{(}{)}{{}{}}", "", "+^%~(){}"}, TypedCase{"+{(}", "", "("},
        TypedCase{"+{*}", "", "*"}, TypedCase{"@", "", "@"},
        // Named keys edit the line.
        TypedCase{"{bs}", "abc", "ab"}, TypedCase{"{backspace}{bs}", "abc", "a"},
        TypedCase{"{left}x", "ab", "axb"}, TypedCase{"{home}x", "ab", "xab"},
        TypedCase{"{home}{end}x", "ab", "abx"}, TypedCase{"{left 2}x", "abc", "axbc"},
        TypedCase{"{home}{right}{del}", "abc", "ac"}, TypedCase{"{a 3}", "", "aaa"},
        TypedCase{"+(ab)c", "", "ABc"},
        // Strings that cannot be typed are dropped whole.
        TypedCase{"ab^%+", "x", "x"}, TypedCase{"+", "x", "x"}, TypedCase{"a{bogus}", "x", "x"},
        TypedCase{"a{b", "x", "x"}, TypedCase{"aé", "x", "x"}, TypedCase{"(ab", "x", "x"}));

TEST(SendKeys, DeliversModifiersWithTheKeySoShortcutsWork)
{
    TypingForm form;
    form.Show();
    Focus(*form.txt);
    EXPECT_TRUE(SendKeys(QStringLiteral("^a%{left}~{esc}"), form.txt->widget()));
    ProcessEvents();
    EXPECT_EQ(form.keys, QStringLiteral("65/2;37/4;13/0;27/0;"));
}

TEST(SendKeys, ReturnsBeforeTheKeysArrive)
{
    TypingForm form;
    form.Show();
    Focus(*form.txt);
    EXPECT_TRUE(SendKeys(QStringLiteral("ab"), form.txt->widget()));
    EXPECT_EQ(form.txt->Text(), QString());
    ProcessEvents();
    EXPECT_EQ(form.txt->Text(), QStringLiteral("ab"));
}

TEST(SendKeys, DropsAStringEndingInAModifier)
{
    for (const char* keys : {"^", "%", "+", "^%+", "a+", "+(a)^"})
        EXPECT_FALSE(ParseSendKeys(QString::fromLatin1(keys))) << keys;
}

} // namespace
