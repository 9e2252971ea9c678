// The touch hook as an input form uses it: on a click in its text box.
#include "core/TouchInput.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"
#include "touch/KeyFaces.h"
#include "touch/frm_DialogKeyboard.h"

#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

// An input form that hands each click in its boxes to the hook.
class InputForm : public Form {
  public:
    InputForm() : Form(QStringLiteral("frm_Input"))
    {
        window()->resize(300, 100);
        txt = Add<TextBox>(QStringLiteral("txt_Value"));
        txt->Move(ToTwips(10), ToTwips(10), ToTwips(200), ToTwips(24));
        txt->SetText(QStringLiteral("alt"));
        txt->Click = [this] { answers.push_back(hTouchInput(*txt, QStringLiteral("Eingabe"))); };
        lab = Add<Label>(QStringLiteral("lab_Value"));
        lab->Move(ToTwips(10), ToTwips(50), ToTwips(200), ToTwips(24));
        lab->Click = [this] { answers.push_back(hTouchInput(*lab, QStringLiteral("Eingabe"))); };
    }
    TextBox* txt;
    Label* lab;
    std::vector<bool> answers;
};

class TouchHook : public ::testing::Test {
  protected:
    std::shared_ptr<TestHost> host = std::make_shared<TestHost>();
    ScopedCoreDev scope{host};
    ModalDriver driver;
    InputForm form;

    void SetUp() override { form.Show(); }
    std::vector<const void*> selected() const
    {
        std::vector<const void*> targets;
        for (std::size_t i = 0; i < host->calls.size(); ++i)
            if (host->calls[i].rfind("SelectAll", 0) == 0)
                targets.push_back(host->callTargets[i]);
        return targets;
    }
};

TEST_F(TouchHook, WithTouchOffAClickSelectsTheTextBoxText)
{
    form.txt->PerformClick();
    EXPECT_EQ(selected(), std::vector<const void*>{form.txt});
    EXPECT_EQ(form.answers, std::vector<bool>{false});
    EXPECT_EQ(host->callsTo("GetBool"), std::vector<std::string>{"GetBool(Touchmode)"});
}

TEST_F(TouchHook, WithTouchOffALabelIsLeftAlone)
{
    Click(*form.lab);
    EXPECT_TRUE(selected().empty());
    EXPECT_EQ(form.answers, std::vector<bool>{false});
}

TEST_F(TouchHook, AHostThatCannotTellMeansTouchOff)
{
    host->failing.insert("GetBool");
    EXPECT_FALSE(hTouchEnabled());
    form.txt->PerformClick();
    EXPECT_EQ(selected().size(), 1u);
}

TEST_F(TouchHook, WithTouchOnAClickOpensTheKeyboardAndConfirmingWritesTheBox)
{
    host->settings["Touchmode"] = true;
    driver.OnNextModal([](Form& shown) {
        auto& keyboard = dynamic_cast<frm_DialogKeyboard&>(shown);
        EXPECT_EQ(keyboard.txt_Input->Text(), QStringLiteral("alt"));
        EXPECT_EQ(keyboard.lab_Description->Caption(), QStringLiteral("Eingabe"));
        for (int key : {12, 37, 26}) { // BACKSPACE, SHIFT, a
            Click(keyboard.lab_Key[key]);
            ProcessEvents();
        }
        Click(keyboard.lab_Key[58]); // ENTER
    });
    form.txt->PerformClick();
    EXPECT_EQ(driver.Pending(), 0);
    EXPECT_EQ(form.txt->Text(), QStringLiteral("alA"));
    EXPECT_EQ(form.answers, std::vector<bool>{true});
    EXPECT_TRUE(selected().empty());
}

TEST_F(TouchHook, WithTouchOnQuittingLeavesTheBoxAsItWas)
{
    host->settings["Touchmode"] = true;
    driver.OnNextModal([](Form& shown) {
        auto& keyboard = dynamic_cast<frm_DialogKeyboard&>(shown);
        Click(keyboard.lab_Key[26]);
        Click(keyboard.lab_Key[52]); // SYM: ESC reads "Menü"
        Click(keyboard.lab_Key[0]);
    });
    form.txt->PerformClick();
    EXPECT_EQ(form.txt->Text(), QStringLiteral("alt"));
    EXPECT_EQ(form.answers, std::vector<bool>{false});
}

} // namespace
