#include "forms/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace fw::Clipboard {

void Clear()
{
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->clear();
}

QString GetText()
{
    const QClipboard* clipboard = QGuiApplication::clipboard();
    return clipboard ? clipboard->text() : QString();
}

void SetText(const QString& text)
{
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->setText(text);
}

} // namespace fw::Clipboard
