// The two-field input: pairs in, pairs out, Return moving on and answering.
#include "InputTestSupport.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "dialogs/frm_DialogInputDbl.h"
#include "forms/StdControls.h"
#include "forms/testing/UserInput.h"

using namespace fw;
using namespace fw::testing;

namespace {

class TwoFieldInput : public ::testing::Test {
  protected:
    ScopedTestHost host;
    ModalDriver driver;
    std::shared_ptr<DialogContext> context = std::make_shared<DialogContext>();
    frm_DialogInputDbl form;

    TwoFieldInput()
    {
        form.Context = context;
        context->Request.Title = "Anmeldung";
        context->Texts.Description = pack("Benutzer:", "Domäne:");
        context->Texts.DefaultText = pack("anna", "BÜRO");
        host->clearCalls();
    }

    static std::string pack(const QString& first, const QString& second)
    {
        return GetCoreDevText().Pairs().Pack(first.toStdString(), second.toStdString());
    }
    static std::pair<QString, QString> unpack(const std::string& packed)
    {
        std::string first, second;
        EXPECT_TRUE(GetCoreDevText().Pairs().Unpack(packed, first, second)) << packed.substr(0, 80);
        return {QString::fromStdString(first), QString::fromStdString(second)};
    }

    void run(const std::function<void(frm_DialogInputDbl&)>& action)
    {
        RunModal<frm_DialogInputDbl>(driver, form, action);
    }
};

TEST_F(TwoFieldInput, OpensWithBothPromptsAndDefaultsAndTheFirstBoxSelected)
{
    run([this](frm_DialogInputDbl& f) {
        EXPECT_EQ(f.Caption(), QStringLiteral("Anmeldung"));
        EXPECT_EQ(f.lab_DescriptionA->Caption(), QStringLiteral("Benutzer:"));
        EXPECT_EQ(f.lab_DescriptionB->Caption(), QStringLiteral("Domäne:"));
        EXPECT_EQ(f.txt_InputA->Text(), QStringLiteral("anna"));
        EXPECT_EQ(f.txt_InputB->Text(), QStringLiteral("BÜRO"));
        EXPECT_TRUE(f.but_DefText->Visible());
        EXPECT_EQ(host->callTargets.back(), static_cast<const void*>(f.txt_InputA));
        EXPECT_EQ(host->calls.back(), "SelectAll()");
        f.Unload();
    });
}

TEST_F(TwoFieldInput, TypingAtOnceFillsTheFirstBoxAndReturnMovesOnThenAnswers)
{
    // A long first prompt widens the form after it was first laid out.
    for (const QString& prompt :
         {QStringLiteral("Benutzer:"), QStringLiteral("Benutzerkonto").repeated(40)}) {
        SCOPED_TRACE(prompt.size());
        auto ctx = std::make_shared<DialogContext>();
        ctx->Texts.Description = pack(prompt, QStringLiteral("Domäne:"));
        // No defaults: the test host's select-all records the call but selects nothing.
        RunFresh<frm_DialogInputDbl>(driver, ctx, [](frm_DialogInputDbl& f) {
            EXPECT_GE(f.but_Return->Left(), f.ScaleWidth()) << "the Return button is out of sight";
            Type(f, QStringLiteral("bert"));
            PressKey(f, Qt::Key_Return);
            EXPECT_FALSE(f.IsUnloaded());
            EXPECT_TRUE(f.txt_InputB->HasFocus());
            Type(f, QStringLiteral("LAGER"));
            PressKey(f, Qt::Key_Return);
        });
        EXPECT_EQ(ctx->Request.Result, 1);
        EXPECT_EQ(unpack(ctx->Texts.InputText),
                  std::pair(QStringLiteral("bert"), QStringLiteral("LAGER")));
    }
}

TEST_F(TwoFieldInput, TheDefaultButtonRestoresBothBoxesAndAClickIntoTheSecondMakesReturnAnswer)
{
    run([](frm_DialogInputDbl& f) {
        Focus(*f.txt_InputB);
        Type(f, QStringLiteral("x"));
        Focus(*f.txt_InputA);
        Type(f, QStringLiteral("y"));
        Click(*f.but_DefText);
        EXPECT_EQ(f.txt_InputA->Text(), QStringLiteral("anna"));
        EXPECT_EQ(f.txt_InputB->Text(), QStringLiteral("BÜRO"));
        EXPECT_TRUE(f.txt_InputA->HasFocus());
        Click(*f.txt_InputB);
        PressKey(f, Qt::Key_Return);
    });
    EXPECT_EQ(context->Request.Result, 1);
    EXPECT_EQ(unpack(context->Texts.InputText),
              std::pair(QStringLiteral("anna"), QStringLiteral("BÜRO")));
}

TEST_F(TwoFieldInput, AbortAndHelpLeaveTheAnswerAlone)
{
    struct Row {
        const char* key;
        std::int32_t result;
    };
    for (const Row& row : {Row{"ABORT", 2}, Row{"HELP", 5}}) {
        SCOPED_TRACE(row.key);
        auto ctx = std::make_shared<DialogContext>();
        ctx->Texts.InputText = "vorher";
        EXPECT_EQ(RunFresh<frm_DialogInputDbl>(driver, ctx,
                                               [&](frm_DialogInputDbl& f) {
                                                   Type(f, QStringLiteral("neu"));
                                                   f.ctl_Sidebar->Press(
                                                       QString::fromLatin1(row.key));
                                               }),
                  row.result);
        EXPECT_EQ(ctx->Texts.InputText, "vorher");
    }
}

TEST_F(TwoFieldInput, TrickyPairsComeBackAsTheyWent)
{
    const std::vector<TrickyText> texts = TrickyTexts();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const TrickyText& a = texts[i];
        const TrickyText& b = texts[(i + 1) % texts.size()];
        SCOPED_TRACE(::testing::Message() << a.name << " / " << b.name);
        auto ctx = std::make_shared<DialogContext>();
        ctx->Texts.Description = pack(a.text, b.text);
        ctx->Texts.DefaultText = pack(a.text, b.text);
        RunFresh<frm_DialogInputDbl>(driver, ctx, [&](frm_DialogInputDbl& f) {
            ExpectPromptShows(f.lab_DescriptionA->Caption(), a.text);
            ExpectPromptShows(f.lab_DescriptionB->Caption(), b.text);
            EXPECT_EQ(f.but_DefText->Visible(), !ctx->Texts.DefaultText.empty());
            f.ctl_Sidebar->Press(QStringLiteral("OK"));
        });
        EXPECT_EQ(ctx->Request.Result, 1);
        EXPECT_EQ(unpack(ctx->Texts.InputText), std::pair(a.text, b.text));
    }
}

TEST_F(TwoFieldInput, APlainTextIsTheFirstOfThePair)
{
    context->Texts.Description = "Nur eine Frage";
    context->Texts.DefaultText = "nur eins";
    run([](frm_DialogInputDbl& f) {
        EXPECT_EQ(f.lab_DescriptionA->Caption(), QStringLiteral("Nur eine Frage"));
        EXPECT_EQ(f.txt_InputA->Text(), QStringLiteral("nur eins"));
        EXPECT_EQ(f.txt_InputB->Text(), QString());
        f.Unload();
    });
}

TEST_F(TwoFieldInput, ClicksInEitherBoxOpenTheKeyboardUnderTouch)
{
    host->settings["Touchmode"] = true;
    std::vector<QString> seen;
    driver.OnNextModal([&](Form&) {
        Click(*form.txt_InputA);
        Click(*form.txt_InputB);
        form.Unload();
    });
    for (int i = 0; i < 2; ++i)
        driver.OnNextModal([&](Form& keyboard) {
            seen.push_back(keyboard.Name());
            keyboard.Unload();
        });
    form.Show(true);
    EXPECT_EQ(seen, std::vector<QString>(2, QStringLiteral("frm_DialogKeyboard")));
}

} // namespace
