#pragma once
// A keyed list of named options (the DialogContext's Options).

#include <map>
#include <string>

namespace fw {

class KeyedList {
public:
    bool Exists(const std::string& name) const { return m_values.count(name) != 0; }
    /// The value under name; empty if there is none.
    std::string Item(const std::string& name) const;
    void Add(const std::string& name, std::string value) { m_values[name] = std::move(value); }
    void Remove(const std::string& name) { m_values.erase(name); }
    int Count() const { return static_cast<int>(m_values.size()); }
    const std::map<std::string, std::string>& items() const { return m_values; }

private:
    std::map<std::string, std::string> m_values;
};

} // namespace fw
