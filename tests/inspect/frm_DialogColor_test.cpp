// The colour picker driven with the mouse on its field and strip, typed
// components, its palette and its command bar; asserted on what reaches the
// request.
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Palette.h"
#include "controls/ctl_Pannel.h"
#include "forms/StdControls.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"
#include "inspect/frm_DialogColor.h"
#include "testing/TestHost.h"

#include <QMouseEvent>
#include <QTest>
#include <QWidget>
#include <cmath>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

struct Rgb {
    int r, g, b;
    bool operator==(const Rgb&) const = default;
};
void PrintTo(const Rgb& c, std::ostream* os)
{
    *os << '(' << c.r << ',' << c.g << ',' << c.b << ')';
}
Rgb rgbOf(std::uint32_t colour)
{
    return {int(colour & 0xFF), int(colour >> 8 & 0xFF), int(colour >> 16 & 0xFF)};
}
Rgb rgbOf(const QColor& c)
{
    return {c.red(), c.green(), c.blue()};
}

class ColourPicker : public ::testing::Test {
  protected:
    ColourPicker() { form.Context = context; }

    /// Shows the form modally, runs action in it, and aborts if it stays open.
    void run(const std::function<void()>& action)
    {
        driver.OnNextModal([&](Form&) {
            action();
            if (!form.IsUnloaded())
                form.ctl_Sidebar->Press(QStringLiteral("ABORT"));
        });
        form.Show(true);
    }

    Rgb boxes() const
    {
        return {form.txt_R->Text().toInt(), form.txt_G->Text().toInt(), form.txt_B->Text().toInt()};
    }
    Rgb request() const { return rgbOf(context->Request.Color); }
    /// The strip's rows count down from its top to its last row, which is black.
    int lastRow() const { return int(form.pic_ColorY->ScaleHeight()) - 1; }
    /// A colour as row y of the strip shows it, rounded half to even.
    Rgb shade(const Rgb& c, int y) const
    {
        const double h = lastRow();
        const auto step = [&](int v) { return int(std::nearbyint((h - y) * v / h)); };
        return {step(c.r), step(c.g), step(c.b)};
    }
    /// One step towards black, as the strip's second row shows a colour.
    Rgb darker(const Rgb& c) const { return shade(c, 1); }

    static void press(Control& control, QPoint at)
    {
        QTest::mousePress(control.widget(), Qt::LeftButton, {}, at);
    }
    /// Moves with the left button held, as a drag does, then lets go.
    static void drag(Control& control, QPoint to)
    {
        QWidget* w = control.widget();
        QMouseEvent move(QEvent::MouseMove, to, w->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(w, &move);
        QTest::mouseRelease(w, Qt::LeftButton, {}, to);
    }
    /// Comes into the box from another one, so that its text is selected, and types.
    void typeInto(TextBox& box, const QString& text)
    {
        Focus(&box == form.txt_R ? *form.txt_G : *form.txt_R);
        Focus(box);
        if (text.isEmpty())
            PressKey(form, Qt::Key_Delete);
        Type(form, text);
    }

    std::shared_ptr<TestHost> host = std::make_shared<TestHost>();
    ScopedCoreDev scope{host};
    ModalDriver driver;
    std::shared_ptr<DialogContext> context = std::make_shared<DialogContext>();
    frm_DialogColor form;
};

TEST_F(ColourPicker, TheStartColourComesBackOneStepDarkerEvenWhenCancelled)
{
    context->Request.Color = 0x3080F0; // r 240, g 128, b 48
    Rgb shown{};
    run([&] {
        shown = boxes();
        EXPECT_EQ(rgbOf(form.pan_Color->BackColor()), shown);
        form.ctl_Sidebar->Press(QStringLiteral("ABORT"));
    });
    EXPECT_EQ(shown, darker({240, 128, 48}));
    EXPECT_EQ(request(), shown);
    EXPECT_EQ(context->Request.Result, ResultAbort);
    EXPECT_EQ(form.Caption(), "Farbe bestimmen");
}

TEST_F(ColourPicker, APressInTheFieldTakesThePixelUnderTheMouseAndDrawsItsStrip)
{
    const QImage field = frm_DialogColor::ColourField();
    ASSERT_FALSE(field.isNull());
    struct Row {
        const char* name;
        QPoint at;
    } const rows[] = {{"top left, pure red", {2, 1}},
                      {"top third, green", {field.width() / 3, 1}},
                      {"middle", {field.width() / 2, field.height() / 2}},
                      {"bottom, white", {100, field.height() - 1}}};
    run([&] {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.name);
            const Rgb pixel = rgbOf(field.pixelColor(row.at));
            press(*form.pic_Colors, row.at);
            EXPECT_EQ(rgbOf(form.pic_ColorY->Point(5, 0)), pixel) << "the strip's top";
            EXPECT_EQ(rgbOf(form.pic_ColorY->Point(5, lastRow())), Rgb{}) << "its bottom";
            EXPECT_EQ(boxes(), darker(pixel));
            EXPECT_EQ(request(), darker(pixel));
            QTest::mouseRelease(form.pic_Colors->widget(), Qt::LeftButton, {}, row.at);
        }
    });
    // The field runs through the hues across and towards white downwards.
    EXPECT_GT(field.pixelColor(2, 1).red(), 240);
    EXPECT_LT(field.pixelColor(2, 1).green(), 20);
    EXPECT_GT(field.pixelColor(field.width() / 3, 1).green(), 240);
    EXPECT_GT(field.pixelColor(field.width() / 3, field.height() - 1).red(), 240);
}

TEST_F(ColourPicker, ADragLeavingTheFieldFallsBackToTheLastColourSet)
{
    run([&] {
        press(*form.pic_Colors, {120, 40});
        const Rgb picked = request();
        drag(*form.pic_Colors, {-20, 400});
        // The request's colour is picked again, and its strip darkens it once more.
        EXPECT_EQ(request(), darker(picked));
        EXPECT_EQ(boxes(), darker(picked));
    });
}

TEST_F(ColourPicker, TheStripRunsFromTheFullColourAtTheTopToBlackAtTheBottom)
{
    context->Request.Color = 0x2040FF; // r 255, g 64, b 32
    run([&] {
        const Rgb full{255, 64, 32};
        for (const int y : {0, 1, lastRow() / 2, lastRow() - 1, lastRow()}) {
            SCOPED_TRACE(y);
            press(*form.pic_ColorY, {10, y});
            const Rgb expected = shade(full, y);
            EXPECT_EQ(boxes(), expected);
            EXPECT_EQ(request(), expected);
            EXPECT_EQ(rgbOf(form.pan_Color->BackColor()), expected);
            QTest::mouseRelease(form.pic_ColorY->widget(), Qt::LeftButton, {}, {10, y});
        }
        EXPECT_EQ(request(), (Rgb{0, 0, 0}));
        press(*form.pic_ColorY, {10, 3});
        const Rgb before = request();
        drag(*form.pic_ColorY, {10, lastRow() + 30}); // below the strip: nothing happens
        EXPECT_EQ(request(), before);
    });
}

TEST_F(ColourPicker, TheStripRoundsHalvesToTheEvenNumber)
{
    context->Request.Color = 0x050301; // r 1, g 3, b 5
    run([&] {
        ASSERT_EQ(lastRow() % 2, 0) << "the middle row must lie exactly halfway";
        press(*form.pic_ColorY, {10, lastRow() / 2});
        EXPECT_EQ(boxes(), (Rgb{0, 2, 2})); // 0.5, 1.5 and 2.5
    });
}

TEST_F(ColourPicker, TypedComponentsSetTheColourAndOutOfRangeOnesTurnIntoZero)
{
    struct Row {
        const char* name;
        int box; ///< 0 red, 1 green, 2 blue
        QString typed;
        QString text;
        int value;
    } const rows[] = {
        {"plain", 0, "200", "200", 200},
        {"256 in green", 1, "256", "0", 0},
        {"negative", 2, "-3", "0", 0},
        {"letters keep their text", 0, "abc", "abc", 0},
        {"a number before letters", 1, "12px", "12px", 12},
        {"empty", 2, "", "", 0},
        {"a half rounds to even", 0, "8.5", "8.5", 8},
        {"a fraction rounds", 1, "7.6", "7.6", 8},
    };
    run([&] {
        TextBox* boxes3[] = {form.txt_R, form.txt_G, form.txt_B};
        for (const Row& row : rows) {
            SCOPED_TRACE(row.name);
            for (TextBox* box : boxes3)
                box->SetText(QStringLiteral("50"));
            typeInto(*boxes3[row.box], row.typed);
            EXPECT_EQ(boxes3[row.box]->Text(), row.text);
            int expected[] = {50, 50, 50};
            expected[row.box] = row.value;
            const Rgb colour{expected[0], expected[1], expected[2]};
            EXPECT_EQ(request(), colour);
            EXPECT_EQ(rgbOf(form.pan_Color->BackColor()), colour);
        }
    });
}

TEST_F(ColourPicker, FocusSelectsTheWholeBox)
{
    run([&] {
        form.txt_G->SetText(QStringLiteral("123"));
        Focus(*form.txt_G);
        EXPECT_EQ(form.txt_G->SelText(), "123");
    });
}

TEST_F(ColourPicker, APaletteClickTakesItsColourAndEditWritesTheCurrentOneBack)
{
    ctl_Palette& palette = *form.ctl_Pal;
    const auto clickEntry = [&](int index) {
        const QRect first(palette.ColorSpace(), palette.ColorSpace(), palette.ColorWidth(),
                          palette.ColorHeight());
        const int step = palette.ColorWidth() + palette.ColorSpace();
        QTest::mouseClick(palette.widget(), Qt::LeftButton, {},
                          first.center() + QPoint((index - 1) * step, 0));
    };
    run([&] {
        ASSERT_GE(palette.Count(), 5);
        clickEntry(4);
        EXPECT_EQ(request(), rgbOf(*palette.Color(4)));
        EXPECT_EQ(boxes(), rgbOf(*palette.Color(4)));

        typeInto(*form.txt_R, "17");
        Click(*form.but_PalEdit);
        EXPECT_EQ(rgbOf(*palette.Color(4)), request());
        EXPECT_EQ(request().r, 17);

        // With the selected entry gone, the selection lies beyond the palette.
        const int count = palette.Count();
        clickEntry(count);
        Click(*form.but_PalRemove);
        const std::vector<std::uint32_t> before = palette.Colors();
        typeInto(*form.txt_G, "99");
        Click(*form.but_PalEdit);
        EXPECT_EQ(palette.Colors(), before);
    });
}

TEST_F(ColourPicker, OkAndDoubleClicksConfirmAbortAndEscapeCancel)
{
    struct Row {
        const char* name;
        std::function<void(frm_DialogColor&)> act;
        int result;
    } const rows[] = {
        {"OK", [](frm_DialogColor& f) { f.ctl_Sidebar->Press(QStringLiteral("OK")); }, 1},
        {"Return", [](frm_DialogColor& f) { PressKey(f, Qt::Key_Return); }, 1},
        {"double click on the field",
         [](frm_DialogColor& f) { QTest::mouseDClick(f.pic_Colors->widget(), Qt::LeftButton); }, 1},
        {"double click on the strip",
         [](frm_DialogColor& f) { QTest::mouseDClick(f.pic_ColorY->widget(), Qt::LeftButton); }, 1},
        {"Abbruch", [](frm_DialogColor& f) { f.ctl_Sidebar->Press(QStringLiteral("ABORT")); }, 2},
        {"Escape", [](frm_DialogColor& f) { PressKey(f, Qt::Key_Escape); }, 2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto ctx = std::make_shared<DialogContext>();
        ctx->Request.Color = 0x102030;
        frm_DialogColor dialog;
        dialog.Context = ctx;
        bool closed = false;
        driver.OnNextModal([&](Form&) {
            row.act(dialog);
            closed = dialog.IsUnloaded();
            if (!closed)
                dialog.Unload();
        });
        dialog.Show(true);
        EXPECT_TRUE(closed);
        EXPECT_EQ(ctx->Request.Result, row.result);
    }
}

} // namespace
