// The message dialog, driven through real key presses and clicks.
#include "controls/ctl_Button.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_Title.h"
#include "dialogs/frm_DialogMessage.h"
#include "forms/Screen.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"

#include <QFontInfo>
#include <QWidget>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

class MessageDialog : public ::testing::Test {
  protected:
    std::shared_ptr<TestHost> host = std::make_shared<TestHost>();
    ScopedCoreDev scope{host};
    ModalDriver driver;
    std::shared_ptr<DialogContext> context = std::make_shared<DialogContext>();
    frm_DialogMessage form;

    MessageDialog()
    {
        form.Context = context;
        context->Request.Title = "Hinweis";
        context->Texts.Description = "Die Datei wurde gespeichert.";
    }

    /// Shows the dialog modally and runs action inside it, after the first paint.
    std::int32_t run(const std::function<void(frm_DialogMessage&)>& action)
    {
        driver.OnNextModal([&](Form&) {
            action(form);
            if (!form.IsUnloaded()) {
                ADD_FAILURE() << "the dialog did not close";
                form.Unload();
            }
        });
        form.Show(true);
        return context->Request.Result;
    }

    QStringList visibleCaptions() const
    {
        QStringList captions;
        for (int i = 0; i <= 2; ++i)
            if (form.but_Sel[i].Visible())
                captions << form.but_Sel[i].Text();
        return captions;
    }
};

struct ButtonSetCase {
    int flags;
    const char* german; ///< visible captions, left to right, "|" between
    const char* english;
    const char* caption; ///< form caption
    const char* tags;    ///< Tags of slots 0..2
    int defaultSlot;     ///< -1: no button is the default
    int scheme;
};

TEST_F(MessageDialog, EveryStyleShowsItsButtonSet)
{
    const ButtonSetCase cases[] = {
        {0, "OK", "OK", "Hinweis", "1|-3D:OFF|-3D:OFF", 0, 0},
        {1, "&Abbruch|&OK", "&Cancel|&OK", "Forsetzen?", "2|1|-3D:OFF", 1, 0},
        {2, "&Abbruch|&Erneut|&Weiter", "&Cancel|Retry|Ignore", "Fehler", "2|4|5", 1, 6},
        {3, "&Nein|&Abbruch|&Ja", "&No|&Cancel|&Yes", "Sind Sie sicher?", "7|2|6", 2, 7},
        {4, "&Nein|&Ja", "&No|&Yes", "Sind Sie sicher?", "7|6|-3D:OFF", 1, 7},
        {5, "&Abbruch|&Erneut", "&Cancel|&Retry", "Fehler", "2|4|-3D:OFF", -1, 6},
        {6, "&Nein|&Ja|&Weiter", "&No|&Yes|Ignore", "Sind Sie sicher?", "7|6|5", 1, 7},
        {7, "&Abbruch|&Erneut|&Ja", "&Cancel|&Retry|&Yes", "Fehler", "2|4|6", -1, 6},
    };
    for (const ButtonSetCase& c : cases) {
        for (int language : {7, 9}) {
            SCOPED_TRACE(::testing::Message() << "Flags " << c.flags << " language " << language);
            host->language = language;
            frm_DialogMessage dialog;
            dialog.Context = std::make_shared<DialogContext>();
            dialog.Context->Request.Flags = c.flags;
            driver.OnNextModal([&](Form&) {
                QStringList captions, tags;
                for (int i = 0; i <= 2; ++i) {
                    tags << dialog.but_Sel[i].Tag();
                    if (dialog.but_Sel[i].Visible())
                        captions << dialog.but_Sel[i].Text();
                    EXPECT_EQ(dialog.but_Sel[i].Default(), i == c.defaultSlot) << i;
                }
                EXPECT_EQ(captions.join(u'|'),
                          QString::fromUtf8(language == 7 ? c.german : c.english));
                EXPECT_EQ(tags.join(u'|'), QString::fromUtf8(c.tags));
                EXPECT_EQ(dialog.Caption(), QString::fromUtf8(c.caption));
                EXPECT_EQ(dialog.bar_Header->Scheme(), c.scheme);
                dialog.Unload();
            });
            dialog.Show(true);
        }
    }
}

TEST_F(MessageDialog, OkCancelIconsAreCrossed)
{
    context->Request.Flags = 1;
    run([](frm_DialogMessage& f) {
        EXPECT_EQ(f.but_Sel[0].IconPath(), QStringLiteral("Ico\\20\\Computer\\Signs\\Ok.ico"));
        EXPECT_EQ(f.but_Sel[1].IconPath(), QStringLiteral("Ico\\20\\Computer\\Signs\\Abort.ico"));
        f.Unload();
    });
}

struct KeyCase {
    int flags;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    const char* typed; ///< typed text instead of the key, if set
    int language;
    std::int32_t result;
};

TEST_F(MessageDialog, KeysAnswerAsTheirRulesSay)
{
    const KeyCase cases[] = {
        {0, Qt::Key_Escape, Qt::NoModifier, nullptr, 7, 1},
        {0, Qt::Key_F12, Qt::NoModifier, nullptr, 7, 1},
        {0, Qt::Key_F12, Qt::ShiftModifier, nullptr, 7, 1},
        {1, Qt::Key_F12, Qt::NoModifier, nullptr, 7, 1},
        {1, Qt::Key_F12, Qt::ShiftModifier, nullptr, 7, 2},
        {1, Qt::Key_Escape, Qt::NoModifier, nullptr, 7, 2},
        {2, Qt::Key_F12, Qt::NoModifier, nullptr, 7, 4},
        {2, Qt::Key_F12, Qt::ShiftModifier, nullptr, 7, 5},
        {3, Qt::Key_Escape, Qt::NoModifier, nullptr, 7, 2},
        {4, Qt::Key_Escape, Qt::NoModifier, nullptr, 7, 7},
        {5, Qt::Key_F12, Qt::NoModifier, nullptr, 7, 1},
        // Return presses the focused button: the leftmost, not the default.
        {4, Qt::Key_Return, Qt::NoModifier, nullptr, 7, 7},
        {0, Qt::Key_unknown, {}, "k", 7, 1},
        {0, Qt::Key_unknown, {}, "o", 7, -3},
        {0, Qt::Key_unknown, {}, "O", 7, -3},
        {2, Qt::Key_unknown, {}, "e", 9, 4},
        {2, Qt::Key_unknown, {}, "g", 9, 5},
        {2, Qt::Key_unknown, {}, "w", 7, 5},
        {3, Qt::Key_unknown, {}, "j", 7, 6},
        {3, Qt::Key_unknown, {}, "y", 9, 6},
        {4, Qt::Key_unknown, {}, "n", 7, 7},
    };
    for (const KeyCase& c : cases) {
        SCOPED_TRACE(::testing::Message() << "Flags " << c.flags << " key " << c.key << " typed "
                                          << (c.typed ? c.typed : "-"));
        host->language = c.language;
        frm_DialogMessage dialog;
        dialog.Context = std::make_shared<DialogContext>();
        dialog.Context->Request.Flags = c.flags;
        driver.OnNextModal([&](Form& f) {
            if (c.typed)
                Type(f, QString::fromUtf8(c.typed));
            else
                PressKey(f, c.key, c.modifiers);
            if (!f.IsUnloaded()) {
                ADD_FAILURE() << "no answer";
                f.Unload();
            }
        });
        dialog.Show(true);
        EXPECT_EQ(dialog.Context->Request.Result, c.result);
    }
}

TEST_F(MessageDialog, LettersWithoutAButtonDoNothing)
{
    context->Request.Result = 42;
    run([](frm_DialogMessage& f) {
        Type(f, QStringLiteral("xz"));
        EXPECT_FALSE(f.IsUnloaded());
        f.Unload();
    });
    EXPECT_EQ(context->Request.Result, 42);
}

TEST_F(MessageDialog, ClickingAButtonAnswersItsValue)
{
    context->Request.Flags = 3;
    EXPECT_EQ(run([](frm_DialogMessage& f) { Click(f.but_Sel[2]); }), 6);
}

TEST_F(MessageDialog, TheHeadersCloseRequestAnswersEscapeThenSecondary)
{
    context->Request.Flags = 4;
    EXPECT_EQ(run([](frm_DialogMessage& f) { f.bar_Header->CloseRequest(QStringLiteral("X")); }),
              7);
}

TEST_F(MessageDialog, ClosingTheWindowLeavesTheHostsResult)
{
    context->Request.Result = 42;
    EXPECT_EQ(run([](frm_DialogMessage& f) { CloseWindow(f); }), 42);
}

TEST_F(MessageDialog, FirstPaintFocusesTheLeftmostButton)
{
    context->Request.Flags = 3;
    run([](frm_DialogMessage& f) {
        EXPECT_TRUE(f.but_Sel[0].HasFocus());
        f.Unload();
    });
}

TEST_F(MessageDialog, TitleSplitsAtColonOrSpacedDash)
{
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"Fehler: Datei fehlt", "Fehler", "Datei fehlt"},
        {"A - B", "A", "B"},
        {"A-B", "A-B", ""},
        {"Zeit: 12:30", "Zeit", "12:30"},
        {"", "", ""},
    };
    for (const auto& [title, line, second] : cases) {
        frm_DialogMessage dialog;
        dialog.Context = std::make_shared<DialogContext>();
        dialog.Context->Request.Title = title;
        driver.OnNextModal([&](Form& f) {
            EXPECT_EQ(dialog.bar_Header->Caption(), QString::fromUtf8(line)) << title;
            EXPECT_EQ(dialog.bar_Header->SubCaption(), QString::fromUtf8(second)) << title;
            f.Unload();
        });
        dialog.Show(true);
    }
}

TEST_F(MessageDialog, TextLengthAndDashesPickAlignmentAndFont)
{
    const struct {
        QString text;
        int alignment;
        bool mono;
        bool small;
    } cases[] = {
        {QString(250, u'a'), 1, false, false},
        {QString(251, u'a'), 3, false, false},
        {QStringLiteral("Name    Größe\n-------- -----\nA.txt   12"), 0, true, false},
        {QStringLiteral("--------\n") + QString(1001, u'x'), 0, true, true},
    };
    for (const auto& c : cases) {
        frm_DialogMessage dialog;
        dialog.Context = std::make_shared<DialogContext>();
        dialog.Context->Texts.Description = c.text.toStdString();
        driver.OnNextModal([&](Form& f) {
            const ctl_Label& label = dialog.lab_Description[0];
            EXPECT_EQ(label.Alignment(), c.alignment) << c.text.size();
            EXPECT_EQ(QFontInfo(label.Font()).fixedPitch(), c.mono) << c.text.size();
            EXPECT_EQ(label.Font().pointSizeF() == 7.0, c.small) << c.text.size();
            f.Unload();
        });
        dialog.Show(true);
    }
}

TEST_F(MessageDialog, LongerTextMakesATallerDialog)
{
    int shortHeight = 0;
    run([&](frm_DialogMessage& f) {
        shortHeight = f.Height();
        f.Unload();
    });
    frm_DialogMessage tall;
    tall.Context = std::make_shared<DialogContext>();
    QString text;
    for (int i = 0; i < 20; ++i)
        text += QStringLiteral("Eine Zeile mit etwas Text darin, ");
    tall.Context->Texts.Description = text.toStdString();
    driver.OnNextModal([&](Form& f) {
        EXPECT_GT(f.Height(), shortHeight + ToTwips(40));
        const ctl_Pannel& holder = tall.pan_Holder[0];
        const ctl_Label& label = tall.lab_Description[0];
        EXPECT_GE(holder.Height(), label.Top() + label.Height()) << "the text fits its section";
        f.Unload();
    });
    tall.Show(true);
}

TEST_F(MessageDialog, AWideLineWidensTheDialogAndKeepsItCentred)
{
    context->Texts.Description = std::string("--------") + std::string(150, '=');
    context->Request.Flags = 4;
    run([](frm_DialogMessage& f) {
        const int centre = f.Left() + f.Width() / 2;
        const ctl_Label& label = f.lab_Description[0];
        EXPECT_GT(f.Width(), ToTwips(440)) << "wider than designed";
        EXPECT_LE(label.Left() + label.Width(), f.pan_Holder[0].Width() - ToTwips(5));
        f.Refresh();
        EXPECT_EQ(f.Left() + f.Width() / 2, centre) << "a later paint does not move it";
        // The buttons stand centred on the widened form.
        const int left = f.but_Sel[0].Left();
        const int right = f.but_Sel[1].Left() + f.but_Sel[1].Width();
        EXPECT_NEAR(left + right, f.ScaleWidth(), ToTwips(2));
        f.Unload();
    });
}

TEST_F(MessageDialog, AQuestionIconOverridesTheSchemeOfTheButtonSet)
{
    context->Request.Flags = 2;
    context->Request.IconPath = "Ico\\32\\Computer\\Signs\\question.ico";
    run([](frm_DialogMessage& f) {
        EXPECT_EQ(f.bar_Header->Scheme(), 7);
        EXPECT_EQ(f.bar_Header->IconPath(),
                  QStringLiteral("Ico\\32\\Computer\\Signs\\question.ico"));
        f.Unload();
    });
    EXPECT_EQ(std::get<std::string>(context->Request.Icon), context->Request.IconPath)
        << "mode 0 hands the icon path on as the icon";
}

TEST_F(MessageDialog, ModeTwoShowsNoText)
{
    form.DialogMode = 2;
    context->Request.IconPath = "Ico\\32\\Computer\\Signs\\Critical.ico";
    run([](frm_DialogMessage& f) {
        EXPECT_FALSE(f.pan_Holder[0].Visible());
        EXPECT_EQ(f.bar_Header->Scheme(), 0) << "no section reads the icon";
        f.Unload();
    });
}

TEST_F(MessageDialog, ModeOneTakesTheHostsIconAndIgnoresThePath)
{
    form.SetPublic(QStringLiteral("DialogMode"), 1);
    context->Request.IconPath = "Ico\\32\\Computer\\Signs\\Critical.ico";
    context->Request.Icon = std::string("Ico\\32\\Computer\\Signs\\Question.ico");
    run([](frm_DialogMessage& f) {
        EXPECT_EQ(f.bar_Header->Scheme(), 7);
        f.Unload();
    });
}

TEST_F(MessageDialog, AFailingPictureServiceStillOpensTheDialog)
{
    host->failing.insert("LoadPicture");
    context->Request.Flags = 3;
    context->Request.IconPath = "Ico\\32\\Computer\\Signs\\Question.ico";
    EXPECT_EQ(run([](frm_DialogMessage& f) { Type(f, QStringLiteral("j")); }), 6);
}

} // namespace
