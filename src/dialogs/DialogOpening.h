#pragma once
// The opening that the input family, the progress window and the text viewer
// share: the caption from the request's title, then the icon, or no icon and
// the description spread over the room it leaves.

#include "host/DialogContext.h"

#include <QString>

namespace fw {

class Control;
class Form;
class PictureBox;
class ctl_CmdBar;

/// How the description takes the room of a hidden icon.
enum class FreedRoom {
    SpanHolder, ///< as wide as the holder less a margin of the icon's Left on both sides
    GrowByMove, ///< wider by the distance it moved
};

/// Caption from Title; icon from IconPath through the picture service, else
/// from Icon, else img_Icon hidden and lab_Description moved to its Left.
/// Each step runs on if one before it fails.
void OpenDialog(Form& form, DialogContext& context, PictureBox& img_Icon, Control& lab_Description,
                const Control& pan_Holder, FreedRoom room = FreedRoom::SpanHolder);

/// The part of a prompt that a label is given. Laying out a megabyte of text
/// stalls a form for minutes, and no dialog shows more than a screenful of it.
QString ShownPrompt(const std::string& text);
constexpr int PromptShownLength = 4000;

/// The bar rows of the dialogs that end on a key: OK, Abbruch and the round help.
void AddDialogCommands(ctl_CmdBar& bar);

class ctl_Button;
/// The "&Vorgabe" button of the input forms, on the bar beside its help button.
ctl_Button* AddDefaultTextButton(Form& form, ctl_CmdBar& bar);

/// What a bar key means, compared in upper case; Other for keys of no meaning.
enum class Command { Ok, Abort, Help, Other };
Command CommandOf(const QString& key);

} // namespace fw
