#pragma once
// Everything the command reads has a ceiling: a request, a text file or a
// progress line from /dev/zero or an endless pipe would otherwise fill the
// memory until the process is killed.

#include "cli/DialogRuns.h"

#include <QByteArray>
#include <QString>

class QIODevice;

namespace fw::cli {

/// The most bytes the command takes from one input (a file, or one line of
/// standard input).
constexpr qint64 kInputLimit = 64 * 1024 * 1024;

/// The line that refuses an input over the limit; what names the input
/// ("request file '-'").
QString TooLargeMessage(const QString& what);

/// Reads device to its end, in pieces, up to kInputLimit bytes. The size a
/// device reports is not trusted: devices and pipes report 0. Over the limit
/// the outcome is ExitData, with what naming the input.
Outcome ReadBounded(QIODevice& device, const QString& what, QByteArray& bytes);

} // namespace fw::cli
