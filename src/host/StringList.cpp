#include "host/StringList.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace fw {

namespace {

// The stored form is a header line with the count, then one line per entry.
// Line breaks, backslashes and control bytes inside entries are escaped, so
// every line of the text is exactly one entry and the count tells an empty
// list from a list of one empty entry.
constexpr std::string_view kHeader = "StringList ";

std::size_t checkedIndex(int index, std::size_t count)
{
    if (index < 1 || static_cast<std::size_t>(index) > count)
        throw std::out_of_range("StringList index " + std::to_string(index) + " outside 1.." +
                                std::to_string(count));
    return static_cast<std::size_t>(index - 1);
}

char hexDigit(unsigned value)
{
    return "0123456789ABCDEF"[value & 0xFu];
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

void appendEscaped(std::string& out, const std::string& entry)
{
    for (char c : entry) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            // Bytes from 0x80 up stay raw so that UTF-8 text stays readable.
            if (byte < 0x20 || byte == 0x7F) {
                out += "\\x";
                out += hexDigit(byte >> 4);
                out += hexDigit(byte);
            } else {
                out += c;
            }
        }
    }
}

[[noreturn]] void malformed(const std::string& why)
{
    throw std::invalid_argument("not a stored StringList: " + why);
}

std::string unescapeLine(std::string_view line)
{
    std::string entry;
    entry.reserve(line.size());
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        const auto byte = static_cast<unsigned char>(c);
        if (c != '\\') {
            // ToText never writes raw control bytes; meeting one means the text
            // was made elsewhere or mangled (a CR from a line-end conversion).
            if (byte < 0x20 || byte == 0x7F)
                malformed("raw control byte in an entry");
            entry += c;
            continue;
        }
        if (++i == line.size())
            malformed("escape at the end of a line");
        switch (line[i]) {
        case '\\':
            entry += '\\';
            break;
        case 'n':
            entry += '\n';
            break;
        case 'r':
            entry += '\r';
            break;
        case 't':
            entry += '\t';
            break;
        case 'x': {
            const int high = i + 1 < line.size() ? hexValue(line[i + 1]) : -1;
            const int low = i + 2 < line.size() ? hexValue(line[i + 2]) : -1;
            if (high < 0 || low < 0)
                malformed("bad \\x escape");
            entry += static_cast<char>(high * 16 + low);
            i += 2;
            break;
        }
        default:
            malformed("unknown escape");
        }
    }
    return entry;
}

} // namespace

const std::string& StringList::Item(int index) const
{
    return m_items[checkedIndex(index, m_items.size())];
}

void StringList::SetItem(int index, std::string value)
{
    m_items[checkedIndex(index, m_items.size())] = std::move(value);
}

void StringList::Add(std::string value)
{
    m_items.push_back(std::move(value));
}

void StringList::Remove(int index)
{
    m_items.erase(m_items.begin() +
                  static_cast<std::ptrdiff_t>(checkedIndex(index, m_items.size())));
}

void StringList::Sort()
{
    // std::string compares as unsigned bytes, which is the byte order wanted here.
    std::stable_sort(m_items.begin(), m_items.end());
}

void StringList::Reserve(int count)
{
    // A negative count reserves nothing rather than failing: it is only a hint.
    if (count > 0)
        m_items.reserve(static_cast<std::size_t>(count));
}

bool StringList::Contains(std::string_view value) const
{
    return std::find(m_items.begin(), m_items.end(), value) != m_items.end();
}

int StringList::RemoveValue(std::string_view value)
{
    const auto before = m_items.size();
    std::erase(m_items, value);
    return static_cast<int>(before - m_items.size());
}

std::string StringList::ToText() const
{
    std::string text(kHeader);
    text += std::to_string(m_items.size());
    text += '\n';
    for (const auto& entry : m_items) {
        appendEscaped(text, entry);
        text += '\n';
    }
    return text;
}

StringList StringList::FromText(std::string_view text)
{
    if (!text.starts_with(kHeader))
        malformed("missing header");
    std::size_t pos = kHeader.size();
    const auto headerEnd = text.find('\n', pos);
    if (headerEnd == std::string_view::npos)
        malformed("header line not ended");

    const std::string_view countText = text.substr(pos, headerEnd - pos);
    std::size_t count = 0;
    const auto [end, error] =
        std::from_chars(countText.data(), countText.data() + countText.size(), count);
    if (countText.empty() || error != std::errc() || end != countText.data() + countText.size())
        malformed("bad count");

    StringList list;
    pos = headerEnd + 1;
    // Each entry takes at least its line break, so a count beyond the rest of the
    // text is caught before any reservation is made from it.
    if (count > text.size() - pos)
        malformed("fewer entries than the count");
    list.m_items.reserve(count);
    for (std::size_t n = 0; n < count; ++n) {
        const auto lineEnd = text.find('\n', pos);
        if (lineEnd == std::string_view::npos)
            malformed("fewer entries than the count");
        list.m_items.push_back(unescapeLine(text.substr(pos, lineEnd - pos)));
        pos = lineEnd + 1;
    }
    if (pos != text.size())
        malformed("more text than the count");
    return list;
}

} // namespace fw
