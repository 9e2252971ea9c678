#include "host/HostObjects.h"

#include <algorithm>

namespace fw {

namespace {

// Share names are case-blind on every server, so "daten" and "Daten" sort
// together; only ASCII folds, as the servers' own listings do.
bool LessCaseBlind(const std::string& a, const std::string& b)
{
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        const auto fold = [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c - 'A' + 'a')
                                        : static_cast<unsigned char>(c);
        };
        return fold(x) < fold(y);
    });
}

} // namespace

void ShareList::Sort(bool ascending)
{
    std::stable_sort(
        m_items.begin(), m_items.end(), [ascending](const ShareInfo& a, const ShareInfo& b) {
            return ascending ? LessCaseBlind(a.Name, b.Name) : LessCaseBlind(b.Name, a.Name);
        });
}

} // namespace fw
