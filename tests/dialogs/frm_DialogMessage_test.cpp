// The message dialog, driven through real key presses and clicks.
#include "InputTestSupport.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_Title.h"
#include "dialogs/frm_DialogMessage.h"
#include "forms/Screen.h"
#include "forms/testing/UserInput.h"

#include <QApplication>
#include <QFontInfo>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>
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
        RunModal<frm_DialogMessage>(driver, form, action);
        return context->Request.Result;
    }

    /// The same on a fresh dialog whose context prepare sets up.
    std::int32_t show(const std::function<void(DialogContext&)>& prepare,
                      const std::function<void(frm_DialogMessage&)>& action)
    {
        auto ctx = std::make_shared<DialogContext>();
        prepare(*ctx);
        return RunFresh<frm_DialogMessage>(driver, ctx, action);
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

TEST_F(MessageDialog, EveryStyleShowsItsButtonSetWithTheLeftmostFocused)
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
            show([&](DialogContext& x) { x.Request.Flags = c.flags; },
                 [&](frm_DialogMessage& f) {
                     QStringList captions, tags;
                     for (int i = 0; i <= 2; ++i) {
                         tags << f.but_Sel[i].Tag();
                         if (f.but_Sel[i].Visible())
                             captions << f.but_Sel[i].Text();
                         EXPECT_EQ(f.but_Sel[i].Default(), i == c.defaultSlot) << i;
                     }
                     EXPECT_EQ(captions.join(u'|'),
                               QString::fromUtf8(language == 7 ? c.german : c.english));
                     EXPECT_EQ(tags.join(u'|'), QString::fromUtf8(c.tags));
                     EXPECT_EQ(f.Caption(), QString::fromUtf8(c.caption));
                     EXPECT_EQ(f.bar_Header->Scheme(), c.scheme);
                     EXPECT_TRUE(f.but_Sel[0].HasFocus());
                     if (c.flags == 1) { // OK and Cancel wear each other's icons
                         EXPECT_EQ(f.but_Sel[0].IconPath(), "Ico\\20\\Computer\\Signs\\Ok.ico");
                         EXPECT_EQ(f.but_Sel[1].IconPath(), "Ico\\20\\Computer\\Signs\\Abort.ico");
                     }
                     f.Unload();
                 });
        }
    }
}

using Act = std::function<void(frm_DialogMessage&)>;
Act key(Qt::Key k, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return [=](frm_DialogMessage& f) { PressKey(f, k, modifiers); };
}
Act typed(const char* text)
{
    return [=](frm_DialogMessage& f) { Type(f, QString::fromUtf8(text)); };
}

TEST_F(MessageDialog, KeysClicksAndClosingAnswerAsTheirRulesSay)
{
    const struct {
        const char* name;
        int flags;
        int language;
        Act act;
        std::int32_t result; ///< 42: the host's preset stands
    } cases[] = {
        {"Escape", 0, 7, key(Qt::Key_Escape), 1},
        {"F12", 0, 7, key(Qt::Key_F12), 1},
        {"Shift+F12", 0, 7, key(Qt::Key_F12, Qt::ShiftModifier), 1},
        {"F12", 1, 7, key(Qt::Key_F12), 1},
        {"Shift+F12", 1, 7, key(Qt::Key_F12, Qt::ShiftModifier), 2},
        {"Escape", 1, 7, key(Qt::Key_Escape), 2},
        {"F12", 2, 7, key(Qt::Key_F12), 4},
        {"Shift+F12", 2, 7, key(Qt::Key_F12, Qt::ShiftModifier), 5},
        {"Escape", 3, 7, key(Qt::Key_Escape), 2},
        {"Escape", 4, 7, key(Qt::Key_Escape), 7},
        {"F12", 5, 7, key(Qt::Key_F12), 1},
        // Return presses the focused button: the leftmost, not the default.
        {"Return", 4, 7, key(Qt::Key_Return), 7},
        {"k", 0, 7, typed("k"), 1},
        {"o", 0, 7, typed("o"), -3},
        {"O", 0, 7, typed("O"), -3},
        {"e", 2, 9, typed("e"), 4},
        {"g", 2, 9, typed("g"), 5},
        {"w", 2, 7, typed("w"), 5},
        {"j", 3, 7, typed("j"), 6},
        {"y", 3, 9, typed("y"), 6},
        {"n", 4, 7, typed("n"), 7},
        {"letters without a button", 0, 7,
         [](frm_DialogMessage& f) {
             Type(f, QStringLiteral("xz"));
             EXPECT_FALSE(f.IsUnloaded());
             f.Unload();
         },
         42},
        {"click", 3, 7, [](frm_DialogMessage& f) { Click(f.but_Sel[2]); }, 6},
        {"header's close request", 4, 7,
         [](frm_DialogMessage& f) { f.bar_Header->CloseRequest(QStringLiteral("X")); }, 7},
        {"window closed", 0, 7, [](frm_DialogMessage& f) { CloseWindow(f); }, 42},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.name << " with flags " << c.flags);
        host->language = c.language;
        const auto prepare = [&](DialogContext& x) {
            x.Request.Flags = c.flags;
            x.Request.Result = 42;
        };
        EXPECT_EQ(show(prepare, c.act), c.result);
    }
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
        SCOPED_TRACE(title);
        show([&](DialogContext& x) { x.Request.Title = title; },
             [&](frm_DialogMessage& f) {
                 EXPECT_EQ(f.bar_Header->Caption(), QString::fromUtf8(line));
                 EXPECT_EQ(f.bar_Header->SubCaption(), QString::fromUtf8(second));
                 f.Unload();
             });
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
        SCOPED_TRACE(c.text.size());
        show([&](DialogContext& x) { x.Texts.Description = c.text.toStdString(); },
             [&](frm_DialogMessage& f) {
                 const ctl_Label& label = f.lab_Description[0];
                 EXPECT_EQ(label.Alignment(), c.alignment);
                 EXPECT_EQ(QFontInfo(label.Font()).fixedPitch(), c.mono);
                 EXPECT_EQ(label.Font().pointSizeF() == 7.0, c.small);
                 f.Unload();
             });
    }
}

TEST_F(MessageDialog, LongerTextMakesATallerDialog)
{
    int shortHeight = 0;
    run([&](frm_DialogMessage& f) {
        shortHeight = f.Height();
        f.Unload();
    });
    const std::string text =
        QStringLiteral("Eine Zeile mit etwas Text darin, ").repeated(20).toStdString();
    show([&](DialogContext& x) { x.Texts.Description = text; },
         [&](frm_DialogMessage& f) {
             EXPECT_GT(f.Height(), shortHeight + ToTwips(40));
             const ctl_Label& label = f.lab_Description[0];
             EXPECT_GE(f.pan_Holder[0].Height(), label.Top() + label.Height())
                 << "the text fits its section";
             f.Unload();
         });
}

TEST_F(MessageDialog, AVeryLongTextScrollsInsideADialogThatStaysOnTheScreen)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const std::string words =
        QStringLiteral("Eine Zeile mit Text darin. ").repeated(800).toStdString();
    for (const std::string& text : {words, std::string(100000, 'x')}) {
        SCOPED_TRACE(text.substr(0, 10));
        show([&](DialogContext& x) { x.Texts.Description = text; },
             [&](frm_DialogMessage& f) {
                 QWidget* window = f.window();
                 EXPECT_TRUE(screen.contains(window->frameGeometry()))
                     << "title and buttons included";
                 const QRect buttons = f.ctl_Sidebar->widget()->geometry();
                 EXPECT_TRUE(window->rect().contains(buttons));
                 const ctl_Label& label = f.lab_Description[0];
                 EXPECT_GE(f.pan_Holder[0].Height(), label.Top() + label.Height());

                 // The wheel over the text scrolls it to its end.
                 QWidget* shown = label.widget();
                 auto* bar = shown->findChild<QScrollBar*>();
                 ASSERT_TRUE(bar && bar->isVisible());
                 const QImage top = shown->grab().toImage();
                 const QPointF at(shown->width() / 2, shown->height() / 2);
                 for (int turn = 0; turn < 1000 && bar->value() < bar->maximum(); ++turn) {
                     QWheelEvent wheel(at, shown->mapToGlobal(at), {}, QPoint(0, -120),
                                       Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
                     QApplication::sendEvent(shown, &wheel);
                 }
                 EXPECT_EQ(bar->value(), bar->maximum());
                 EXPECT_GT(bar->maximum(), 0);
                 EXPECT_NE(shown->grab().toImage(), top) << "other lines show";
                 f.Unload();
             });
    }
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

TEST_F(MessageDialog, TheIconPicksTheSchemeAndModeTwoShowsNoText)
{
    const struct {
        int mode;
        int flags;
        const char* path;
        const char* hostIcon; ///< the host's own icon, which mode 1 takes instead of the path
        int scheme;
    } cases[] = {
        {0, 2, "Ico\\32\\Computer\\Signs\\question.ico", "", 7}, // over the button set's 6
        {1, 0, "Ico\\32\\Computer\\Signs\\Critical.ico", "Ico\\32\\Computer\\Signs\\Question.ico",
         7},
        {2, 0, "Ico\\32\\Computer\\Signs\\Critical.ico", "", 0}, // no section reads the icon
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.mode);
        frm_DialogMessage dialog;
        dialog.SetPublic(QStringLiteral("DialogMode"), c.mode);
        auto ctx = std::make_shared<DialogContext>();
        dialog.Context = ctx;
        ctx->Request.Flags = c.flags;
        ctx->Request.IconPath = c.path;
        if (*c.hostIcon)
            ctx->Request.Icon = std::string(c.hostIcon);
        RunModal<frm_DialogMessage>(driver, dialog, [&](frm_DialogMessage& f) {
            EXPECT_EQ(f.bar_Header->Scheme(), c.scheme);
            EXPECT_EQ(f.pan_Holder[0].Visible(), c.mode != 2);
            if (c.mode == 0) {
                EXPECT_EQ(f.bar_Header->IconPath(), QString::fromUtf8(c.path));
            }
            f.Unload();
        });
        if (c.mode == 0) {
            EXPECT_EQ(std::get<std::string>(ctx->Request.Icon), c.path)
                << "mode 0 hands the icon path on as the icon";
        }
    }
}

TEST_F(MessageDialog, AFailingPictureServiceStillOpensTheDialog)
{
    host->failing.insert("LoadPicture");
    context->Request.Flags = 3;
    context->Request.IconPath = "Ico\\32\\Computer\\Signs\\Question.ico";
    EXPECT_EQ(run([](frm_DialogMessage& f) { Type(f, QStringLiteral("j")); }), 6);
}

} // namespace
