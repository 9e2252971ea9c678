// Text tools of the test host: plain, predictable rules, enough for dialogs to
// split words, pack pairs and take paths apart. Paths accept both "\" and "/".
#include "testing/TestHost.h"
#include "testing/TestHostParts.h"

#include <charconv>

namespace fw::testing {

namespace {

bool isSeparator(char c)
{
    return c == '\\' || c == '/';
}

std::size_t lastSeparator(const std::string& path)
{
    return path.find_last_of("\\/");
}

std::string withoutTrailingSeparators(std::string path)
{
    while (path.size() > 1 && isSeparator(path.back()) && path[path.size() - 2] != ':')
        path.pop_back();
    return path;
}

class Text : public fw::CoreDevText, fw::WordHelper, fw::PairHelper, fw::PathHelper {
  public:
    explicit Text(TestHost& host) : m_host(host) {}
    WordHelper& Words() override { return *this; }
    PairHelper& Pairs() override { return *this; }
    PathHelper& Paths() override { return *this; }

    // Words: a missing separator gives the whole text before it and nothing after
    // it; the flag is only recorded.
    std::string TextBefore(const std::string& text, const std::string& sep, bool flag) override
    {
        m_host.record("TextBefore", {text, sep, flag ? "1" : "0"});
        const auto pos = text.find(sep);
        return pos == std::string::npos ? text : text.substr(0, pos);
    }
    std::string TextBeforeLast(const std::string& text, const std::string& sep, bool flag) override
    {
        m_host.record("TextBeforeLast", {text, sep, flag ? "1" : "0"});
        const auto pos = text.rfind(sep);
        return pos == std::string::npos ? text : text.substr(0, pos);
    }
    std::string TextAfter(const std::string& text, const std::string& sep, bool flag) override
    {
        m_host.record("TextAfter", {text, sep, flag ? "1" : "0"});
        const auto pos = text.find(sep);
        return pos == std::string::npos ? std::string() : text.substr(pos + sep.size());
    }

    // Pairs: the first string's length, a colon, then both strings as they are.
    std::string Pack(const std::string& first, const std::string& second) override
    {
        m_host.record("Pack", {first, second});
        return std::to_string(first.size()) + ":" + first + second;
    }
    bool Unpack(const std::string& packed, std::string& first, std::string& second) override
    {
        m_host.record("Unpack", {packed});
        const auto colon = packed.find(':');
        std::size_t length = 0;
        if (colon == std::string::npos ||
            std::from_chars(packed.data(), packed.data() + colon, length).ptr !=
                packed.data() + colon ||
            colon == 0 || length > packed.size() - colon - 1)
            return false;
        first = packed.substr(colon + 1, length);
        second = packed.substr(colon + 1 + length);
        return true;
    }

    std::string AddBackslash(const std::string& path) override
    {
        m_host.record("AddBackslash", {path});
        return addSeparator(path);
    }
    // "C:", "DESKTOP:", "\\server\share" or "/"; empty for a relative path.
    std::string DrivePart(const std::string& path) override
    {
        m_host.record("DrivePart", {path});
        if (path.starts_with("\\\\")) {
            const auto host = path.find('\\', 2);
            if (host == std::string::npos)
                return path;
            return path.substr(0, path.find('\\', host + 1));
        }
        const auto colon = path.find(':');
        if (colon != std::string::npos && colon < path.find_first_of("\\/"))
            return path.substr(0, colon + 1);
        return path.starts_with("/") ? "/" : "";
    }
    std::string FolderPart(const std::string& path) override
    {
        m_host.record("FolderPart", {path});
        const auto pos = lastSeparator(path);
        return pos == std::string::npos ? std::string() : path.substr(0, pos + 1);
    }
    std::string ParentText(const std::string& path) override
    {
        m_host.record("ParentText", {path});
        return folderName(parentPath(path));
    }
    std::string FolderName(const std::string& path) override
    {
        m_host.record("FolderName", {path});
        return folderName(path);
    }
    // Without the dot; empty if the file name has none.
    std::string Extension(const std::string& path) override
    {
        m_host.record("Extension", {path});
        const std::string name = fileName(path);
        const auto dot = name.rfind('.');
        return dot == std::string::npos ? std::string() : name.substr(dot + 1);
    }
    std::string FileName(const std::string& path) override
    {
        m_host.record("FileName", {path});
        return fileName(path);
    }
    std::string Combine(const std::string& folder, const std::string& name) override
    {
        m_host.record("Combine", {folder, name});
        if (folder.empty())
            return name;
        const auto start = name.find_first_not_of("\\/");
        return addSeparator(folder) + (start == std::string::npos ? "" : name.substr(start));
    }
    // The folder above, without its trailing separator unless it is a root.
    std::string ParentPath(const std::string& path) override
    {
        m_host.record("ParentPath", {path});
        return parentPath(path);
    }
    // Not recorded: a list asks for every row it paints.
    std::string DisplayName(const std::string& name) override { return name; }
    std::string TypedPath(const std::string& typed) override
    {
        m_host.record("TypedPath", {typed});
        return typed;
    }
    bool Like(const std::string& text, const std::string& pattern) override
    {
        m_host.record("Like", {text, pattern});
        return MatchesWildcard(pattern, text);
    }

  private:
    static std::string addSeparator(const std::string& path)
    {
        if (path.empty() || isSeparator(path.back()))
            return path;
        return path + (path.starts_with("/") ? '/' : '\\');
    }
    static std::string fileName(const std::string& path)
    {
        const auto pos = lastSeparator(path);
        return pos == std::string::npos ? path : path.substr(pos + 1);
    }
    static std::string folderName(const std::string& path)
    {
        return fileName(withoutTrailingSeparators(path));
    }
    static std::string parentPath(const std::string& path)
    {
        const std::string trimmed = withoutTrailingSeparators(path);
        const auto pos = lastSeparator(trimmed);
        if (pos == std::string::npos || pos + 1 == trimmed.size())
            return {};
        return withoutTrailingSeparators(trimmed.substr(0, pos + 1));
    }

    TestHost& m_host;
};

} // namespace

std::shared_ptr<fw::CoreDevText> makeTextService(TestHost& host)
{
    return std::make_shared<Text>(host);
}

} // namespace fw::testing
