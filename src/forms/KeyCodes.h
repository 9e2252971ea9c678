#pragma once
// Key codes as the dialogs compare them: the classic virtual key numbers
// (27 Esc, 13 Return, 123 F12, 65-90 letters...) and the shift mask of Control.h.

#include <Qt>

class QKeyEvent;

namespace fw {

enum KeyCode {
    KeyBack = 8,
    KeyTab = 9,
    KeyReturn = 13,
    KeyShift = 16,
    KeyControl = 17,
    KeyMenu = 18,
    KeyEscape = 27,
    KeySpace = 32,
    KeyPageUp = 33,
    KeyPageDown = 34,
    KeyEnd = 35,
    KeyHome = 36,
    KeyLeft = 37,
    KeyUp = 38,
    KeyRight = 39,
    KeyDown = 40,
    KeyInsert = 45,
    KeyDelete = 46,
    KeyF1 = 112,
    KeyF12 = 123,
};

/// The key code of a Qt key, 0 for keys without one.
int KeyCodeOf(int qtKey);
/// The Qt key of a key code, Qt::Key_unknown for none.
Qt::Key QtKeyOf(int keyCode);
/// 1 Shift, 2 Ctrl, 4 Alt.
int ShiftOf(Qt::KeyboardModifiers modifiers);

} // namespace fw
