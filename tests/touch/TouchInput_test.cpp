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

TEST_F(TouchHook, WithTouchOffOrUnknownAClickSelectsTheTextBoxTextAndLeavesALabelAlone)
{
    for (const bool hostCanTell : {true, false}) {
        SCOPED_TRACE(hostCanTell ? "touch off" : "a host that cannot tell");
        host->clearCalls();
        form.answers.clear();
        if (!hostCanTell)
            host->failing.insert("GetBool");
        EXPECT_FALSE(hTouchEnabled());
        form.txt->PerformClick();
        Click(*form.lab);
        EXPECT_EQ(selected(), std::vector<const void*>{form.txt});
        EXPECT_EQ(form.answers, (std::vector<bool>{false, false}));
    }
    EXPECT_EQ(host->callsTo("GetBool").front(), "GetBool(Touchmode)");
}

TEST_F(TouchHook, WithTouchOnAClickOpensTheKeyboardWhoseEnterAloneWritesTheBox)
{
    host->settings["Touchmode"] = true;
    const struct {
        const char* name;
        std::vector<int> keys;
        const char* text;
        bool answer;
    } rows[] = {
        {"BACKSPACE SHIFT a ENTER", {12, 37, 26, 58}, "alA", true},
        {"a SYM Menü", {26, 52, 0}, "alt", false}, // SYM turns ESC into "Menü"
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        form.txt->SetText(QStringLiteral("alt"));
        form.answers.clear();
        driver.OnNextModal([&](Form& shown) {
            auto& keyboard = dynamic_cast<frm_DialogKeyboard&>(shown);
            EXPECT_EQ(keyboard.txt_Input->Text(), QStringLiteral("alt"));
            EXPECT_EQ(keyboard.lab_Description->Caption(), QStringLiteral("Eingabe"));
            for (int key : row.keys) {
                Click(keyboard.lab_Key[key]);
                ProcessEvents();
            }
        });
        form.txt->PerformClick();
        EXPECT_EQ(driver.Pending(), 0);
        EXPECT_EQ(form.txt->Text(), QString::fromLatin1(row.text));
        EXPECT_EQ(form.answers, std::vector<bool>{row.answer});
        EXPECT_TRUE(selected().empty());
    }
}

} // namespace
