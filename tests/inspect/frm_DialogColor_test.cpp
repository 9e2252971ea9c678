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
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

using Rgb = std::array<int, 3>;
Rgb rgbOf(std::uint32_t c)
{
    return {int(c & 0xFF), int(c >> 8 & 0xFF), int(c >> 16 & 0xFF)};
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
    /// The strip's last row, the lowest the user can press.
    int lastRow() const { return int(form.pic_ColorY->ScaleHeight()) - 1; }
    /// A colour one step of the strip darker, as its second row shows it.
    Rgb darker(const Rgb& c) const
    {
        const double h = form.pic_ColorY->ScaleHeight();
        Rgb out;
        for (int i = 0; i < 3; ++i)
            out[i] = int(std::nearbyint((h - 1) * c[i] / h));
        return out;
    }

    /// A press, or with held a move with the left button down, then the release.
    static void mouse(Control& control, QPoint at, bool held = false)
    {
        QWidget* w = control.widget();
        if (held) {
            QMouseEvent move(QEvent::MouseMove, at, w->mapToGlobal(at), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(w, &move);
        } else {
            QTest::mousePress(w, Qt::LeftButton, {}, at);
        }
        QTest::mouseRelease(w, Qt::LeftButton, {}, at);
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
    context->Request.Color = 0x3080F0;
    Rgb shown{};
    run([&] {
        shown = boxes();
        EXPECT_EQ(rgbOf(form.pan_Color->BackColor()), shown);
        PressKey(form, Qt::Key_Escape);
    });
    EXPECT_EQ(shown, darker({240, 128, 48}));
    EXPECT_EQ(request(), shown);
    EXPECT_EQ(context->Request.Result, ResultAbort);
}

TEST_F(ColourPicker, TheFieldGivesThePixelUnderTheMouseAndADragOutsideTheLastColour)
{
    const QImage field = frm_DialogColor::ColourField();
    ASSERT_EQ(field.size(), form.pic_Colors->widget()->size());
    // Hues across, towards white downwards.
    EXPECT_EQ(field.pixelColor(2, 0).toRgb().hue() / 30, 0);
    EXPECT_EQ(field.pixelColor(field.width() / 3, 0).toRgb().hue() / 30, 4);
    EXPECT_GT(field.pixelColor(100, field.height() - 1).lightness(), 245);
    run([&] {
        for (const QPoint at : {QPoint(2, 0), QPoint(field.width() / 2, field.height() / 2)}) {
            const Rgb pixel = rgbOf(field.pixelColor(at));
            mouse(*form.pic_Colors, at);
            EXPECT_EQ(rgbOf(form.pic_ColorY->Point(5, 0)), pixel) << "the strip's top";
            const Rgb bottom = rgbOf(form.pic_ColorY->Point(5, lastRow()));
            EXPECT_LE(*std::max_element(bottom.begin(), bottom.end()), 1) << "its bottom";
            EXPECT_EQ(boxes(), darker(pixel));
            EXPECT_EQ(request(), darker(pixel));
        }
        const Rgb picked = request();
        mouse(*form.pic_Colors, {-20, 400}, true);
        EXPECT_EQ(request(), darker(picked)) << "the request's colour, darkened once more";
    });
}

TEST_F(ColourPicker, TheStripDarkensTowardsBlackAndAPressBelowItDoesNothing)
{
    struct Row {
        Rgb base;
        int y;
        Rgb picked;
    } const rows[] = {
        {{255, 64, 32}, 0, {255, 64, 32}},
        {{255, 64, 32}, 1, {254, 64, 32}},
        {{71, 253, 163}, 90, {36, 127, 82}},
        // The strip's height is the divisor, so its last row is not yet black.
        {{255, 64, 32}, 180, {1, 0, 0}},
        {{90, 91, 0}, 180, {0, 1, 0}},
    };
    run([&] {
        ASSERT_EQ(lastRow(), 180);
        for (const Row& row : rows) {
            SCOPED_TRACE(row.y);
            // A drag off the field draws the strip afresh from the request's colour.
            context->Request.Color =
                std::uint32_t(row.base[0] + 256 * row.base[1] + 65536 * row.base[2]);
            mouse(*form.pic_Colors, {-20, 400}, true);
            mouse(*form.pic_ColorY, {10, row.y});
            EXPECT_EQ(request(), row.picked);
            EXPECT_EQ(rgbOf(form.pan_Color->BackColor()), row.picked);
        }
        mouse(*form.pic_ColorY, {10, lastRow() + 30}, true);
        EXPECT_EQ(request(), (Rgb{0, 1, 0}));
    });
}

TEST_F(ColourPicker, TypedComponentsSetTheColourAndOutOfRangeOnesTurnIntoZero)
{
    struct Row {
        int box; ///< 0 red, 1 green, 2 blue
        QString typed, text;
        int value;
    } const rows[] = {
        {0, "200", "200", 200},  {1, "256", "0", 0}, {2, "-3", "0", 0},    {0, "abc", "abc", 0},
        {1, "12px", "12px", 12}, {2, "", "", 0},     {0, "8.5", "8.5", 8}, {1, "7.6", "7.6", 8},
    };
    run([&] {
        TextBox* all[] = {form.txt_R, form.txt_G, form.txt_B};
        for (const Row& row : rows) {
            SCOPED_TRACE(row.typed.toStdString());
            for (TextBox* box : all)
                box->SetText(QStringLiteral("50"));
            typeInto(*all[row.box], row.typed);
            EXPECT_EQ(all[row.box]->Text(), row.text);
            Rgb want{50, 50, 50};
            want[std::size_t(row.box)] = row.value;
            EXPECT_EQ(request(), want);
            EXPECT_EQ(rgbOf(form.pan_Color->BackColor()), want);
        }
    });
}

TEST_F(ColourPicker, APaletteClickTakesItsColourAndEditWritesTheCurrentOneBack)
{
    ctl_Palette& palette = *form.ctl_Pal;
    const auto clickEntry = [&](int index) {
        const int step = palette.ColorWidth() + palette.ColorSpace();
        QTest::mouseClick(palette.widget(), Qt::LeftButton, {},
                          QPoint(palette.ColorSpace() + (index - 1) * step + 3, 8));
    };
    run([&] {
        clickEntry(4);
        EXPECT_EQ(request(), rgbOf(*palette.Color(4)));
        EXPECT_EQ(boxes(), rgbOf(*palette.Color(4)));
        typeInto(*form.txt_R, "17");
        Click(*form.but_PalEdit);
        EXPECT_EQ(rgbOf(*palette.Color(4)), request());
        EXPECT_EQ(request()[0], 17);

        // With the selected entry removed, the selection lies beyond the palette.
        clickEntry(palette.Count());
        Click(*form.but_PalRemove);
        const std::vector<std::uint32_t> before = palette.Colors();
        typeInto(*form.txt_G, "99");
        Click(*form.but_PalEdit);
        EXPECT_EQ(palette.Colors(), before);
    });
}

TEST_F(ColourPicker, OkReturnAndDoubleClicksConfirmAbortCancels)
{
    using Act = std::function<void(frm_DialogColor&)>;
    const auto dblClick = [](Control& c) { QTest::mouseDClick(c.widget(), Qt::LeftButton); };
    const std::pair<Act, int> rows[] = {
        {[](auto& f) { f.ctl_Sidebar->Press(QStringLiteral("OK")); }, 1},
        {[](auto& f) { PressKey(f, Qt::Key_Return); }, 1},
        {[&](auto& f) { dblClick(*f.pic_Colors); }, 1},
        {[&](auto& f) { dblClick(*f.pic_ColorY); }, 1},
        {[](auto& f) { f.ctl_Sidebar->Press(QStringLiteral("ABORT")); }, 2},
    };
    for (const auto& [act, result] : rows) {
        frm_DialogColor dialog;
        dialog.Context = context;
        driver.OnNextModal([&](Form&) {
            act(dialog);
            if (!dialog.IsUnloaded()) {
                ADD_FAILURE() << "still open after row with result " << result;
                dialog.Unload();
            }
        });
        dialog.Show(true);
        EXPECT_EQ(context->Request.Result, result);
    }
}

} // namespace
