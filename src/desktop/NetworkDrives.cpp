#include "desktop/NetworkDrives.h"

#include "desktop/SmbUrls.h"

#include <algorithm>
#include <cctype>

namespace fw::desktop {

namespace {

// "X", "X:" or "X:\" in either case; 0 for anything else or a letter outside C..Z.
char letterOf(const std::string& drive)
{
    if (drive.empty() || drive.size() > 3)
        return 0;
    if (drive.size() >= 2 && drive[1] != ':')
        return 0;
    if (drive.size() == 3 && drive[2] != '\\')
        return 0;
    const char letter = char(std::toupper(static_cast<unsigned char>(drive[0])));
    return letter >= 'C' && letter <= 'Z' ? letter : 0;
}

} // namespace

std::string MappableUnc(const std::string& unc)
{
    const auto parts = SplitUnc(unc);
    if (!parts || parts->host.empty() || parts->share.empty())
        return {};
    std::string root = "\\\\" + parts->host;
    if (parts->port != 0)
        root += ':' + std::to_string(parts->port);
    root += '\\' + parts->share;
    // Empty names (doubled or trailing "\") name no folder of their own.
    std::size_t from = 0;
    while (from < parts->path.size()) {
        const std::size_t end = std::min(parts->path.find('\\', from), parts->path.size());
        if (end > from)
            root += '\\' + parts->path.substr(from, end - from);
        from = end + 1;
    }
    return root;
}

namespace {

std::string valueName(char letter)
{
    return std::string(NetworkDrives::StoreKey) + '\\' + letter;
}

} // namespace

NetworkDrives::NetworkDrives(std::shared_ptr<CoreDevRegistry> registry)
    : m_registry(std::move(registry))
{
}

bool NetworkDrives::Map(const std::string& drive, const std::string& unc, bool persist)
{
    const char letter = letterOf(drive);
    const std::string root = MappableUnc(unc);
    if (!letter || root.empty())
        return false;
    All(); // the persisted ones must be known before one is replaced
    if (persist && m_registry) {
        if (!m_registry->Writer().WriteString(HiveCurrentUser, valueName(letter), root))
            return false;
        m_persisted[letter] = root;
        m_session.erase(letter);
        return true;
    }
    // A session mapping replaces a persisted one of the same letter for good.
    if (m_persisted.count(letter))
        Unmap(drive);
    m_session[letter] = root;
    return true;
}

bool NetworkDrives::Unmap(const std::string& drive)
{
    const char letter = letterOf(drive);
    if (!letter)
        return false;
    All();
    bool removed = m_session.erase(letter) > 0;
    if (m_persisted.count(letter)) {
        // An empty value reads as no mapping: one write, no key removal needed.
        if (m_registry && !m_registry->Writer().WriteString(HiveCurrentUser, valueName(letter), ""))
            return removed;
        m_persisted.erase(letter);
        removed = true;
    }
    return removed;
}

std::string NetworkDrives::UncOf(const std::string& drive) const
{
    const char letter = letterOf(drive);
    const auto all = All();
    const auto found = all.find(letter);
    return found == all.end() ? std::string() : found->second;
}

std::map<char, std::string> NetworkDrives::All() const
{
    if (!m_loaded && m_registry) {
        m_loaded = true;
        RegistryStrings& strings = m_registry->Strings();
        for (char letter = 'C'; letter <= 'Z'; ++letter) {
            // Whatever is no share root (garbage, an empty value) is no mapping.
            const std::string root =
                MappableUnc(strings.ReadString(HiveCurrentUser, valueName(letter), "", 0));
            if (!root.empty())
                m_persisted[letter] = root;
        }
    }
    std::map<char, std::string> all = m_persisted;
    for (const auto& [letter, unc] : m_session)
        all[letter] = unc;
    return all;
}

std::string NetworkDrives::Resolve(const std::string& location) const
{
    if (location.size() < 2 || location[1] != ':' || (location.size() > 2 && location[2] != '\\'))
        return location;
    const std::string unc = UncOf(location.substr(0, 2));
    if (unc.empty())
        return location;
    return location.size() == 2 ? unc + '\\' : unc + location.substr(2);
}

} // namespace fw::desktop
