// The touch keyboard, driven with clicks, drags and modifier touches.
#include "controls/ctl_Button.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"
#include "touch/KeyFaces.h"
#include "touch/TouchTestSupport.h"
#include "touch/frm_DialogKeyboard.h"

#include <QCursor>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>
#include <optional>

using namespace fw;
using namespace fw::testing;

namespace {

// Key indices of the table.
constexpr int kEsc = 0, kOne = 1, kSeven = 7, kEight = 8, kZero = 10, kSz = 11, kBack = 12, kQ = 14,
              kE = 16, kW = 15, kPlus = 49, kClear = 59, kWww = 25, kA = 26, kB = 42, kM = 44,
              kEnter = 58, kShift = 37, kSlash = 57, kUp = 54, kCtrl = 50, kAlt = 51, kSpace = 48,
              kSym = 52, kLeft = 53;

class Keyboard : public ::testing::Test {
  public:
    std::shared_ptr<TestHost> host = std::make_shared<TestHost>();
    ScopedCoreDev scope{host};
    HostForm owner;
    // A form serves once: rows of a table each take a fresh keyboard.
    std::optional<frm_DialogKeyboard> fresh{std::in_place};
    frm_DialogKeyboard& keyboard = *fresh;

    void reopen() { fresh.emplace(); }

    /// Shown modelessly, so that the test drives it between events.
    void open(Control* target, const QString& title = QStringLiteral("Eingabe"))
    {
        keyboard.SetTarget(target);
        keyboard.SetDescription(title);
        keyboard.Show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(keyboard.window()));
        keyboard.window()->activateWindow();
        ProcessEvents();
    }
    void press(int index)
    {
        Click(keyboard.lab_Key[index]);
        ProcessEvents();
    }
    QString line() const { return keyboard.txt_Input->Text(); }
    QString face(int index) const { return keyboard.lab_Key[index].Caption(); }
    QColor pixel(int index, int x, int y) const
    {
        return keyboard.pic_Key[index].Image().pixelColor(x, y);
    }
    QWidget* labelWidget(int index) const { return keyboard.lab_Key[index].widget(); }
    /// Touches every set modifier until it is off again.
    void freeModifiers()
    {
        auto states = [this] {
            const ModifierStates s = keyboard.States();
            return std::array{s.shift, s.ctrl, s.alt, s.sym};
        };
        const int keys[] = {kShift, kCtrl, kAlt, kSym};
        for (int m = 0; m < 4; ++m)
            while (states()[m] != 0)
                press(keys[m]);
    }
};

TEST_F(Keyboard, TypesTheKeysIntoItsLine)
{
    open(nullptr);
    for (int key : {kW, kW, kW, kSpace, kA, kB, kEight, kSz, kPlus, kSlash})
        press(key);
    EXPECT_EQ(line(), QStringLiteral("www ab8ß+/"));
    press(kBack);
    press(kLeft);
    press(kM);
    EXPECT_EQ(line(), QStringLiteral("www ab8ßm+"));
    press(kClear);
    EXPECT_EQ(line(), QString());
    press(kWww);
    EXPECT_EQ(line(), QStringLiteral("www."));
}

TEST_F(Keyboard, ModifiersCycleOffOneShotLocked)
{
    open(nullptr);
    const QColor highlight = keyboard.pic_ColorSel->BackColor();
    press(kShift);
    EXPECT_EQ(keyboard.States().shift, 1);
    EXPECT_EQ(face(kA), QStringLiteral("A"));
    EXPECT_EQ(face(kWww), QStringLiteral("http://"));
    EXPECT_EQ(face(kUp), QString(QChar(0xE9)));
    press(kA);
    EXPECT_EQ(line(), QStringLiteral("A"));
    EXPECT_EQ(keyboard.States().shift, 0) << "one-shot falls back after a key";
    EXPECT_EQ(face(kA), QStringLiteral("a"));
    EXPECT_NE(pixel(kShift, 15, 24), highlight) << "no lamp once the one-shot is used";

    press(kShift);
    press(kShift);
    EXPECT_EQ(keyboard.States().shift, 2);
    EXPECT_EQ(pixel(kShift, 15, 24), highlight) << "a locked modifier shows its lamp";
    press(kA);
    press(kB);
    EXPECT_EQ(line(), QStringLiteral("AAB"));
    EXPECT_EQ(keyboard.States().shift, 2);
    EXPECT_EQ(pixel(kShift, 15, 24), highlight);
    press(kShift);
    EXPECT_EQ(keyboard.States().shift, 0);
    press(kA);
    EXPECT_EQ(line(), QStringLiteral("AABa"));
}

struct FaceCase {
    std::vector<int> modifiers; ///< touched before
    int key;
    QString face;
    bool grey;
    QString typed;
};

TEST_F(Keyboard, FacesAndTypedCharactersFollowTheModifiers)
{
    open(nullptr);
    const FaceCase cases[] = {
        {{kSym}, kSeven, QStringLiteral("{"), false, QStringLiteral("{")},
        {{kSym}, kE, QStringLiteral("€"), false, QStringLiteral("€")},
        {{kSym}, kM, QStringLiteral("µ"), false, QStringLiteral("µ")},
        {{kSym}, kSz, QStringLiteral("\\"), false, QStringLiteral("\\")},
        {{kSym}, kQ, QStringLiteral("@"), false, QStringLiteral("@")},
        {{kSym}, kZero, QStringLiteral("}"), false, QStringLiteral("}")},
        {{kSym}, kOne, QStringLiteral("1"), true, QString()},
        {{kSym}, kW, QStringLiteral("w"), true, QString()},
        {{kSym}, kPlus, QStringLiteral("~"), false, QString()},  // "^%+" cannot be typed
        {{kSym}, kSlash, QStringLiteral("/"), false, QString()}, // "/" needs Shift
        {{kShift}, kEight, QStringLiteral("("), false, QStringLiteral("(")},
        {{kShift}, kPlus, QStringLiteral("*"), false, QStringLiteral("*")},
        {{kShift}, kSlash, QStringLiteral("/"), false, QStringLiteral("/")},
        {{kShift, kSym}, kSeven, QStringLiteral("/"), false, QString()}, // SHIFT wins the face
        {{kCtrl, kAlt}, kQ, QStringLiteral("@"), false, QStringLiteral("@")},
        // 1 And 2 keeps the plain face, yet Ctrl+Alt still types AltGr's character.
        {{kCtrl, kAlt, kAlt}, kQ, QStringLiteral("q"), false, QStringLiteral("@")},
        {{kCtrl}, kA, QStringLiteral("a"), false, QString()},
    };
    for (const FaceCase& row : cases) {
        press(kClear);
        for (int modifier : row.modifiers)
            press(modifier);
        SCOPED_TRACE(row.face.toStdString());
        EXPECT_EQ(face(row.key), row.face);
        // Greyed is the light grey 0xC0C0C0, not the dark 0x808080.
        EXPECT_EQ(keyboard.lab_Key[row.key].ForeColor(),
                  row.grey ? QColor(0xC0, 0xC0, 0xC0) : QColor(Qt::black));
        press(row.key);
        EXPECT_EQ(line(), row.typed);
        freeModifiers();
    }
}

TEST_F(Keyboard, ClearWithOneShotShiftEmptiesTheLineAndFreesShift)
{
    open(nullptr);
    press(kA);
    press(kShift);
    press(kClear);
    EXPECT_EQ(line(), QString());
    EXPECT_EQ(keyboard.States().shift, 0);
    EXPECT_EQ(face(kA), QStringLiteral("a"));
}

TEST_F(Keyboard, EnterOrReturnHandTheLineToTheTargetQuitAndMenuLeaveIt)
{
    const struct {
        const char* name;
        std::function<void(Keyboard&)> leave;
        bool confirmed;
        const char* written;
    } ways[] = {
        {"ENTER key", [](Keyboard& t) { t.press(kEnter); }, true, "alA"},
        {"real Return key",
         [](Keyboard& t) {
             Focus(*t.keyboard.txt_Input);
             PressKey(t.keyboard, Qt::Key_Return);
         },
         true, "alA"},
        {"Quit", [](Keyboard& t) { Click(*t.keyboard.but_Quit); }, false, "alt"},
        {"SYM turns ESC into Menü",
         [](Keyboard& t) {
             t.press(kSym);
             EXPECT_EQ(t.face(kEsc), QStringLiteral("Menü"));
             t.press(kEsc);
         },
         false, "alt"},
    };
    owner.Show();
    for (const auto& way : ways) {
        SCOPED_TRACE(way.name);
        reopen();
        owner.txt->SetText(QStringLiteral("alt"));
        open(owner.txt);
        EXPECT_EQ(line(), QStringLiteral("alt"));
        EXPECT_EQ(keyboard.txt_Input->SelStart(), 3);
        EXPECT_EQ(face(kEsc), QStringLiteral("ESC"));
        for (int key : {kBack, kShift, kA})
            press(key);
        way.leave(*this);
        EXPECT_EQ(keyboard.Confirmed(), way.confirmed);
        EXPECT_EQ(owner.txt->Text(), QString::fromUtf8(way.written));
        QTest::qWait(150);
        EXPECT_TRUE(keyboard.IsUnloaded());
    }
}

TEST_F(Keyboard, TheTargetIsReadAndWrittenByItsTypeName)
{
    struct Row {
        const char* type;
        const char* read;
        const char* written;
    };
    // A rich text box is read as "RichTextbox" and written as "RichTextBox":
    // it is read through TEXT and written through TextRTF.
    const Row rows[] = {
        {"clt_TermInput", "TERM", "TERM=alta"},  {"Label", "Caption", "Caption=alta"},
        {"RichTextBox", "TEXT", "TextRTF=alta"}, {"RichTextbox", "TEXT", "TEXT=alta"},
        {"TextBox", "TEXT", "TEXT=alta"},        {"ComboBox", "TEXT", "TEXT=alta"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type);
        HostForm owner;
        auto* target =
            owner.Add<NamedTarget>(QStringLiteral("ctl_Target"), QString::fromLatin1(row.type));
        frm_DialogKeyboard board;
        board.SetTarget(target);
        board.Show();
        ProcessEvents();
        EXPECT_EQ(board.txt_Input->Text(), QStringLiteral("alt"));
        Click(board.lab_Key[kA]);
        ProcessEvents();
        Click(board.lab_Key[kEnter]);
        EXPECT_EQ(target->read, QStringList{QString::fromLatin1(row.read)});
        EXPECT_EQ(target->written, QStringList{QString::fromLatin1(row.written)});
        board.Unload();
    }
}

TEST_F(Keyboard, WithoutTargetItOpensEmptyAndConfirmsSilently)
{
    open(nullptr, QString());
    EXPECT_EQ(line(), QString());
    EXPECT_EQ(keyboard.lab_Title->Caption(), QStringLiteral("Bitte geben Sie den Wert ein:"));
    press(kEnter);
    EXPECT_TRUE(keyboard.Confirmed());
    EXPECT_EQ(host->callsTo("setWindowColorKey").size(), 1u);
    EXPECT_EQ(host->callsTo("setWindowColorKey")[0], "setWindowColorKey(100|1|16711935)");
}

TEST_F(Keyboard, LiesCentredUnderItsTargetYetThirtyPixelsInsideTheScreen)
{
    for (const char* edge : {"100|300|200", "5000|5000|5000"}) {
        SCOPED_TRACE(edge);
        reopen();
        const QStringList at = QString::fromLatin1(edge).split(u'|');
        for (const auto& [answer, value] :
             {std::pair{"windowLeft", at[0]}, {"windowRight", at[1]}, {"windowBottom", at[2]}})
            host->answers(answer).push_back(value.toStdString());
        open(owner.txt);
        const int centred = std::max(0, 200 * 15 - keyboard.Width() / 2);
        const bool far = at[0] == "5000";
        EXPECT_EQ(keyboard.Left(), far ? Screen::Width() - 30 * 15 - keyboard.Width() : centred);
        EXPECT_EQ(keyboard.Top(), far ? Screen::Height() - 30 * 15 - keyboard.Height() : 200 * 15);
    }
}

class KeyboardDrag : public Keyboard {
  protected:
    /// Presses key, moves the cursor down by each distance in turn while the
    /// drag timer runs, and releases on the key's label.
    void dragOn(int key, std::initializer_list<int> distances)
    {
        QWidget* label = labelWidget(key);
        const QPoint at = label->mapToGlobal(label->rect().center());
        QCursor::setPos(at);
        QTest::mousePress(label, Qt::LeftButton, {}, label->rect().center());
        QTest::qWait(60);
        for (int distance : distances) {
            QCursor::setPos(at + QPoint(0, distance));
            QTest::qWait(60);
        }
        QTest::mouseRelease(label, Qt::LeftButton, {}, label->rect().center());
        ProcessEvents();
    }
    void placeAt(int top)
    {
        keyboard.Move(keyboard.Left(), top);
        ProcessEvents();
    }
};

TEST_F(KeyboardDrag, ElevenPixelsMakeADragThatTypesNothingAndSnapsToTheTop)
{
    const struct {
        const char* name;
        int top;
        std::initializer_list<int> distances;
        const char* typed;
        int endTop;
    } drags[] = {
        // The drag counts from where it began.
        {"eleven pixels follow the cursor", 1500, {11, 21}, "", 1500 + 10 * 15},
        {"a smaller wobble still types", 1500, {10, 10}, "a", 1500},
        {"near the top edge snaps to it", 30 * 15 + 12 * 15, {-11, -24}, "", 0},
    };
    for (const auto& drag : drags) {
        SCOPED_TRACE(drag.name);
        reopen();
        open(nullptr);
        placeAt(drag.top);
        dragOn(kA, drag.distances);
        EXPECT_EQ(line(), QString::fromLatin1(drag.typed));
        EXPECT_EQ(keyboard.Top(), drag.endTop);
    }
}

TEST_F(KeyboardDrag, ADragEndingOffTheLabelOnTheKeyRimStillPresses)
{
    open(nullptr);
    placeAt(1500);
    QWidget* rim = keyboard.pic_Key[kA].widget();
    const QPoint corner(3, 3);
    QCursor::setPos(rim->mapToGlobal(corner));
    QTest::mousePress(rim, Qt::LeftButton, {}, corner);
    QCursor::setPos(rim->mapToGlobal(corner) + QPoint(0, 15));
    QTest::qWait(40);
    QTest::mouseRelease(rim, Qt::LeftButton, {}, corner);
    ProcessEvents();
    EXPECT_EQ(line(), QStringLiteral("a"));
}

} // namespace
