#include "desktop/SmbUrls.h"

#include "desktop/LocationPaths.h"
#include "desktop/PercentDecoding.h"

#include <charconv>
#include <vector>

namespace fw::desktop {

namespace {

std::vector<std::string_view> splitAt(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    std::size_t from = 0;
    while (true) {
        const auto at = text.find(separator, from);
        parts.push_back(text.substr(from, at == std::string_view::npos ? at : at - from));
        if (at == std::string_view::npos)
            return parts;
        from = at + 1;
    }
}

bool isValidHost(std::string_view host)
{
    if (host.empty())
        return false;
    for (const char c : host) {
        if (c == '\\' || c == '/' || c == ':' || c == '@' || static_cast<unsigned char>(c) < 0x21)
            return false;
    }
    return true;
}

// "host" or "host:port"; a port outside 1..65535 makes the whole text invalid.
bool splitHostPort(std::string_view text, std::string& host, int& port)
{
    port = 0;
    const auto colon = text.rfind(':');
    if (colon != std::string_view::npos) {
        const std::string_view digits = text.substr(colon + 1);
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), port);
        if (digits.empty() || error != std::errc() || end != digits.data() + digits.size() ||
            port < 1 || port > 65535)
            return false;
        text = text.substr(0, colon);
    }
    host = std::string(text);
    return isValidHost(host);
}

bool isKeptInUrl(unsigned char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("-._~!$&'()*+,=").find(static_cast<char>(c)) != std::string_view::npos;
}

std::string percentEncoded(std::string_view bytes)
{
    static constexpr char hex[] = "0123456789ABCDEF";
    std::string out;
    for (const char ch : bytes) {
        const auto c = static_cast<unsigned char>(ch);
        if (isKeptInUrl(c)) {
            out += ch;
        } else {
            out += '%';
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    return out;
}

std::string hostPort(const UncParts& parts)
{
    return parts.port == 0 ? parts.host : parts.host + ':' + std::to_string(parts.port);
}

} // namespace

std::string SmbUrlName(std::string_view bytes)
{
    return percentEncoded(bytes);
}

bool IsUnc(std::string_view location)
{
    return location.size() > 2 && location.starts_with("\\\\") && location[2] != '\\';
}

std::optional<UncParts> SplitUnc(std::string_view unc)
{
    if (!IsUnc(unc))
        return std::nullopt;
    const std::string_view rest = unc.substr(2);
    const auto hostEnd = rest.find('\\');
    UncParts parts;
    if (!splitHostPort(rest.substr(0, hostEnd), parts.host, parts.port))
        return std::nullopt;
    if (hostEnd == std::string_view::npos)
        return parts;
    const std::string_view below = rest.substr(hostEnd + 1);
    const auto shareEnd = below.find('\\');
    parts.share = std::string(below.substr(0, shareEnd));
    if (shareEnd != std::string_view::npos)
        parts.path = std::string(below.substr(shareEnd + 1));
    return parts;
}

std::optional<std::string> UncToSmbUrl(std::string_view unc)
{
    const std::optional<UncParts> parts = SplitUnc(unc);
    if (!parts)
        return std::nullopt;
    std::string url = "smb://" + hostPort(*parts) + '/';
    if (parts->share.empty())
        return url;
    url += percentEncoded(NameFromLocation(parts->share));
    if (unc.ends_with('\\') || !parts->path.empty())
        url += '/';
    if (parts->path.empty())
        return url;
    const std::vector<std::string_view> names = splitAt(parts->path, '\\');
    for (std::size_t i = 0; i < names.size(); ++i) {
        url += percentEncoded(NameFromLocation(names[i]));
        if (i + 1 < names.size())
            url += '/';
    }
    return url;
}

std::optional<std::string> SmbUrlToUnc(std::string_view url)
{
    constexpr std::string_view scheme = "smb://";
    if (url.size() < scheme.size())
        return std::nullopt;
    for (std::size_t i = 0; i < scheme.size(); ++i) {
        const char c = url[i];
        if ((c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c) != scheme[i])
            return std::nullopt;
    }
    std::string_view rest = url.substr(scheme.size());
    const auto authorityEnd = rest.find('/');
    std::string_view authority = rest.substr(0, authorityEnd);
    if (const auto at = authority.rfind('@'); at != std::string_view::npos)
        authority = authority.substr(at + 1);
    UncParts parts;
    if (!splitHostPort(authority, parts.host, parts.port))
        return std::nullopt;
    std::string unc = "\\\\" + hostPort(parts) + '\\';
    if (authorityEnd == std::string_view::npos)
        return unc;
    const std::vector<std::string_view> names = splitAt(rest.substr(authorityEnd + 1), '/');
    std::string below;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i].empty() && i + 1 < names.size())
            continue; // "smb://host//share" means what one "/" means
        below += NameToLocation(PercentDecoded(names[i]));
        if (i + 1 < names.size())
            below += '\\';
    }
    return unc + below;
}

} // namespace fw::desktop
