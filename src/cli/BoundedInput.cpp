#include "cli/BoundedInput.h"

#include <QIODevice>
#include <algorithm>

namespace fw::cli {

namespace {
constexpr qint64 kPiece = 1024 * 1024;
} // namespace

QString TooLargeMessage(const QString& what)
{
    return QStringLiteral("%1 is larger than the limit of %2 MB")
        .arg(what)
        .arg(kInputLimit / (1024 * 1024));
}

Outcome ReadBounded(QIODevice& device, const QString& what, QByteArray& bytes)
{
    bytes.clear();
    // One byte past the limit tells a full-sized input from a larger one.
    while (bytes.size() <= kInputLimit) {
        const QByteArray piece = device.read(std::min(kPiece, kInputLimit + 1 - bytes.size()));
        if (piece.isEmpty())
            break; // the end, or a read error that the parse will report

        bytes += piece;
    }
    if (bytes.size() > kInputLimit) {
        bytes.clear();
        return {ExitData, TooLargeMessage(what)};
    }
    return {};
}

} // namespace fw::cli
