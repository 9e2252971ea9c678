#include "desktop/DesktopText.h"

#include "desktop/FolderListing.h"
#include "desktop/LocationPaths.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cctype>
#include <charconv>

namespace fw::desktop {

namespace {

std::string lowered(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return char(std::tolower(c)); });
    return text;
}

std::size_t findSep(const std::string& text, const std::string& sep, bool ignoreCase, bool last)
{
    if (sep.empty())
        return std::string::npos;
    if (!ignoreCase)
        return last ? text.rfind(sep) : text.find(sep);
    const std::string t = lowered(text);
    const std::string s = lowered(sep);
    return last ? t.rfind(s) : t.find(s);
}

bool isSep(char c)
{
    return c == '/' || c == '\\';
}

char sepOf(const std::string& path)
{
    const bool back = path.find('\\') != std::string::npos;
    const bool slash = path.find('/') != std::string::npos;
    return back && !slash ? '\\' : '/';
}

std::size_t lastSep(const std::string& path)
{
    return path.find_last_of("/\\");
}

std::string withoutTrailingSeps(std::string path)
{
    while (path.size() > 1 && isSep(path.back()))
        path.pop_back();
    return path;
}

} // namespace

std::string DesktopText::TextBefore(const std::string& text, const std::string& sep, bool flag)
{
    const std::size_t at = findSep(text, sep, flag, false);
    return at == std::string::npos ? text : text.substr(0, at);
}

std::string DesktopText::TextBeforeLast(const std::string& text, const std::string& sep, bool flag)
{
    const std::size_t at = findSep(text, sep, flag, true);
    return at == std::string::npos ? text : text.substr(0, at);
}

std::string DesktopText::TextAfter(const std::string& text, const std::string& sep, bool flag)
{
    const std::size_t at = findSep(text, sep, flag, false);
    return at == std::string::npos ? std::string() : text.substr(at + sep.size());
}

bool DesktopText::Like(const std::string& text, const std::string& pattern)
{
    // One pattern only: a ";" in a search text is a character to find.
    return MatchesWildcard(text, pattern);
}

// A length prefix instead of a separator: no text can be mistaken for one.
std::string DesktopText::Pack(const std::string& first, const std::string& second)
{
    return std::to_string(first.size()) + ':' + first + second;
}

bool DesktopText::Unpack(const std::string& packed, std::string& first, std::string& second)
{
    const std::size_t colon = packed.find(':');
    std::size_t length = 0;
    const char* begin = packed.data();
    const char* end = packed.data() + (colon == std::string::npos ? 0 : colon);
    const auto parsed = std::from_chars(begin, end, length);
    if (colon == std::string::npos || colon == 0 || parsed.ec != std::errc() || parsed.ptr != end ||
        length > packed.size() - colon - 1) {
        first = packed;
        second.clear();
        return false;
    }
    first = packed.substr(colon + 1, length);
    second = packed.substr(colon + 1 + length);
    return true;
}

std::string DesktopText::AddBackslash(const std::string& path)
{
    if (path.empty() || isSep(path.back()))
        return path;
    return path + sepOf(path);
}

std::string DesktopText::DrivePart(const std::string& path)
{
    if (path.size() >= 2 && isSep(path[0]) && isSep(path[1])) {
        // A UNC path: the host and share components.
        std::size_t host = path.find_first_of("/\\", 2);
        if (host == std::string::npos)
            return path + sepOf(path);
        std::size_t share = path.find_first_of("/\\", host + 1);
        return share == std::string::npos ? path + path[host] : path.substr(0, share + 1);
    }
    const std::size_t colon = path.find(':');
    if (colon != std::string::npos && colon > 0 && path.find_first_of("/\\") > colon) {
        if (colon + 1 < path.size() && isSep(path[colon + 1]))
            return path.substr(0, colon + 2);
        return path.substr(0, colon + 1) + '\\';
    }
    if (!path.empty() && path[0] == '/')
        return "/";
    return {};
}

std::string DesktopText::FolderPart(const std::string& path)
{
    const std::size_t at = lastSep(path);
    return at == std::string::npos ? std::string() : path.substr(0, at + 1);
}

std::string DesktopText::FileName(const std::string& path)
{
    const std::size_t at = lastSep(path);
    return at == std::string::npos ? path : path.substr(at + 1);
}

std::string DesktopText::Extension(const std::string& path)
{
    const std::string name = FileName(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot + 1);
}

std::string DesktopText::FolderName(const std::string& path)
{
    const std::string trimmed = withoutTrailingSeps(path);
    if (trimmed.size() == 1 && isSep(trimmed[0]))
        return {};
    return FileName(trimmed);
}

std::string DesktopText::ParentPath(const std::string& path)
{
    const std::string trimmed = withoutTrailingSeps(path);
    if (trimmed.size() <= 1)
        return {};
    return FolderPart(trimmed);
}

std::string DesktopText::ParentText(const std::string& path)
{
    return FolderName(ParentPath(path));
}

std::string DesktopText::Combine(const std::string& folder, const std::string& name)
{
    if (folder.empty())
        return name;
    std::size_t skip = 0;
    while (skip < name.size() && isSep(name[skip]))
        ++skip;
    return AddBackslash(folder) + name.substr(skip);
}

std::string DesktopText::TypedPath(const std::string& typed)
{
    const QByteArray home = QFile::encodeName(QDir::homePath());
    return TypedPathToLocation(typed, std::string_view(home.constData(), home.size()))
        .value_or(typed);
}

} // namespace fw::desktop
