#include "forms/Text.h"

#include <algorithm>
#include <cstdint>

namespace fw {

int LeadingNumber(const QString& text)
{
    int i = 0;
    while (i < text.size() && text[i].isSpace())
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
        negative = text[i++] == u'-';
    long long value = 0;
    bool any = false;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) {
        any = true;
        if (value < 100000000000LL)
            value = value * 10 + (text[i].unicode() - u'0');
    }
    if (!any)
        return 0;
    value = negative ? -value : value;
    return static_cast<int>(std::clamp<long long>(value, INT32_MIN, INT32_MAX));
}

} // namespace fw
