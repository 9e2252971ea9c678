#include "cli/EscapedBytes.h"

namespace fw::cli {

namespace {

constexpr char16_t kEscapeBase = 0xDC00;

bool isEscapedByte(QChar c)
{
    return c.unicode() >= 0xDC80 && c.unicode() <= 0xDCFF;
}

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

// Length of the well-formed UTF-8 sequence at the start of rest, 0 if there
// is none. Qt's decoder would say only that something failed, not which bytes.
qsizetype wellFormedLength(QByteArrayView rest)
{
    const auto at = [&](qsizetype i) { return static_cast<unsigned char>(rest[i]); };
    const unsigned char lead = at(0);
    if (lead < 0x80)
        return 1;
    qsizetype length = 0;
    unsigned char low = 0x80;  // bounds of the second byte exclude overlong
    unsigned char high = 0xBF; // forms, surrogates and code points past U+10FFFF
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : 0x80;
        high = lead == 0xED ? 0x9F : 0xBF;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF;
    } else {
        return 0;
    }
    if (rest.size() < length || at(1) < low || at(1) > high)
        return 0;
    for (qsizetype i = 2; i < length; ++i)
        if (!isContinuation(at(i)))
            return 0;
    return length;
}

} // namespace

QString DecodeEscaped(QByteArrayView bytes)
{
    QString text;
    text.reserve(bytes.size());
    qsizetype i = 0;
    while (i < bytes.size()) {
        const qsizetype length = wellFormedLength(bytes.sliced(i));
        if (length == 0) {
            text += QChar(kEscapeBase + static_cast<unsigned char>(bytes[i]));
            ++i;
            continue;
        }
        text += QString::fromUtf8(bytes.sliced(i, length));
        i += length;
    }
    return text;
}

QByteArray EncodeEscaped(QStringView text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    qsizetype runStart = 0;
    const auto flushRun = [&](qsizetype end) {
        bytes += text.sliced(runStart, end - runStart).toUtf8();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isEscapedByte(text[i]))
            continue;
        flushRun(i);
        bytes += static_cast<char>(text[i].unicode() - kEscapeBase);
        runStart = i + 1;
    }
    flushRun(text.size());
    return bytes;
}

bool HoldsEscapedBytes(QStringView text)
{
    for (QChar c : text)
        if (isEscapedByte(c))
            return true;
    return false;
}

QString WithReplacementCharacters(QString text)
{
    for (QChar& c : text)
        if (isEscapedByte(c))
            c = QChar::ReplacementCharacter;
    return text;
}

} // namespace fw::cli
