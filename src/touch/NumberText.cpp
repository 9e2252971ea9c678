#include "touch/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace fw {

QString DecimalText(double value)
{
    if (value == 0)
        value = 0; // no "-0"
    // Fixed notation without a precision is the shortest text that reads back
    // exactly; the largest double needs 309 digits before the point.
    std::array<char, 400> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed);
    QString text = QString::fromLatin1(buffer.data(), static_cast<int>(result.ptr - buffer.data()));
    text.replace(u'.', u',');
    return text;
}

double RoundTo(double value, int places)
{
    const double scale = std::pow(10.0, places);
    const double scaled = value * scale;
    if (!std::isfinite(scaled) || std::abs(scaled) >= 9007199254740992.0) // 2^53
        return value;
    return std::round(scaled) / scale;
}

} // namespace fw
