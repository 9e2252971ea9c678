#pragma once
// A user's hands for tests: click, press keys, type text, move focus. Every
// input goes through the application's event delivery, so key preview,
// default buttons and focus rules apply as they would for a person.

#include "forms/Control.h"
#include "forms/Form.h"

#include <QString>
#include <Qt>

namespace fw::testing {

/// Clicks the middle of a control with the left mouse button.
void Click(Control& control);
/// Gives the focus to a control as a mouse-less user would (and its window).
void Focus(Control& control);
/// Presses and releases a key on the form's focused control (or the form).
void PressKey(Form& form, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Types text into the form's focused control, key by key.
void Type(Form& form, const QString& text);
/// Closes the form's window as the window manager's close button does.
void CloseWindow(Form& form);
/// Lets queued events run (paints, timers due now).
void ProcessEvents();

} // namespace fw::testing
