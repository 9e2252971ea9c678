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
    if (!back && !slash) // "D:" is a drive, named with backslashes
        return path.find(':') != std::string::npos ? '\\' : '/';
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

bool isUnc(const std::string& path)
{
    return path.size() >= 2 && path[0] == '\\' && path[1] == '\\';
}

// The colon of a drive or pseudo path ("C:", "C:\x", "DESKTOP:\"): before any
// separator and followed by one or by nothing. npos for anything else, so a
// name with a colon of its own is no drive.
std::size_t driveColon(const std::string& path)
{
    const std::size_t colon = path.find(':');
    if (colon == 0 || colon == std::string::npos || colon > path.find_first_of("/\\"))
        return std::string::npos;
    return colon + 1 == path.size() || isSep(path[colon + 1]) ? colon : std::string::npos;
}

// How much of a folder (ending in a separator) ".." never climbs above: the
// drive or pseudo root, the share of a UNC path or the Linux root.
std::size_t rootLength(const std::string& folder)
{
    if (isUnc(folder)) {
        const std::size_t host = folder.find_first_of("/\\", 2);
        const std::size_t share =
            host == std::string::npos ? host : folder.find_first_of("/\\", host + 1);
        return share == std::string::npos ? folder.size() : share + 1;
    }
    if (const std::size_t colon = driveColon(folder); colon != std::string::npos)
        return std::min(colon + 2, folder.size());
    return !folder.empty() && folder[0] == '/' ? 1 : 0;
}

// A relative folder whose last step is a ".." it could not take.
bool endsInUnresolvedStep(const std::string& folder)
{
    const std::size_t n = folder.size();
    return n >= 3 && folder.compare(n - 3, 2, "..") == 0 && (n == 3 || isSep(folder[n - 4]));
}

// One level up from a folder ending in a separator, never above its root.
void climb(std::string& folder, std::size_t root)
{
    const std::size_t previous = folder.find_last_of("/\\", folder.size() - 2);
    folder.resize(previous == std::string::npos || previous + 1 < root ? root : previous + 1);
}

// Appends a relative name to a folder ending in a separator, with "." and
// ".." steps taken: "sub\..\x.txt" below "C:\a\" is "C:\a\x.txt".
std::string withDotsResolved(std::string folder, const std::string& name)
{
    const char sep = folder.back();
    const std::size_t root = rootLength(folder);
    for (std::size_t at = 0; at <= name.size();) {
        const std::size_t end = std::min(name.find_first_of("/\\", at), name.size());
        const std::string part = name.substr(at, end - at);
        const bool last = end == name.size();
        if (part == "..") {
            if (folder.size() > root && !endsInUnresolvedStep(folder))
                climb(folder, root);
            else if (root == 0)
                folder += part + sep; // a relative folder keeps the steps it cannot take
        } else if (!part.empty() && part != ".") {
            folder += part;
            if (!last)
                folder += sep;
        }
        at = end + 1;
    }
    return folder;
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
    if (isUnc(path)) {
        const std::size_t host = path.find_first_of("/\\", 2);
        const std::size_t share =
            host == std::string::npos ? host : path.find_first_of("/\\", host + 1);
        return withoutTrailingSeps(path.substr(0, share));
    }
    if (const std::size_t colon = driveColon(path); colon != std::string::npos)
        return path.substr(0, colon + 1);
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
    // A typed "D:\x" or "\\server\share" names its own place.
    if (isUnc(name) || driveColon(name) != std::string::npos)
        return name;
    // A folder without separators takes those of the name it is combined with.
    const bool plain = lastSep(folder) == std::string::npos && lastSep(name) != std::string::npos;
    std::string base = plain ? folder + sepOf(name) : AddBackslash(folder);
    std::size_t start = 0;
    while (start < name.size() && isSep(name[start]))
        ++start;
    // "\tmp" below "C:\home\" is "C:\tmp", as on any drive; Linux and
    // resource paths keep the name below the folder.
    if (start == 1 && name[0] == '\\' && driveColon(base) != std::string::npos)
        base.resize(rootLength(base));
    return withDotsResolved(base, name.substr(start));
}

std::string DesktopText::TypedPath(const std::string& typed)
{
    const QByteArray home = QFile::encodeName(QDir::homePath());
    return TypedPathToLocation(typed, std::string_view(home.constData(), home.size()))
        .value_or(typed);
}

} // namespace fw::desktop
