#pragma once
// Rich text format as plain text. Qt reads no RTF, and the viewers only need
// what a reader sees, so this is a small reader of our own: groups, control
// words and symbols, paragraphs and tabs, "\'hh" bytes of the Windows-1252
// code page, "\uN" characters with their "\ucN" fallbacks, and destinations
// that hold no text (font and colour tables, pictures, field instructions...)
// are skipped. Formatting is dropped.

#include <QString>

namespace fw {

/// The text that an RTF document shows, paragraphs ending in "\n".
QString RtfToPlainText(const QString& rtf);

/// A plain RTF document that shows text as it is.
QString PlainTextToRtf(const QString& text);

} // namespace fw
