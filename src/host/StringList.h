#pragma once
// The host's list of strings, indexed from 1.

#include <string>
#include <string_view>
#include <vector>

namespace fw {

class StringList {
public:
    StringList() = default;
    StringList(std::initializer_list<std::string> items) : m_items(items) {}

    int Count() const { return static_cast<int>(m_items.size()); }
    /// Entry at a 1-based index; throws std::out_of_range outside 1..Count.
    const std::string& Item(int index) const;
    void SetItem(int index, std::string value);
    void Add(std::string value);
    void Clear() { m_items.clear(); }
    /// Removes the entry at a 1-based index; throws std::out_of_range outside 1..Count.
    void Remove(int index);
    /// Sorts in binary (byte) order, which keeps the sort stable across locales.
    void Sort();
    void Reserve(int count);
    bool Contains(std::string_view value) const;
    /// Removes every entry equal to value; returns how many went.
    int RemoveValue(std::string_view value);

    /// A text that stores the whole list; FromText(ToText()) gives the same list
    /// back for any entries, separators and line breaks included.
    std::string ToText() const;
    /// Reads a text made by ToText; throws std::invalid_argument on anything else.
    static StringList FromText(std::string_view text);

    const std::vector<std::string>& items() const { return m_items; }
    bool operator==(const StringList&) const = default;

private:
    std::vector<std::string> m_items;
};

} // namespace fw
