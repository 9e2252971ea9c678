#include "host/KeyedList.h"

namespace fw {

std::string KeyedList::Item(const std::string& name) const
{
    const auto it = m_values.find(name);
    return it == m_values.end() ? std::string() : it->second;
}

} // namespace fw
