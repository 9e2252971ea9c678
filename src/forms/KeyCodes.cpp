#include "forms/KeyCodes.h"

#include "forms/Control.h"

#include <array>
#include <utility>

namespace fw {

namespace {
// Keys whose code is not their character.
constexpr std::array<std::pair<int, int>, 24> kNamedKeys{{
    {Qt::Key_Backspace, KeyBack},    {Qt::Key_Tab, KeyTab},       {Qt::Key_Backtab, KeyTab},
    {Qt::Key_Return, KeyReturn},     {Qt::Key_Enter, KeyReturn},  {Qt::Key_Shift, KeyShift},
    {Qt::Key_Control, KeyControl},   {Qt::Key_Alt, KeyMenu},      {Qt::Key_AltGr, KeyMenu},
    {Qt::Key_Escape, KeyEscape},     {Qt::Key_Space, KeySpace},   {Qt::Key_PageUp, KeyPageUp},
    {Qt::Key_PageDown, KeyPageDown}, {Qt::Key_End, KeyEnd},       {Qt::Key_Home, KeyHome},
    {Qt::Key_Left, KeyLeft},         {Qt::Key_Up, KeyUp},         {Qt::Key_Right, KeyRight},
    {Qt::Key_Down, KeyDown},         {Qt::Key_Insert, KeyInsert}, {Qt::Key_Delete, KeyDelete},
    {Qt::Key_CapsLock, 20},          {Qt::Key_Pause, 19},         {Qt::Key_Menu, 93},
}};
} // namespace

int KeyCodeOf(int qtKey)
{
    if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9))
        return qtKey; // Qt shares these codes with the classic table
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
        return KeyF1 + (qtKey - Qt::Key_F1);
    for (const auto& [qt, code] : kNamedKeys)
        if (qt == qtKey)
            return code;
    return 0;
}

Qt::Key QtKeyOf(int keyCode)
{
    if ((keyCode >= 'A' && keyCode <= 'Z') || (keyCode >= '0' && keyCode <= '9'))
        return static_cast<Qt::Key>(keyCode);
    if (keyCode >= KeyF1 && keyCode < KeyF1 + 24)
        return static_cast<Qt::Key>(Qt::Key_F1 + (keyCode - KeyF1));
    for (const auto& [qt, code] : kNamedKeys)
        if (code == keyCode)
            return static_cast<Qt::Key>(qt);
    return Qt::Key_unknown;
}

int ShiftOf(Qt::KeyboardModifiers modifiers)
{
    int shift = 0;
    if (modifiers & Qt::ShiftModifier)
        shift |= ShiftDown;
    if (modifiers & Qt::ControlModifier)
        shift |= CtrlDown;
    if (modifiers & Qt::AltModifier)
        shift |= AltDown;
    return shift;
}

} // namespace fw
