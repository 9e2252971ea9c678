// How long a touch key takes from the press to its character in the
// keyboard's input line, on the offscreen platform: a plain letter, and one
// that goes through a one-shot SHIFT and the face rewrite that follows it;
// and a digit on the numeric pad, which edits its line directly.
#include "forms/StdControls.h"
#include "touch/KeyFaces.h"
#include "touch/frm_DialogKeyboard.h"
#include "touch/frm_DialogNumericTouch.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>
#include <benchmark/benchmark.h>

namespace {

constexpr int kA = 26, kShift = 37, kClear = 59;

void tap(fw::TouchPadForm& form, int key)
{
    QWidget* label = form.lab_Key[key].widget();
    const QPointF at = label->rect().center();
    const QPointF global = label->mapToGlobal(at);
    QMouseEvent press(QEvent::MouseButtonPress, at, global, Qt::LeftButton, Qt::LeftButton, {});
    QMouseEvent release(QEvent::MouseButtonRelease, at, global, Qt::LeftButton, {}, {});
    QApplication::sendEvent(label, &press);
    QApplication::sendEvent(label, &release);
}

template <class Done> void pumpUntil(Done done)
{
    while (!done())
        QApplication::processEvents(QEventLoop::AllEvents, 5);
}

void KeyPressToCharacterInLine(benchmark::State& state)
{
    fw::frm_DialogKeyboard keyboard;
    keyboard.Show();
    QApplication::processEvents();
    const bool shifted = state.range(0) != 0;
    for (auto _ : state) {
        state.PauseTiming();
        tap(keyboard, kClear);
        pumpUntil([&] { return keyboard.txt_Input->Text().isEmpty(); });
        if (shifted)
            tap(keyboard, kShift);
        state.ResumeTiming();
        tap(keyboard, kA);
        pumpUntil([&] { return !keyboard.txt_Input->Text().isEmpty(); });
    }
    keyboard.Unload();
}
BENCHMARK(KeyPressToCharacterInLine)
    ->Arg(0)
    ->Arg(1)
    ->ArgName("shift")
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();

void PadKeyPressToText(benchmark::State& state)
{
    constexpr int kSeven = 7, kPadClear = 13;
    fw::frm_DialogNumericTouch pad;
    pad.Show();
    QApplication::processEvents();
    for (auto _ : state) {
        state.PauseTiming();
        tap(pad, kPadClear);
        state.ResumeTiming();
        tap(pad, kSeven);
        pumpUntil([&] { return !pad.txt_Input->Text().isEmpty(); });
    }
    pad.Unload();
}
BENCHMARK(PadKeyPressToText)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace
