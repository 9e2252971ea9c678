#pragma once
// Numbers as the numeric pad shows and hands them back: the shortest decimal
// text that reads back as the same double, with the comma of a German desktop.

#include <QString>

namespace fw {

/// Shortest round-trip text, comma as decimal separator, no exponent;
/// minus zero reads "0".
QString DecimalText(double value);

/// value rounded half away from zero to places decimals; values too large to
/// carry that many decimals stay as they are.
double RoundTo(double value, int places);

} // namespace fw
