#include "desktop/DesktopNetwork.h"

#include "desktop/HostDiscovery.h"
#include "desktop/SmbUrls.h"

#include <QString>
#include <QStringList>
#include <algorithm>
#include <libsmbclient.h>

namespace fw::desktop {

namespace {

std::string settingName(const char* value)
{
    return std::string(DesktopNetwork::SettingsKey) + '\\' + value;
}

QString folded(const std::string& name)
{
    return QString::fromStdString(name).toCaseFolded();
}

// Names sorted and each once, both case-blind, as host and workgroup names are.
StringList uniqueSorted(std::vector<std::string> names)
{
    std::stable_sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return folded(a) < folded(b);
    });
    StringList result;
    QString last;
    for (const std::string& name : names) {
        if (name.empty() || (result.Count() > 0 && folded(name) == last))
            continue;
        last = folded(name);
        result.Add(name);
    }
    return result;
}

std::vector<std::string> splitList(const std::string& text)
{
    std::vector<std::string> items;
    for (const QString& item : QString::fromStdString(text).split(u';', Qt::SkipEmptyParts)) {
        const QString trimmed = item.trimmed();
        if (!trimmed.isEmpty())
            items.push_back(trimmed.toStdString());
    }
    return items;
}

// "X:" or "X:\" with a letter from C to Z, upper-cased as "X:"; empty otherwise.
std::string driveOf(const std::string& local)
{
    if (local.size() < 2 || local.size() > 3 || local[1] != ':' ||
        (local.size() == 3 && local[2] != '\\'))
        return {};
    const char letter = char(std::toupper(static_cast<unsigned char>(local[0])));
    return letter >= 'C' && letter <= 'Z' ? std::string{letter, ':'} : std::string();
}

} // namespace

DesktopNetwork::DesktopNetwork(ClientSource client, std::shared_ptr<NetworkDrives> drives,
                               std::shared_ptr<CoreDevRegistry> registry, Volumes volumes,
                               HostFinder finder)
    : m_client(std::move(client)), m_drives(std::move(drives)), m_registry(std::move(registry)),
      m_volumes(std::move(volumes)), m_finder(std::move(finder))
{
    if (!m_finder)
        m_finder = [] { return DiscoverSmbHosts(); };
}

std::string DesktopNetwork::ConfiguredWorkgroup()
{
    // smb.conf is read once: its workgroup does not change under a running program.
    static const std::string workgroup = [] {
        std::string name;
        if (SMBCCTX* context = smbc_new_context()) {
            smbc_setDebug(context, 0);
            if (smbc_init_context(context)) {
                if (const char* configured = smbc_getWorkgroup(context))
                    name = configured;
            }
            smbc_free_context(context, 1);
        }
        return name.empty() ? std::string("WORKGROUP") : name;
    }();
    return workgroup;
}

StringList DesktopNetwork::Domains()
{
    // The browse service is off on most networks now: the configured
    // workgroup keeps the list from being empty.
    std::vector<std::string> domains =
        client() ? client()->Workgroups() : std::vector<std::string>();
    domains.push_back(ConfiguredWorkgroup());
    return uniqueSorted(std::move(domains));
}

StringList DesktopNetwork::Hosts(const std::string& domain)
{
    std::vector<std::string> hosts =
        client() ? client()->Servers(domain) : std::vector<std::string>();
    if (folded(domain) == folded(ConfiguredWorkgroup())) {
        for (auto&& found : m_finder())
            hosts.push_back(std::move(found));
        for (const char* value : {"Hosts", "KnownHosts"}) {
            for (auto&& stored : storedHosts(value))
                hosts.push_back(std::move(stored));
        }
    }
    return uniqueSorted(std::move(hosts));
}

ShareList DesktopNetwork::Shares(const std::string& host)
{
    ShareList shares;
    const auto url = UncToSmbUrl("\\\\" + host + "\\");
    const auto listed = url && client() ? client()->ListShares(*url) : std::nullopt;
    if (!listed)
        return shares;
    for (ShareInfo share : listed->items()) {
        if (share.Type != ShareInfo::Disk)
            continue;
        if (share.Remarks.Count() == 0)
            share.Remarks.Add(share.Name);
        else if (share.Remarks.Item(1).empty())
            share.Remarks.SetItem(1, share.Name);
        shares.Add(std::move(share));
    }
    shares.Sort(true);
    return shares;
}

std::string DesktopNetwork::Connect(const std::string& remote, const std::string& local,
                                    const std::string&, const std::string&, bool persist, bool& ok)
{
    ok = false;
    const bool isUrl = QString::fromStdString(remote).startsWith("smb://", Qt::CaseInsensitive);
    const std::string unc = isUrl ? SmbUrlToUnc(remote).value_or("") : remote;
    const auto parts = SplitUnc(unc);
    if (!parts || parts->share.empty())
        return "Der Netzwerkpfad \"" + remote + "\" nennt keine Freigabe (\\\\Server\\Freigabe).";
    const std::string drive = driveOf(local);
    if (drive.empty())
        return "\"" + local + "\" ist kein Laufwerksbuchstabe von C: bis Z:.";
    if ((m_volumes.typeOf && m_volumes.typeOf(drive) != 0) || !m_drives->UncOf(drive).empty())
        return "Das Laufwerk " + drive + " ist bereits belegt.";

    // The letter may stand for a folder below the share: that folder must be there.
    const std::string root = MappableUnc(unc);
    const auto url = UncToSmbUrl(root + '\\');
    const auto answer = url && client() ? client()->Stat(*url) : std::nullopt;
    if (!answer || !answer->folder) {
        const std::string why = answer || !client() ? std::string() : client()->LastError();
        return (parts->path.empty() ? "Die Freigabe " : "Der Ordner ") + root + " antwortet nicht" +
               (why.empty() ? "." : ": " + why);
    }
    if (!m_drives->Map(drive, root, persist))
        return "Die Zuordnung von " + drive + " konnte nicht gespeichert werden.";
    rememberHost(parts->port ? parts->host + ':' + std::to_string(parts->port) : parts->host);
    ok = true;
    return {};
}

bool DesktopNetwork::Disconnect(const std::string& drive)
{
    return m_drives->Unmap(drive);
}

StringList DesktopNetwork::MappedDrives()
{
    StringList drives;
    for (const auto& [letter, unc] : m_drives->All())
        drives.Add(std::string{letter, ':'});
    return drives;
}

std::string DesktopNetwork::UncOfDrive(const std::string& drive)
{
    const std::string mapped = m_drives->UncOf(drive);
    if (!mapped.empty() || !m_volumes.uncOf)
        return mapped;
    return m_volumes.uncOf(drive);
}

void DesktopNetwork::Detach()
{
    m_client = nullptr;
    m_volumes = {};
}

SmbClient* DesktopNetwork::client()
{
    return m_client ? &m_client() : nullptr;
}

std::vector<std::string> DesktopNetwork::storedHosts(const char* value) const
{
    if (!m_registry)
        return {};
    return splitList(m_registry->Strings().ReadString(HiveCurrentUser, settingName(value), "", 0));
}

void DesktopNetwork::rememberHost(const std::string& host)
{
    if (!m_registry)
        return;
    std::vector<std::string> known = storedHosts("KnownHosts");
    const bool present = std::any_of(known.begin(), known.end(), [&](const std::string& name) {
        return folded(name) == folded(host);
    });
    if (present)
        return;
    known.push_back(host);
    std::string text;
    for (const std::string& name : known)
        text += (text.empty() ? "" : ";") + name;
    m_registry->Writer().WriteString(HiveCurrentUser, settingName("KnownHosts"), text);
}

} // namespace fw::desktop
