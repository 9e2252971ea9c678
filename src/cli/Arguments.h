#pragma once
// The program's arguments as text. Qt 6 reads every 8-bit text on Unix as
// UTF-8, so an argument typed in a Latin-1 terminal would arrive garbled.

#include <QString>
#include <QStringList>

namespace fw::cli {

/// Decodes argv[1..] with the locale's encoding (UTF-8 in the C locale).
/// Bytes that do not decode are kept as escapes (EscapedBytes.h). For each
/// such argument warn() gets a line that names it, unless it is the value of
/// an option that takes a file's bytes (TakesBytes); texts show those bytes as
/// U+FFFD.
QStringList DecodeArguments(int argc, char** argv, void (*warn)(const QString& line));

} // namespace fw::cli
