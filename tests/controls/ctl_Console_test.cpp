#include "ControlsTestForm.h"
#include "controls/ctl_Console.h"

#include <gtest/gtest.h>

namespace {

using namespace fw::testing;

class ConsoleTest : public ::testing::Test {
  protected:
    ConsoleTest()
    {
        console = form.Add<fw::ctl_Console>(QStringLiteral("con_Terminal"));
        console->Move(0, 0, fw::ToTwips(400), fw::ToTwips(200));
        console->LineEntered = [this](const QString& line) { entered << line; };
        form.ShowNow();
        Focus(*console);
    }

    void enter(const QString& text)
    {
        Type(form, text);
        PressKey(form, Qt::Key_Return);
    }

    ControlsTestForm form;
    fw::ctl_Console* console = nullptr;
    QStringList entered;
};

TEST_F(ConsoleTest, ReturnRaisesTheLineAsTypedAndClearsTheInput)
{
    enter(QStringLiteral("USER anonymous"));
    enter(QStringLiteral("  RETR  Bericht März.txt "));
    enter(QString());
    EXPECT_EQ(entered, (QStringList{"USER anonymous", "  RETR  Bericht März.txt ", ""}));
    EXPECT_EQ(console->InputText(), "");
    EXPECT_EQ(console->Output(), "") << "the control echoes nothing";
}

TEST_F(ConsoleTest, UpAndDownWalkThroughEarlierLinesAndBackToTheDraft)
{
    enter(QStringLiteral("PWD"));
    enter(QStringLiteral("CWD pub"));
    Type(form, QStringLiteral("LI"));
    const struct {
        Qt::Key key;
        const char* shown;
    } steps[] = {{Qt::Key_Up, "CWD pub"},   {Qt::Key_Up, "PWD"},  {Qt::Key_Up, "PWD"},
                 {Qt::Key_Down, "CWD pub"}, {Qt::Key_Down, "LI"}, {Qt::Key_Down, "LI"}};
    for (const auto& step : steps) {
        PressKey(form, step.key);
        EXPECT_EQ(console->InputText(), step.shown);
    }
    PressKey(form, Qt::Key_Up);
    PressKey(form, Qt::Key_Return);
    EXPECT_EQ(entered.last(), "CWD pub");
}

TEST_F(ConsoleTest, OutputKeepsOnlyTheLastLines)
{
    console->SetMaxLines(3);
    console->Write(QStringLiteral("220 Willkommen"));
    console->WriteLine(QStringLiteral(" am Server\r"));
    EXPECT_EQ(console->Output(), "220 Willkommen am Server\n");
    for (int i = 1; i <= 500; ++i)
        console->WriteLine(QStringLiteral("Zeile %1").arg(i), Qt::red);
    EXPECT_EQ(console->Output(), "Zeile 498\nZeile 499\nZeile 500\n");
}

} // namespace
