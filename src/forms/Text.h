#pragma once
// Conversions between the host's UTF-8 strings and the forms layer's QString,
// and the few string rules the dialogs share.

#include <QString>
#include <string>

namespace fw {

inline QString qs(const std::string& s)
{
    return QString::fromStdString(s);
}
inline std::string us(const QString& s)
{
    return s.toStdString();
}

/// The leading integer of a text, as a number is read from "-3D:OFF": optional
/// blanks and sign, then digits; 0 if there are none.
int LeadingNumber(const QString& text);

} // namespace fw
