// The numeric pad, driven by taps on its keys: what the line shows, and what
// reaches the target when the pad confirms or quits.
#include "controls/ctl_Button.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"
#include "touch/TouchTestSupport.h"
#include "touch/frm_DialogNumericTouch.h"

#include <QCursor>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>
#include <map>

using namespace fw;
using namespace fw::testing;

namespace {

/// Shown modelessly, so that the test drives it between events.
void open(frm_DialogNumericTouch& pad, Control* target)
{
    pad.SetTarget(target);
    pad.SetDescription(QStringLiteral("Menge"));
    pad.Show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(pad.window()));
    ProcessEvents();
}

/// Taps keys by their faces: digits and "," as shown, B BACKSPACE, C CLEAR,
/// S the sign change, K OK.
void tap(frm_DialogNumericTouch& pad, const char* keys)
{
    const std::map<char, int> named = {{'0', 10}, {',', 45}, {'B', 12},
                                       {'C', 13}, {'S', 0},  {'K', 11}};
    for (const char* k = keys; *k; ++k) {
        const auto it = named.find(*k);
        Click(pad.lab_Key[it != named.end() ? it->second : *k - '0']);
        ProcessEvents();
    }
}

class NumericPad : public ::testing::Test {
  protected:
    std::shared_ptr<TestHost> host = std::make_shared<TestHost>();
    ScopedCoreDev scope{host};
};

TEST_F(NumericPad, TheLineShowsTheTargetsNumberAndFollowsTheKeys)
{
    struct Row {
        const char* target;
        const char* keys;
        const char* line;
    };
    const Row rows[] = {
        {"-12,50", "", "-12,5"},
        {"0,12345678", "", "0,12345678"}, // ten characters stay
        {"0,123456789", "", "0,1235"},    // eleven are rounded to four places
        {"1234567,891234", "", "1234567,8912"},
        {"Menge", "", "0"},
        {"3,5", "7", "7"},   // the first digit replaces the shown value
        {"3,5", "B", "3"},   // the comma goes with the 5
        {"3,5", "B1", "31"}, // BACKSPACE ends the first-key replacement too
        {"3,5", ",5", ",5"},
        {"7", "C1,", "1,"},
        {"0", "12,,3", "12,,3"}, // no checks while typing
        {"12,5", "S", "-12,5"},
        {"-12,5", "S", "12,5"},
        {"12,5", "S3", "-12,53"}, // after a sign change a digit appends
        {"0", "S", "-"},
        {"0", "SS", ""},
        {"0", "S5B", ""}, // a lone minus goes with its digit
        {"7", "CB", ""},  // BACKSPACE on an empty line changes nothing
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.target) + " then " + row.keys);
        HostForm owner;
        owner.txt->SetText(QString::fromUtf8(row.target));
        frm_DialogNumericTouch pad;
        open(pad, owner.txt);
        tap(pad, row.keys);
        EXPECT_EQ(pad.txt_Input->Text(), QString::fromUtf8(row.line));
        EXPECT_EQ(pad.txt_Input->SelStart(), pad.txt_Input->Text().size());
        EXPECT_EQ(owner.txt->Text(), QString::fromUtf8(row.target)) << "nothing written yet";
        pad.Unload();
    }
}

TEST_F(NumericPad, OkWritesTheNumberTheHostReadsInTheLine)
{
    const std::pair<const char*, const char*> rows[] = {
        {"CS5,50K", "-5,5"}, {"CSK", "0"}, // a lone minus is what the host makes of "-"
        {",5K", "0,5"},      {"1,,2K", "0"}, {"CK", "0"}, {"K", "3,5"},
    };
    for (const auto& [keys, written] : rows) {
        SCOPED_TRACE(keys);
        HostForm owner;
        owner.txt->SetText(QStringLiteral("3,5"));
        frm_DialogNumericTouch pad;
        open(pad, owner.txt);
        host->clearCalls();
        tap(pad, keys);
        EXPECT_EQ(owner.txt->Text(), QString::fromUtf8(written));
        EXPECT_TRUE(pad.Confirmed());
        EXPECT_FALSE(host->callsTo("parseNumber").empty());
        QTest::qWait(150);
        EXPECT_TRUE(pad.IsUnloaded());
    }
}

TEST_F(NumericPad, LosingActivationConfirmsButQuitDoesNot)
{
    HostForm owner;
    owner.txt->SetText(QStringLiteral("3,5"));
    owner.Show();
    frm_DialogNumericTouch pad;
    open(pad, owner.txt);
    pad.window()->activateWindow();
    ProcessEvents();
    tap(pad, "8");
    owner.window()->activateWindow(); // a touch on the application behind
    QTRY_VERIFY(pad.Confirmed());
    EXPECT_EQ(owner.txt->Text(), QStringLiteral("8"));

    owner.txt->SetText(QStringLiteral("3,5"));
    frm_DialogNumericTouch quitted;
    open(quitted, owner.txt);
    tap(quitted, "9");
    Click(*quitted.but_Quit);
    QTest::qWait(150);
    EXPECT_TRUE(quitted.IsUnloaded());
    EXPECT_FALSE(quitted.Confirmed());
    EXPECT_EQ(owner.txt->Text(), QStringLiteral("3,5"));
}

TEST_F(NumericPad, TheTargetIsReadAndWrittenByItsTypeName)
{
    const std::pair<const char*, const char*> rows[] = {
        {"clt_TermInput", "TERM"}, {"Label", "Caption"}, {"TextBox", "TEXT"},
        {"RichTextBox", "TEXT"},   {"ComboBox", "TEXT"},
    };
    for (const auto& [type, property] : rows) {
        SCOPED_TRACE(type);
        HostForm owner;
        auto* target = owner.Add<NamedTarget>(QStringLiteral("ctl_Target"),
                                              QString::fromLatin1(type), QStringLiteral("4,5"));
        frm_DialogNumericTouch pad;
        open(pad, target);
        EXPECT_EQ(pad.txt_Input->Text(), QStringLiteral("4,5"));
        tap(pad, "S");
        tap(pad, "K");
        EXPECT_EQ(target->read, QStringList{QString::fromLatin1(property)});
        EXPECT_EQ(target->written, QStringList{QString::fromLatin1(property) + "=-4,5"});
        pad.Unload();
    }
}

TEST_F(NumericPad, ADragEvenEndingOnAKeysRimPressesNothing)
{
    HostForm owner;
    owner.txt->SetText(QStringLiteral("3,5"));
    frm_DialogNumericTouch pad;
    open(pad, owner.txt);
    pad.Move(pad.Left(), 1500);
    ProcessEvents();
    for (QWidget* surface : {pad.lab_Key[7].widget(), pad.pic_Key[8].widget()}) {
        const QPoint corner(3, 3);
        QCursor::setPos(surface->mapToGlobal(corner));
        QTest::mousePress(surface, Qt::LeftButton, {}, corner);
        for (int distance : {15, 25}) {
            QCursor::setPos(surface->mapToGlobal(corner) + QPoint(0, distance));
            QTest::qWait(60);
        }
        QTest::mouseRelease(surface, Qt::LeftButton, {}, corner);
        ProcessEvents();
    }
    EXPECT_EQ(pad.txt_Input->Text(), QStringLiteral("3,5"));
    EXPECT_GT(pad.Top(), 1500);
}

} // namespace
