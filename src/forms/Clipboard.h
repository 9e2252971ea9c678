#pragma once
// The system clipboard, as the dialogs use it.

#include <QString>

namespace fw::Clipboard {

void Clear();
QString GetText();
void SetText(const QString& text);

} // namespace fw::Clipboard
