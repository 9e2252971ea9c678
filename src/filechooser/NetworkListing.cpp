// The network places of a listing: domains, hosts and shares as the host's
// network service lists them, and the place combo's items of UNC paths.
#include "filechooser/FolderListerParts.h"
#include "filechooser/LocationModel.h"
#include "forms/ImageCombo.h"
#include "forms/ListView.h"
#include "forms/Resume.h"
#include "host/mdl_CoreDevWrapper.h"

#include <functional>

namespace fw::lister {

namespace {

// A network service that fails or is missing lists nothing and counts 0.
template <typename List>
List NetworkList(NetworkService* network, const std::function<List(NetworkService&)>& read)
{
    List names;
    if (network)
        Resume([&] { names = read(*network); });
    return names;
}

} // namespace

void Listing::AddTreeItem(const std::string& key, const std::string& text, const std::string& image,
                          int indentation)
{
    Resume([&] { m_c.folders.ComboItems().Add(0, Q(key), Q(text), Q(image), {}, indentation); });
}

void Listing::SelectCurrentInTree(const std::string& fallbackKey)
{
    Resume([&] {
        ComboItem* item = m_c.folders.ComboItems().Find(Q(Upper(m_places.CurrentPath)));
        if (!item && !fallbackKey.empty())
            item = m_c.folders.ComboItems().Find(Q(fallbackKey));
        if (item)
            m_c.folders.SetSelectedItem(item);
        m_c.folders.Refresh();
    });
}

void Listing::UncTree()
{
    const std::string& path = m_places.CurrentPath;
    const auto hostEnd = path.find('\\', 2);
    const std::string host = path.substr(2, hostEnd == std::string::npos ? hostEnd : hostEnd - 2);
    const std::string tail =
        hostEnd == std::string::npos ? std::string() : path.substr(hostEnd + 1);
    if (m_places.Domain.empty()) {
        Resume([&] {
            const std::shared_ptr<NetworkService> network = GetCoreDevFiles().Network();
            if (network)
                m_places.Domain = network->HomeDomain();
        });
    }
    if (!m_newPlace)
        return;
    const std::string hostKey = kNethood + m_places.Domain + "\\" + host + "\\";
    AddTreeItem(kNethood + m_places.Domain + "\\", m_places.Domain, "NETHOOD", 2);
    AddTreeItem(hostKey, host, "WORKSTATION", 3);
    std::string soFar = "\\\\" + host + "\\";
    int position = 0;
    std::size_t from = 0;
    while (from < tail.size()) {
        auto end = tail.find('\\', from);
        if (end == std::string::npos)
            end = tail.size();
        const std::string component = tail.substr(from, end - from);
        from = end + 1;
        if (component.empty())
            continue;
        soFar += component + "\\";
        const int indentation = ++position + 3;
        Resume([&] {
            m_c.folders.ComboItems().Add(0, Q(Upper(soFar)), Q(component), QStringLiteral("OPEN"),
                                         QStringLiteral("OPEN"), indentation);
        });
    }
    // A bare "\\\\host\\" has no folder row of its own: its host row stands for it.
    SelectCurrentInTree(tail.empty() ? hostKey : std::string());
}

void Listing::Network()
{
    m_places.UpPath = kDesktop;
    const std::string rest = RestOfPlace(m_places.CurrentPath);
    std::shared_ptr<NetworkService> network;
    Resume([&] { network = GetCoreDevFiles().Network(); });
    if (rest.empty()) {
        Domains(network.get());
    } else if (rest.find('\\') == std::string::npos) {
        Hosts(network.get(), rest);
    } else {
        const auto slash = rest.find('\\');
        Shares(network.get(), rest.substr(0, slash), rest.substr(slash + 1));
    }
}

void Listing::Domains(NetworkService* network)
{
    const StringList domains =
        NetworkList<StringList>(network, [](NetworkService& n) { return n.Domains(); });
    for (const std::string& name : domains.items())
        Resume([&] { AddPlaceRow(m_c.files, kNethood + name + "\\", name, "NETHOOD"); });
    SetCount(m_c.fileCount,
             Count(domains.Count()) + m_lister.Text(" Domäne/n gefunden", " domain/s found"));
}

void Listing::Hosts(NetworkService* network, const std::string& domain)
{
    m_places.UpPath = kNethood;
    if (m_newPlace) {
        AddTreeItem(kNethood + domain + "\\", domain, "NETHOOD", 2);
        SelectCurrentInTree();
    }
    m_places.Domain = domain;
    const StringList hosts =
        NetworkList<StringList>(network, [&](NetworkService& n) { return n.Hosts(domain); });
    for (const std::string& host : hosts.items())
        Resume([&] {
            AddPlaceRow(m_c.files, kNethood + domain + "\\" + host + "\\", host, "WORKSTATION");
        });
    SetCount(m_c.fileCount, Count(hosts.Count()) +
                                m_lister.Text(" Rechner in der Domäne ", " PCs in the domain ") +
                                domain);
}

void Listing::Shares(NetworkService* network, const std::string& domain, const std::string& host)
{
    m_places.UpPath = kNethood + domain + "\\";
    if (m_newPlace) {
        AddTreeItem(kNethood + domain + "\\", domain, "NETHOOD", 2);
        AddTreeItem(kNethood + domain + "\\" + host + "\\", host, "WORKSTATION", 3);
        SelectCurrentInTree();
    }
    m_places.Domain = domain;
    const ShareList shares =
        NetworkList<ShareList>(network, [&](NetworkService& n) { return n.Shares(host); });
    int rows = 0;
    int hidden = 0;
    // Visible shares stand above the hidden ones ("C$"), which show ghosted.
    for (const bool hiddenPass : {false, true}) {
        for (const ShareInfo& share : shares.items()) {
            const std::string& name = share.Name;
            if ((!name.empty() && name.back() == '$') != hiddenPass)
                continue;
            Resume([&] {
                ListItem& row =
                    AddPlaceRow(m_c.files, "\\\\" + host + "\\" + name + "\\", name, "CLOSED");
                if (name.find('$') != std::string::npos)
                    row.SetGhosted(true);
            });
            ++rows;
            hidden += hiddenPass ? 1 : 0;
        }
    }
    // "worksation" is the product's own spelling of the line.
    const std::string line =
        hidden == 0 ? Count(rows) +
                          m_lister.Text(" Freigaben auf Rechner ", " Shares on worksation ") + host
                    : m_lister.Text(Count(rows) + " Freigaben (davon " + Count(hidden) +
                                        " versteckte Freigaben) auf Rechner " + host,
                                    Count(rows) + " Shares (" + Count(hidden) +
                                        " hidden ones) on workstation " + host);
    SetCount(m_c.fileCount, line);
}

} // namespace fw::lister
