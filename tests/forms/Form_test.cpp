// The form life cycle and key handling, driven as a user would.
#include "forms/ControlArray.h"
#include "forms/Form.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

class ProbeForm : public Form {
  public:
    ProbeForm() : Form(QStringLiteral("frm_Probe"))
    {
        window()->resize(300, 200);
        txt = Add<TextBox>(QStringLiteral("txt_Name"));
        txt->Move(ToTwips(10), ToTwips(10), ToTwips(200), ToTwips(24));
        ok = Add<CommandButton>(QStringLiteral("but_OK"));
        ok->Move(ToTwips(10), ToTwips(50), ToTwips(80), ToTwips(28));
        ok->Click = [this] { log += "ok;"; };
        cancel = Add<CommandButton>(QStringLiteral("but_Cancel"));
        cancel->Move(ToTwips(100), ToTwips(50), ToTwips(80), ToTwips(28));
        cancel->SetCancel(true);
        cancel->Click = [this] { log += "cancel;"; };
    }

    std::string log;
    int loads = 0;
    bool refuseUnload = false;
    int lastUnloadMode = -1;
    int swallowKey = 0;
    TextBox* txt;
    CommandButton* ok;
    CommandButton* cancel;

  protected:
    void Form_Load() override { ++loads; }
    void Form_KeyDown(int& keyCode, int shift) override
    {
        log += "down" + std::to_string(keyCode) + "/" + std::to_string(shift) + ";";
        if (keyCode == swallowKey)
            keyCode = 0;
    }
    void Form_KeyPress(int& keyAscii) override { log += "press" + std::to_string(keyAscii) + ";"; }
    void Form_QueryUnload(bool& cancelUnload, int mode) override
    {
        lastUnloadMode = mode;
        cancelUnload = refuseUnload;
    }
};

TEST(FormLifecycle, ModalShowRunsLoadOnceAndReturnsAfterUnload)
{
    ProbeForm form;
    ModalDriver driver;
    driver.OnNextModal([](Form& f) {
        EXPECT_TRUE(f.HasPainted());
        EXPECT_TRUE(f.window()->isVisible());
        f.Unload();
    });
    form.Show(true);
    EXPECT_EQ(form.loads, 1);
    EXPECT_TRUE(form.IsUnloaded());
    EXPECT_FALSE(form.window()->isVisible());
    EXPECT_EQ(form.lastUnloadMode, Form::UnloadByCode);
    EXPECT_EQ(driver.Pending(), 0);
    EXPECT_THROW(form.Show(true), std::logic_error) << "a form serves once";
}

TEST(FormLifecycle, ClosingTheWindowIsAnUnloadByTheUserThatMayBeRefused)
{
    ProbeForm form;
    form.refuseUnload = true;
    ModalDriver driver;
    driver.OnNextModal([&](Form& f) {
        CloseWindow(f);
        EXPECT_FALSE(f.IsUnloaded()) << "QueryUnload refused";
        EXPECT_TRUE(f.window()->isVisible());
        form.refuseUnload = false;
        CloseWindow(f);
    });
    form.Show(true);
    EXPECT_TRUE(form.IsUnloaded());
    EXPECT_EQ(form.lastUnloadMode, Form::UnloadByUser);
}

TEST(FormLifecycle, NestedModalFormsAreDrivenInOrder)
{
    ProbeForm outer;
    ProbeForm inner;
    ModalDriver driver;
    driver.OnNextModal([&](Form&) {
        inner.Show(true);
        outer.Unload();
    });
    driver.OnNextModal([&](Form& f) {
        EXPECT_EQ(&f, &inner);
        f.Unload();
    });
    outer.Show(true);
    EXPECT_TRUE(inner.IsUnloaded());
    EXPECT_TRUE(outer.IsUnloaded());
    ASSERT_EQ(driver.Seen().size(), 2u);
}

TEST(FormKeys, PreviewSeesKeysFirstAndMaySwallowThem)
{
    ProbeForm form;
    form.Show(false);
    Focus(*form.txt);
    Type(form, QStringLiteral("x"));
    EXPECT_EQ(form.log.find("down"), std::string::npos) << "without preview the box takes it";

    form.SetKeyPreview(true);
    Type(form, QStringLiteral("ab"));
    EXPECT_EQ(form.txt->Text(), QStringLiteral("xab"));
    EXPECT_NE(form.log.find("down65/0;press97;"), std::string::npos) << form.log;
    form.swallowKey = 'C';
    Type(form, QStringLiteral("c"));
    EXPECT_EQ(form.txt->Text(), QStringLiteral("xab")) << "a swallowed key types nothing";
    PressKey(form, Qt::Key_F12, Qt::ShiftModifier);
    EXPECT_NE(form.log.find("down123/1;"), std::string::npos);
    form.Unload();
}

TEST(FormKeys, ReturnAndEscapePressTheRightButtons)
{
    ProbeForm form;
    form.ok->SetDefault(true);
    form.Show(false);
    Focus(*form.txt);
    PressKey(form, Qt::Key_Return);
    PressKey(form, Qt::Key_Escape);
    Focus(*form.cancel);
    PressKey(form, Qt::Key_Return);
    EXPECT_EQ(form.log, "ok;cancel;cancel;") << "Return on a focused button presses that button";
    form.ok->SetVisible(false);
    Focus(*form.txt);
    PressKey(form, Qt::Key_Return);
    EXPECT_EQ(form.log, "ok;cancel;cancel;") << "a hidden default button is not pressed";
    form.Unload();
}

TEST(FormControls, TextBoxRaisesChangeForTypedAndProgrammaticText)
{
    ProbeForm form;
    int changes = 0;
    form.txt->Change = [&] { ++changes; };
    form.Show(false);
    form.txt->SetText(QStringLiteral("Grüße 😀"));
    EXPECT_EQ(changes, 1);
    Focus(*form.txt);
    form.txt->SetSelStart(0);
    form.txt->SetSelLength(5);
    EXPECT_EQ(form.txt->SelText(), QStringLiteral("Grüße"));
    Type(form, QStringLiteral("Hi"));
    EXPECT_EQ(form.txt->Text(), QStringLiteral("Hi 😀"));
    EXPECT_GE(changes, 3);
    EXPECT_TRUE(form.txt->SetProperty(QStringLiteral("TEXT"), QStringLiteral("late")));
    EXPECT_EQ(form.txt->GetProperty(QStringLiteral("text")).toString(), QStringLiteral("late"));
    EXPECT_FALSE(form.txt->GetProperty(QStringLiteral("NoSuchThing")).isValid());
    form.Unload();
}

TEST(FormControls, GeometryIsInTwipsAndVisibilityIsTheControlsOwnFlag)
{
    ProbeForm form;
    form.txt->Move(150, 300, 1500, 360);
    EXPECT_EQ(form.txt->widget()->width(), 100);
    EXPECT_TRUE(form.txt->Visible()) << "visible though the form is not shown yet";
    form.SetWidth(6000);
    EXPECT_EQ(form.ScaleWidth(), 6000) << "no frame on the offscreen platform";
}

TEST(FormControls, ControlArraysGrowAtRunTime)
{
    ProbeForm form;
    int clicked = -1;
    ControlArray<CommandButton> buttons(
        QStringLiteral("but_Sel"),
        [&](int) { return form.Add<CommandButton>(QStringLiteral("but_Sel")); },
        [&](CommandButton& b) { b.Click = [&clicked, &b] { clicked = b.Index(); }; });
    buttons.Load(0);
    buttons.Load(3);
    EXPECT_EQ(buttons.LBound(), 0);
    EXPECT_EQ(buttons.UBound(), 3);
    EXPECT_THROW(buttons.Load(3), std::invalid_argument);
    EXPECT_THROW(buttons[2], std::out_of_range);
    EXPECT_EQ(form.FindControl(QStringLiteral("BUT_SEL"), 3), &buttons[3]);
    form.Show(false);
    Click(buttons[3]);
    EXPECT_EQ(clicked, 3);
    form.Unload();
}

TEST(FormControls, TimerTicksOnlyWhileEnabledWithAnInterval)
{
    ProbeForm form;
    auto* timer = form.Add<Timer>(QStringLiteral("tmr_Unload"));
    int ticks = 0;
    timer->Tick = [&] {
        if (++ticks == 2)
            timer->SetEnabled(false);
    };
    timer->SetEnabled(true);
    QTest::qWait(30);
    EXPECT_EQ(ticks, 0) << "interval 0 never ticks";
    timer->SetInterval(5);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks >= 2; }, 2000));
    QTest::qWait(30);
    EXPECT_EQ(ticks, 2);
}

TEST(FormControls, PictureBoxDrawsAndReadsInItsScaleMode)
{
    ProbeForm form;
    auto* picture = form.Add<PictureBox>(QStringLiteral("pic_Key"));
    picture->Move(0, 0, ToTwips(48), ToTwips(48));
    picture->SetBackColor(Qt::white);
    picture->SetScaleMode(3);
    picture->Box(10, 10, 20, 20, Qt::red, true);
    EXPECT_EQ(picture->Point(15, 15), QColor(Qt::red));
    EXPECT_EQ(picture->Point(30, 30), QColor(Qt::white));
    EXPECT_FALSE(picture->Point(100, 100).isValid());
    picture->SetScaleMode(1);
    picture->Line(0, 600, 720, 600, Qt::blue);
    EXPECT_EQ(picture->Point(300, 600), QColor(Qt::blue)) << "twips: y 600 is pixel row 40";
    picture->Cls();
    EXPECT_EQ(picture->Point(225, 225), QColor(Qt::white));
}

TEST(FormText, LeadingNumberReadsLikeTheClassicValFunction)
{
    const std::pair<const char*, int> cases[] = {{"-3D:OFF", -3}, {"6", 6},  {"", 0}, {"abc", 0},
                                                 {"  12x", 12},   {"+7", 7}, {"-", 0}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(LeadingNumber(QString::fromUtf8(text)), value) << text;
}

TEST(FormWindows, NoTopLevelFormWindowSurvivesItsForm)
{
    {
        ProbeForm form;
        form.Show(false);
    }
    for (QWidget* w : QApplication::topLevelWidgets())
        EXPECT_EQ(Form::fromWindow(w), nullptr);
}

} // namespace
