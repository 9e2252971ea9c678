#pragma once
// Bytes that may not be UTF-8 (Linux file names, raw arguments) carried in
// text. Every byte that is not part of well-formed UTF-8 becomes the lone
// surrogate U+DC00 + byte, the convention of Python's "surrogateescape": JSON
// writes it as "\udcXX" and a script in any language can map it back. Valid
// UTF-8 never holds a surrogate, so the mapping loses nothing.

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace fw::cli {

/// The bytes as text, undecodable bytes as U+DC80..U+DCFF.
QString DecodeEscaped(QByteArrayView bytes);

/// The inverse of DecodeEscaped: U+DC80..U+DCFF become their byte again,
/// everything else its UTF-8.
QByteArray EncodeEscaped(QStringView text);

/// Whether the text holds an escaped byte.
bool HoldsEscapedBytes(QStringView text);

/// The text with each escaped byte shown as U+FFFD, for places that show text.
QString WithReplacementCharacters(QString text);

} // namespace fw::cli
