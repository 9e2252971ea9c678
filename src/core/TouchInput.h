#pragma once
// The touch hook between every input box and the on-screen keyboard, so that
// a form needs one call in its click handler.

#include <QString>

namespace fw {

class Control;

/// The host's setting "Touchmode"; false when the host cannot tell.
bool hTouchEnabled();

/// Touch on: the keyboard opens for control under title; true if the user
/// confirmed. Touch off: a text box gets all of its text selected; false.
bool hTouchInput(Control& control, const QString& title);

} // namespace fw
