#include "desktop/PercentDecoding.h"

namespace fw::desktop {

namespace {

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

// Written out rather than QByteArray::fromPercentEncoding, which decodes a
// "%" before non-hex digits into garbage instead of keeping or refusing it.
std::string PercentDecoded(std::string_view text, bool* brokenEscape)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hexValue(text[i + 1]) : -1;
        const int low = high >= 0 ? hexValue(text[i + 2]) : -1;
        if (low >= 0) {
            out += static_cast<char>(high * 16 + low);
            i += 2;
            continue;
        }
        if (text[i] == '%' && brokenEscape)
            *brokenEscape = true;
        out += text[i];
    }
    return out;
}

} // namespace fw::desktop
