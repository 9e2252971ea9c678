// The password dialog: the old password checked, the new one typed twice.
#include "InputTestSupport.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "dialogs/frm_DialogPassword.h"
#include "forms/StdControls.h"
#include "forms/testing/UserInput.h"

using namespace fw;
using namespace fw::testing;

namespace {

const char* const kWrongOld = "Sie haben nicht das richtige, alte Kennwort eingegeben!";
const char* const kMismatch = "Kennwort und Kennwortwiederholung stimmen nicht überein!";

class PasswordDialog : public ::testing::Test {
  protected:
    ScopedTestHost host;
    ModalDriver driver;
    std::shared_ptr<DialogContext> context = std::make_shared<DialogContext>();
    frm_DialogPassword form;

    PasswordDialog()
    {
        form.Context = context;
        context->Request.Title = "Kennwort ändern";
        context->Texts.Description = "Bitte das Kennwort ändern.";
        context->Texts.OldValue = "Alt1";
    }

    void run(const std::function<void(frm_DialogPassword&)>& action)
    {
        RunModal<frm_DialogPassword>(driver, form, action);
    }

    /// Types into a box as a user who clicked it and replaced its text.
    static void enter(frm_DialogPassword& f, TextBox& box, const QString& text)
    {
        Focus(box);
        PressKey(f, Qt::Key_A, Qt::ControlModifier);
        if (text.isEmpty())
            PressKey(f, Qt::Key_Delete);
        else
            Type(f, text);
    }

    std::vector<std::string> errors() const { return host->callsTo("ShowError"); }
    static std::string error(const char* text)
    {
        return std::string("ShowError(") + text + "|Kennwort ändern)";
    }
};

TEST_F(PasswordDialog, AWrongOldPasswordThenAMismatchThenAMatch)
{
    run([this](frm_DialogPassword& f) {
        EXPECT_EQ(f.lab_Description->Caption(), QStringLiteral("Bitte das Kennwort ändern."));
        EXPECT_TRUE(f.txt_Old->Enabled());
        enter(f, *f.txt_Old, QStringLiteral("alt1")); // case counts
        enter(f, *f.txt_New, QStringLiteral("Neu2"));
        enter(f, *f.txt_Retype, QStringLiteral("Neu2"));
        f.ctl_Sidebar->Press(QStringLiteral("OK"));
        EXPECT_EQ(errors(), std::vector{error(kWrongOld)});
        EXPECT_FALSE(f.IsUnloaded());
        EXPECT_EQ(f.txt_Old->Text(), QString());
        EXPECT_TRUE(f.txt_Old->HasFocus());
        EXPECT_EQ(f.txt_New->Text(), QStringLiteral("Neu2")) << "the new entries stay";
        EXPECT_EQ(f.txt_Retype->Text(), QStringLiteral("Neu2"));

        Type(f, QStringLiteral("Alt1"));
        enter(f, *f.txt_Retype, QStringLiteral("Neu3"));
        f.ctl_Sidebar->Press(QStringLiteral("OK"));
        EXPECT_EQ(errors(), (std::vector{error(kWrongOld), error(kMismatch)}));
        EXPECT_FALSE(f.IsUnloaded());
        EXPECT_EQ(f.txt_Old->Text(), QStringLiteral("Alt1")) << "the old entry stays";
        EXPECT_EQ(f.txt_New->Text(), QString());
        EXPECT_EQ(f.txt_Retype->Text(), QString());
        EXPECT_TRUE(f.txt_New->HasFocus());

        Type(f, QStringLiteral("Neu3"));
        enter(f, *f.txt_Retype, QStringLiteral("Neu3"));
        PressKey(f, Qt::Key_Return);
    });
    EXPECT_EQ(context->Request.Result, 1);
    EXPECT_EQ(context->Texts.InputText, "Neu3");
}

TEST_F(PasswordDialog, WithoutAnOldPasswordItsBoxIsOffAndAnEmptyNewOneCounts)
{
    context->Texts.OldValue.clear();
    context->Texts.InputText = "vorher";
    run([](frm_DialogPassword& f) {
        EXPECT_FALSE(f.txt_Old->Enabled());
        EXPECT_EQ(f.txt_Old->BackColor(), f.BackColor());
        EXPECT_EQ(f.txt_Old->Text(), QString());
        f.ctl_Sidebar->Press(QStringLiteral("OK"));
    });
    EXPECT_TRUE(errors().empty());
    EXPECT_EQ(context->Request.Result, 1);
    EXPECT_EQ(context->Texts.InputText, "");
}

TEST_F(PasswordDialog, AbortAndHelpCloseWithoutAnAnswer)
{
    struct Row {
        const char* key;
        std::int32_t result;
    };
    for (const Row& row : {Row{"ABORT", 2}, Row{"HELP", 5}, Row{"abort", 2}}) {
        SCOPED_TRACE(row.key);
        auto ctx = std::make_shared<DialogContext>();
        ctx->Texts.OldValue = std::string("x");
        ctx->Texts.InputText = "vorher";
        EXPECT_EQ(RunFresh<frm_DialogPassword>(driver, ctx,
                                               [&](frm_DialogPassword& f) {
                                                   f.ctl_Sidebar->Key(QString::fromLatin1(row.key));
                                               }),
                  row.result);
        EXPECT_EQ(ctx->Texts.InputText, "vorher");
        EXPECT_TRUE(host->callsTo("ShowError").empty());
    }
}

TEST_F(PasswordDialog, TrickyPasswordsAreComparedAndReturnedWhole)
{
    for (const TrickyText& tricky : TrickyTexts()) {
        SCOPED_TRACE(tricky.name);
        auto ctx = std::make_shared<DialogContext>();
        ctx->Texts.OldValue = tricky.text.toStdString();
        ctx->Texts.Description = tricky.text.toStdString();
        RunFresh<frm_DialogPassword>(driver, ctx, [&](frm_DialogPassword& f) {
            ExpectPromptShows(f.lab_Description->Caption(), tricky.text);
            f.txt_Old->SetText(tricky.text);
            f.txt_New->SetText(tricky.text + u'2');
            f.txt_Retype->SetText(tricky.text + u'2');
            f.ctl_Sidebar->Press(QStringLiteral("OK"));
        });
        EXPECT_EQ(ctx->Request.Result, 1);
        EXPECT_EQ(QString::fromStdString(ctx->Texts.InputText), tricky.text + u'2');
    }
}

TEST_F(PasswordDialog, TouchAsksForTheOldAndRepeatedOnClickAndTheNewOnChange)
{
    host->settings["Touchmode"] = true;
    int keyboards = 0;
    driver.OnNextModal([&](Form&) {
        Click(*form.txt_Old);
        Click(*form.txt_Retype);
        Click(*form.txt_New); // a click on the new box asks for nothing
        form.txt_New->SetText(QStringLiteral("n"));
        form.Unload();
    });
    for (int i = 0; i < 3; ++i)
        driver.OnNextModal([&](Form& keyboard) {
            ++keyboards;
            keyboard.Unload();
        });
    form.Show(true);
    EXPECT_EQ(keyboards, 3);
}

} // namespace
