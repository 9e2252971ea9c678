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

TEST(SendKeys, TypesWhatAGermanKeyboardTypes)
{
    struct Row {
        const char* keys;
        QString start; ///< text in the box before, caret at its end
        QString typed; ///< text in the box after
    };
    // clang-format off
    const Row rows[] = {
        // Plain characters, shifted ones and the upper row.
        {"abc", "", "abc"}, {"+a", "", "A"}, {"A!", "", "A!"}, {"+1+2+3", "", "!\"§"},
        {"+ß", "", "?"}, {"+<", "", ">"}, {"+7+0", "", "/="}, {"+http://", "", "Http://"},
        {"www.", "", "www."},
        // Ctrl+Alt is AltGr: the third character of the key.
        {"^%q", "", "@"}, {"^%e", "", "€"}, {"^%m", "", "µ"}, {"^%7^%8^%9^%0", "", "{[]}"},
        {"^%ß", "", "\\"}, {"^%{+}", "x", "x~"}, {"^%2^%3", "", "²³"}, {"^%1", "x", "x"},
        {"^%{}}", "", "}"},
        // Ctrl or Alt alone type nothing.
        {"^a", "x", "x"}, {"%a", "x", "x"},
        // Quoted specials.
        {"{+}{^}{%}{~}{(}{)}{{}{}}", "", "+^%~(){}"}, {"+{(}", "", "("}, {"+{*}", "", "*"},
        {"@", "", "@"},
        // Named keys edit the line.
        {"{bs}", "abc", "ab"}, {"{backspace}{bs}", "abc", "a"}, {"{left}x", "ab", "axb"},
        {"{home}x", "ab", "xab"}, {"{home}{end}x", "ab", "abx"}, {"{left 2}x", "abc", "axbc"},
        {"{home}{right}{del}", "abc", "ac"}, {"{a 3}", "", "aaa"}, {"+(ab)c", "", "ABc"},
        // Strings that cannot be typed, such as one ending in a modifier, are dropped whole.
        {"ab^%+", "x", "x"}, {"+", "x", "x"}, {"a{bogus}", "x", "x"}, {"a{b", "x", "x"},
        {"aé", "x", "x"}, {"(ab", "x", "x"}, {"%", "x", "x"}, {"a+", "x", "x"},
        {"+(a)^", "x", "x"},
        // Repeats beyond any typing need are refused, not typed for minutes.
        {"{f 332333334}", "x", "x"}, {"{a 60000}{b 60000}", "x", "x"}};
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.keys);
        TypingForm form;
        form.Show();
        form.txt->SetText(row.start);
        form.txt->SetSelStart(row.start.size());
        Focus(*form.txt);
        SendKeys(QString::fromUtf8(row.keys), form.txt->widget());
        ProcessEvents();
        EXPECT_EQ(form.txt->Text(), row.typed);
    }
}

TEST(SendKeys, DeliversModifiersWithTheKeyAfterReturning)
{
    TypingForm form;
    form.Show();
    Focus(*form.txt);
    EXPECT_TRUE(SendKeys(QStringLiteral("^a%{left}~{esc}x"), form.txt->widget()));
    EXPECT_TRUE(form.keys.isEmpty()) << "the keys arrive after SendKeys returns";
    ProcessEvents();
    EXPECT_EQ(form.keys, QStringLiteral("65/2;37/4;13/0;27/0;88/0;"));
    EXPECT_EQ(form.txt->Text(), QStringLiteral("x"));
}

} // namespace
