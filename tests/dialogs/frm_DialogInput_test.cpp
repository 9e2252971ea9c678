// The one-text input forms, answered by typing, clicks and the command bar.
#include "InputTestSupport.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Pannel.h"
#include "core/cls_Formwerk.h"
#include "dialogs/frm_DialogInput.h"
#include "dialogs/frm_DialogInputDbl.h"
#include "dialogs/frm_DialogInputMulti.h"
#include "dialogs/frm_DialogPassword.h"
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
        EXPECT_EQ(f.but_DefText->IconPath(), QStringLiteral("Ico\\20\\Computer\\Signs\\undo.ico"));
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
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TypeParam dialog;
        auto ctx = std::make_shared<DialogContext>();
        dialog.Context = ctx;
        ctx->Texts.DefaultText = "Vorlage";
        ctx->Texts.InputText = "vorher";
        RunModal<TypeParam>(this->driver, dialog, [&](TypeParam& f) {
            Type(f, QStringLiteral("getippt"));
            row.act(f);
        });
        EXPECT_EQ(ctx->Request.Result, row.result);
        EXPECT_EQ(ctx->Texts.InputText, row.inputText);
    }
}

TYPED_TEST(InputDialog, AnUnknownKeyLeavesTheDialogOpen)
{
    this->context->Request.Result = 42;
    this->run([](TypeParam& f) {
        f.ctl_Sidebar->Key(QStringLiteral("PRINT"));
        EXPECT_FALSE(f.IsUnloaded());
        f.Unload();
    });
    EXPECT_EQ(this->context->Request.Result, 42);
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
    // A path: the picture service loads it.
    this->context->Request.IconPath = "Ico\\32\\Computer\\Signs\\Question.ico";
    this->run([this](TypeParam& f) {
        EXPECT_TRUE(f.img_Icon->Visible());
        EXPECT_FALSE(f.img_Icon->Picture().isNull());
        f.Unload();
    });
    EXPECT_TRUE(LoadedPicture(*this->host, "Ico\\32\\Computer\\Signs\\Question.ico"));

    // A picture of the host's.
    TypeParam withPicture;
    withPicture.Context = std::make_shared<DialogContext>();
    withPicture.Context->Request.Icon = FromImage(QImage(16, 16, QImage::Format_ARGB32));
    RunModal<TypeParam>(this->driver, withPicture, [](TypeParam& f) {
        EXPECT_TRUE(f.img_Icon->Visible());
        EXPECT_FALSE(f.img_Icon->Picture().isNull());
        f.Unload();
    });

    // None: the prompt takes the icon's place and the width beside it.
    TypeParam without;
    without.Context = std::make_shared<DialogContext>();
    RunModal<TypeParam>(this->driver, without, [](TypeParam& f) {
        EXPECT_FALSE(f.img_Icon->Visible());
        EXPECT_EQ(f.lab_Description->Left(), f.img_Icon->Left());
        EXPECT_EQ(f.lab_Description->Width(), f.pan_Holder->Width() - 2 * f.img_Icon->Left());
        f.Unload();
    });
}

TYPED_TEST(InputDialog, TrickyTextsPassThroughPromptAndBoxUnchanged)
{
    for (const TrickyText& tricky : TrickyTexts()) {
        SCOPED_TRACE(tricky.name);
        TypeParam dialog;
        auto ctx = std::make_shared<DialogContext>();
        dialog.Context = ctx;
        ctx->Request.Title = tricky.text.left(200).toStdString();
        ctx->Texts.Description = tricky.text.toStdString();
        ctx->Texts.DefaultText = tricky.text.toStdString();
        RunModal<TypeParam>(this->driver, dialog, [&](TypeParam& f) {
            ExpectPromptShows(f.lab_Description->Caption(), tricky.text);
            EXPECT_EQ(f.txt_Input->Text(), tricky.text);
            f.ctl_Sidebar->Press(QStringLiteral("OK"));
        });
        EXPECT_EQ(ctx->Request.Result, 1);
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

TEST(OneLineInput, AClickSelectsTheTextOrOpensTheKeyboardUnderTouch)
{
    ScopedTestHost host;
    ModalDriver driver;
    {
        frm_DialogInput form;
        form.Context = std::make_shared<DialogContext>();
        RunModal<frm_DialogInput>(driver, form, [&](frm_DialogInput& f) {
            host->clearCalls();
            Click(*f.txt_Input);
            EXPECT_EQ(host->callsTo("SelectAll").size(), 1u);
            f.Unload();
        });
    }
    host->settings["Touchmode"] = true;
    frm_DialogInput form;
    form.Context = std::make_shared<DialogContext>();
    driver.OnNextModal([&](Form&) {
        Click(*form.txt_Input);
        form.Unload();
    });
    driver.OnNextModal([](Form& keyboard) {
        EXPECT_EQ(keyboard.Name(), QStringLiteral("frm_DialogKeyboard"));
        keyboard.Unload();
    });
    form.Show(true);
    EXPECT_EQ(driver.Pending(), 0) << "no keyboard came up";
}

TEST(MultiLineInput, AClickNeitherSelectsNorOpensTheKeyboard)
{
    ScopedTestHost host;
    host->settings["Touchmode"] = true;
    ModalDriver driver;
    frm_DialogInputMulti form;
    form.Context = std::make_shared<DialogContext>();
    RunModal<frm_DialogInputMulti>(driver, form, [&](frm_DialogInputMulti& f) {
        host->clearCalls();
        Click(*f.txt_Input);
        EXPECT_FALSE(host->wasCalled("SelectAll"));
        EXPECT_FALSE(host->wasCalled("GetBool"));
        f.Unload();
    });
    EXPECT_EQ(driver.Pending(), 0);
}

} // namespace

namespace {

TEST(InputFactory, EachInputNameMakesItsOwnForm)
{
    ScopedTestHost host;
    cls_Formwerk factory;
    EXPECT_NE(dynamic_cast<frm_DialogInput*>(factory.Create("frm_DialogInput").get()), nullptr);
    EXPECT_NE(dynamic_cast<frm_DialogInputMulti*>(factory.Create("frm_DialogInputMulti").get()),
              nullptr);
    EXPECT_NE(dynamic_cast<frm_DialogInputDbl*>(factory.Create("frm_DialogInputDbl").get()),
              nullptr);
    EXPECT_NE(dynamic_cast<frm_DialogPassword*>(factory.Create("frm_DialogPassword").get()),
              nullptr);
}

} // namespace
