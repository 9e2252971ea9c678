// The one-text input forms, answered by typing, clicks and the command bar.
#include "InputTestSupport.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Pannel.h"
#include "dialogs/frm_DialogInput.h"
#include "dialogs/frm_DialogInputMulti.h"
#include "forms/Pictures.h"
#include "forms/StdControls.h"
#include "forms/testing/UserInput.h"

using namespace fw;
using namespace fw::testing;

namespace {

template <class F> class InputDialog : public ::testing::Test {
  protected:
    ScopedTestHost host;
    ModalDriver driver;
    std::shared_ptr<DialogContext> context = std::make_shared<DialogContext>();
    F form;

    InputDialog()
    {
        form.Context = context;
        context->Request.Title = "Neuer Ordner";
        context->Texts.Description = "Name des Ordners:";
        context->Texts.DefaultText = "Vorlage";
    }

    void run(const std::function<void(F&)>& action) { RunModal<F>(driver, form, action); }
};

using InputForms = ::testing::Types<frm_DialogInput, frm_DialogInputMulti>;
TYPED_TEST_SUITE(InputDialog, InputForms);

TYPED_TEST(InputDialog, OpensWithTitlePromptAndTheDefaultSelected)
{
    this->run([](TypeParam& f) {
        EXPECT_EQ(f.Caption(), QStringLiteral("Neuer Ordner"));
        EXPECT_EQ(f.lab_Description->Caption(), QStringLiteral("Name des Ordners:"));
        EXPECT_EQ(f.txt_Input->Text(), QStringLiteral("Vorlage"));
        EXPECT_EQ(f.txt_Input->SelStart(), 0);
        EXPECT_EQ(f.txt_Input->SelLength(), 7);
        EXPECT_TRUE(f.but_DefText->Visible());
        EXPECT_EQ(f.but_DefText->Text(), QStringLiteral("&Vorgabe"));
        f.Unload();
    });
}

TYPED_TEST(InputDialog, EveryCommandAnswersItsCode)
{
    struct Row {
        const char* name;
        std::function<void(TypeParam&)> act;
        std::int32_t result;
        const char* inputText;
    };
    const Row rows[] = {
        {"OK button", [](TypeParam& f) { f.ctl_Sidebar->Press(QStringLiteral("OK")); }, 1,
         "getippt"},
        {"abort button", [](TypeParam& f) { f.ctl_Sidebar->Press(QStringLiteral("ABORT")); }, 2,
         "vorher"},
        {"help button", [](TypeParam& f) { f.ctl_Sidebar->Press(QStringLiteral("HELP")); }, 5,
         "vorher"},
        {"lower-case key", [](TypeParam& f) { f.ctl_Sidebar->Key(QStringLiteral("ok")); }, 1,
         "getippt"},
        {"Escape", [](TypeParam& f) { PressKey(f, Qt::Key_Escape); }, 2, "vorher"},
        {"Ctrl+Return", [](TypeParam& f) { PressKey(f, Qt::Key_Return, Qt::ControlModifier); }, 1,
         "getippt"},
        {"unknown key",
         [](TypeParam& f) {
             f.ctl_Sidebar->Key(QStringLiteral("PRINT"));
             EXPECT_FALSE(f.IsUnloaded());
             f.Unload();
         },
         42, "vorher"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto ctx = std::make_shared<DialogContext>();
        ctx->Texts.DefaultText = "Vorlage";
        ctx->Texts.InputText = "vorher";
        ctx->Request.Result = 42; // the host's preset
        EXPECT_EQ(RunFresh<TypeParam>(this->driver, ctx,
                                      [&](TypeParam& f) {
                                          Type(f, QStringLiteral("getippt"));
                                          row.act(f);
                                      }),
                  row.result);
        EXPECT_EQ(ctx->Texts.InputText, row.inputText);
    }
}

TYPED_TEST(InputDialog, TheDefaultButtonBringsTheDefaultBackSelected)
{
    this->run([](TypeParam& f) {
        Type(f, QStringLiteral("anders"));
        Click(*f.but_DefText);
        EXPECT_EQ(f.txt_Input->Text(), QStringLiteral("Vorlage"));
        EXPECT_TRUE(f.txt_Input->HasFocus());
        EXPECT_EQ(f.txt_Input->SelLength(), 7);
        Type(f, QStringLiteral("neu"));
        f.ctl_Sidebar->Press(QStringLiteral("OK"));
    });
    EXPECT_EQ(this->context->Texts.InputText, "neu");
}

TYPED_TEST(InputDialog, AnEmptyDefaultHasNoDefaultButtonAndAnEmptyAnswerCounts)
{
    this->context->Texts.DefaultText.clear();
    this->context->Texts.InputText = "vorher";
    this->run([](TypeParam& f) {
        EXPECT_FALSE(f.but_DefText->Visible());
        f.ctl_Sidebar->Press(QStringLiteral("OK"));
    });
    EXPECT_EQ(this->context->Request.Result, 1);
    EXPECT_EQ(this->context->Texts.InputText, "");
}

TYPED_TEST(InputDialog, PasswordEntryMasksTheBoxButAnswersTheText)
{
    this->form.PasswordEntry = true;
    this->run([](TypeParam& f) {
        EXPECT_EQ(f.txt_Input->PasswordChar(), QStringLiteral("*"));
        Type(f, QStringLiteral("geheim"));
        f.ctl_Sidebar->Press(QStringLiteral("OK"));
    });
    EXPECT_EQ(this->context->Texts.InputText, "geheim");
}

TYPED_TEST(InputDialog, TheIconComesFromThePathThenThePictureElseItsRoomGoesToThePrompt)
{
    const std::function<void(DialogContext&)> sources[] = {
        [](DialogContext& x) { x.Request.IconPath = "Ico\\32\\Computer\\Signs\\Question.ico"; },
        [](DialogContext& x) { x.Request.Icon = FromImage(QImage(16, 16, QImage::Format_ARGB32)); },
        [](DialogContext&) {},
    };
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i == 0 ? "a path" : i == 1 ? "a picture of the host's" : "none");
        auto ctx = std::make_shared<DialogContext>();
        sources[i](*ctx);
        RunFresh<TypeParam>(this->driver, ctx, [&](TypeParam& f) {
            EXPECT_EQ(f.img_Icon->Visible(), i < 2);
            if (i < 2) {
                EXPECT_FALSE(f.img_Icon->Picture().isNull());
            } else { // the prompt takes the icon's place and the width beside it
                EXPECT_EQ(f.lab_Description->Left(), f.img_Icon->Left());
                EXPECT_EQ(f.lab_Description->Width(),
                          f.pan_Holder->Width() - 2 * f.img_Icon->Left());
            }
            f.Unload();
        });
    }
    EXPECT_TRUE(LoadedPicture(*this->host, "Ico\\32\\Computer\\Signs\\Question.ico"));
}

TYPED_TEST(InputDialog, TrickyTextsPassThroughPromptAndBoxUnchanged)
{
    for (const TrickyText& tricky : TrickyTexts()) {
        SCOPED_TRACE(tricky.name);
        auto ctx = std::make_shared<DialogContext>();
        ctx->Request.Title = tricky.text.left(200).toStdString();
        ctx->Texts.Description = tricky.text.toStdString();
        ctx->Texts.DefaultText = tricky.text.toStdString();
        EXPECT_EQ(RunFresh<TypeParam>(this->driver, ctx,
                                      [&](TypeParam& f) {
                                          ExpectPromptShows(f.lab_Description->Caption(),
                                                            tricky.text);
                                          EXPECT_EQ(f.txt_Input->Text(), tricky.text);
                                          f.ctl_Sidebar->Press(QStringLiteral("OK"));
                                      }),
                  1);
        EXPECT_EQ(QString::fromStdString(ctx->Texts.InputText), tricky.text);
    }
}

TEST(MultiLineInput, ReturnBreaksTheLineAndCtrlReturnAnswers)
{
    ScopedTestHost host;
    ModalDriver driver;
    frm_DialogInputMulti form;
    form.Context = std::make_shared<DialogContext>();
    RunModal<frm_DialogInputMulti>(driver, form, [](frm_DialogInputMulti& f) {
        Type(f, QStringLiteral("eins"));
        PressKey(f, Qt::Key_Return);
        Type(f, QStringLiteral("zwei"));
        EXPECT_FALSE(f.IsUnloaded());
        PressKey(f, Qt::Key_Return, Qt::ControlModifier);
    });
    EXPECT_EQ(form.Context->Request.Result, 1);
    EXPECT_EQ(form.Context->Texts.InputText, "eins\nzwei");
}

TYPED_TEST(InputDialog, AClickSelectsOneLineTextAndUnderTouchOpensItsKeyboard)
{
    constexpr bool oneLine = std::is_same_v<TypeParam, frm_DialogInput>;
    for (const bool touch : {false, true}) {
        SCOPED_TRACE(touch ? "touch" : "mouse");
        this->host->settings["Touchmode"] = touch;
        TypeParam dialog;
        dialog.Context = std::make_shared<DialogContext>();
        this->driver.OnNextModal([&](Form&) {
            this->host->clearCalls();
            Click(*dialog.txt_Input);
            if (!(oneLine && touch)) {
                EXPECT_EQ(this->host->wasCalled("SelectAll"), oneLine);
            }
            if (!oneLine) {
                EXPECT_FALSE(this->host->wasCalled("GetBool")) << "the multi-line box never asks";
            }
            dialog.Unload();
        });
        if (oneLine && touch)
            this->driver.OnNextModal([](Form& keyboard) {
                EXPECT_EQ(keyboard.Name(), QStringLiteral("frm_DialogKeyboard"));
                keyboard.Unload();
            });
        dialog.Show(true);
        EXPECT_EQ(this->driver.Pending(), 0) << "no keyboard came up";
    }
}

} // namespace
