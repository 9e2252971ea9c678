#include "desktop/LocationPaths.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace fw::desktop {

namespace {

// Strict UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
// Gives the length of the character at text[at] and its code point, or 0 for
// a byte that does not start a valid character.
std::size_t decodeOne(std::string_view text, std::size_t at, char32_t& codePoint)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[at + i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) {
        codePoint = lead;
        return 1;
    }
    std::size_t length = 0;
    char32_t minimum = 0;
    if ((lead & 0xE0) == 0xC0) {
        length = 2, minimum = 0x80, codePoint = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, minimum = 0x800, codePoint = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4, minimum = 0x10000, codePoint = lead & 0x07;
    } else {
        return 0;
    }
    if (at + length > text.size())
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
        codePoint = (codePoint << 6) | (byte(i) & 0x3F);
    }
    if (codePoint < minimum || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF))
        return 0;
    return length;
}

void appendUtf8(std::string& out, char32_t codePoint)
{
    if (codePoint < 0x80) {
        out += char(codePoint);
    } else if (codePoint < 0x800) {
        out += char(0xC0 | (codePoint >> 6));
        out += char(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        out += char(0xE0 | (codePoint >> 12));
        out += char(0x80 | ((codePoint >> 6) & 0x3F));
        out += char(0x80 | (codePoint & 0x3F));
    } else {
        out += char(0xF0 | (codePoint >> 18));
        out += char(0x80 | ((codePoint >> 12) & 0x3F));
        out += char(0x80 | ((codePoint >> 6) & 0x3F));
        out += char(0x80 | (codePoint & 0x3F));
    }
}

bool isEscapeCharacter(char32_t codePoint)
{
    return codePoint >= EscapedByteBase && codePoint <= EscapedByteBase + 0xFF;
}

void appendEscaped(std::string& out, std::string_view bytes)
{
    for (const char byte : bytes)
        appendUtf8(out, EscapedByteBase + static_cast<unsigned char>(byte));
}

bool isBidiControl(char32_t c)
{
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

// Splits at any of the separators, keeping empty pieces.
std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    for (std::size_t at = text.find(separator); at != std::string_view::npos;
         at = text.find(separator, start)) {
        parts.push_back(text.substr(start, at - start));
        start = at + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

bool isInside(std::string_view path, std::string_view folder)
{
    return path.size() >= folder.size() && path.substr(0, folder.size()) == folder &&
           (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

std::string NameToLocation(std::string_view bytes)
{
    std::string out;
    out.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        char32_t codePoint = 0;
        const std::size_t length = decodeOne(bytes, at, codePoint);
        if (length == 0) {
            appendEscaped(out, bytes.substr(at, 1));
            at += 1;
            continue;
        }
        const bool reserved =
            codePoint < 0x80 && EscapedCharacters.find(char(codePoint)) != std::string_view::npos;
        if (reserved || isEscapeCharacter(codePoint))
            appendEscaped(out, bytes.substr(at, length));
        else
            out.append(bytes.substr(at, length));
        at += length;
    }
    return out;
}

std::string NameFromLocation(std::string_view name)
{
    std::string out;
    out.reserve(name.size());
    for (std::size_t at = 0; at < name.size();) {
        char32_t codePoint = 0;
        const std::size_t length = decodeOne(name, at, codePoint);
        if (length == 0) {
            // Not made by NameToLocation; keep the byte rather than lose it.
            out += name[at++];
            continue;
        }
        if (isEscapeCharacter(codePoint))
            out += char(codePoint - EscapedByteBase);
        else
            out.append(name.substr(at, length));
        at += length;
    }
    return out;
}

std::string DisplayName(std::string_view locationName)
{
    std::string out;
    out.reserve(locationName.size());
    for (std::size_t at = 0; at < locationName.size();) {
        char32_t c = 0;
        std::size_t length = decodeOne(locationName, at, c);
        if (length == 0)
            c = 0xFFFD, length = 1;
        at += length;
        if (isEscapeCharacter(c))
            c = c - EscapedByteBase < 0x80 ? c - EscapedByteBase : 0xFFFD;
        if (c == '\n' || c == 0x85 || c == 0x2028 || c == 0x2029) {
            appendUtf8(out, 0x2424);
        } else if (c < 0x20) {
            appendUtf8(out, 0x2400 + c);
        } else if (c == 0x7F) {
            appendUtf8(out, 0x2421);
        } else if (isBidiControl(c)) {
            char code[16];
            std::snprintf(code, sizeof code, "[U+%04X]", unsigned(c));
            out += code;
        } else {
            appendUtf8(out, c);
        }
    }
    return out;
}

std::string PosixToLocation(std::string_view posixPath, const std::vector<DriveRoot>& drives)
{
    if (posixPath.empty() || posixPath.front() != '/')
        return {};
    char letter = 'C';
    std::string_view rest = posixPath;
    std::size_t deepest = 0;
    for (const DriveRoot& drive : drives) {
        if (drive.mountPoint.size() > deepest && isInside(posixPath, drive.mountPoint)) {
            deepest = drive.mountPoint.size();
            letter = drive.letter;
            rest = posixPath.substr(deepest);
        }
    }
    std::string location{letter, ':', '\\'};
    bool first = true;
    for (const std::string_view name : split(rest, '/')) {
        if (name.empty())
            continue; // the leading "/", doubled and trailing slashes
        if (!first)
            location += '\\';
        location += NameToLocation(name);
        first = false;
    }
    if (!first && posixPath.back() == '/')
        location += '\\';
    return location;
}

std::optional<std::string> LocationToPosix(std::string_view location,
                                           const std::vector<DriveRoot>& drives)
{
    if (!location.empty() && location.front() == '/')
        return std::string(location);
    if (location.size() < 2 || location[1] != ':' ||
        !std::isalpha(static_cast<unsigned char>(location[0])) ||
        (location.size() > 2 && location[2] != '\\'))
        return std::nullopt;
    const char letter = char(std::toupper(static_cast<unsigned char>(location[0])));
    std::string root;
    if (letter != 'C') {
        const auto drive = std::find_if(drives.begin(), drives.end(),
                                        [&](const DriveRoot& d) { return d.letter == letter; });
        if (drive == drives.end())
            return std::nullopt;
        root = drive->mountPoint;
    }
    std::string path = root;
    const std::string_view rest = location.size() > 3 ? location.substr(3) : std::string_view();
    for (const std::string_view name : split(rest, '\\')) {
        if (name.empty())
            continue;
        path += '/';
        path += NameFromLocation(name);
    }
    if (rest.empty() || rest.back() == '\\')
        path += '/';
    return path;
}

std::optional<std::string> TypedPathToLocation(std::string_view typed, std::string_view home,
                                               const std::vector<DriveRoot>& drives)
{
    std::string path;
    if (!typed.empty() && typed.front() == '/') {
        path = typed;
    } else if (typed == "~" || typed.substr(0, 2) == "~/") {
        if (home.empty())
            return std::nullopt;
        path = std::string(home);
        if (path.back() != '/')
            path += '/';
        path += typed.substr(std::min<std::size_t>(2, typed.size()));
    } else {
        return std::nullopt;
    }
    return PosixToLocation(path, drives);
}

} // namespace fw::desktop
