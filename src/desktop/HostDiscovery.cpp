#include "desktop/HostDiscovery.h"

#include <avahi-client/client.h>
#include <avahi-client/lookup.h>
#include <avahi-common/simple-watch.h>
#include <avahi-common/timeval.h>

#include <algorithm>
#include <memory>
#include <set>

namespace fw::desktop {

namespace {

struct Browse {
    std::set<std::string> hosts;
    int resolving = 0;
    bool allForNow = false;
    bool failed = false;

    bool done() const { return failed || (allForNow && resolving == 0); }
};

void onResolved(AvahiServiceResolver* resolver, AvahiIfIndex, AvahiProtocol,
                AvahiResolverEvent event, const char*, const char*, const char*,
                const char* hostName, const AvahiAddress*, uint16_t port, AvahiStringList*,
                AvahiLookupResultFlags, void* data)
{
    auto* browse = static_cast<Browse*>(data);
    if (event == AVAHI_RESOLVER_FOUND && hostName && *hostName) {
        // The ".local" name stays: the system resolver (nss-mdns) and
        // libsmbclient reach it, and it survives a change of address.
        std::string host = hostName;
        if (port != 0 && port != 445)
            host += ':' + std::to_string(port);
        browse->hosts.insert(host);
    }
    avahi_service_resolver_free(resolver);
    --browse->resolving;
}

void onBrowsed(AvahiServiceBrowser* browser, AvahiIfIndex interface, AvahiProtocol protocol,
               AvahiBrowserEvent event, const char* name, const char* type, const char* domain,
               AvahiLookupResultFlags, void* data)
{
    auto* browse = static_cast<Browse*>(data);
    switch (event) {
    case AVAHI_BROWSER_NEW:
        if (avahi_service_resolver_new(avahi_service_browser_get_client(browser), interface,
                                       protocol, name, type, domain, AVAHI_PROTO_UNSPEC,
                                       AvahiLookupFlags(0), onResolved, browse))
            ++browse->resolving;
        break;
    case AVAHI_BROWSER_ALL_FOR_NOW:
        browse->allForNow = true;
        break;
    case AVAHI_BROWSER_FAILURE:
        browse->failed = true;
        break;
    default:
        break;
    }
}

struct PollDeleter {
    void operator()(AvahiSimplePoll* poll) const { avahi_simple_poll_free(poll); }
};
struct ClientDeleter {
    void operator()(AvahiClient* client) const { avahi_client_free(client); }
};

} // namespace

std::vector<std::string> DiscoverSmbHosts(int timeoutMs)
{
    Browse browse;
    std::unique_ptr<AvahiSimplePoll, PollDeleter> poll(avahi_simple_poll_new());
    if (!poll)
        return {};
    int error = 0;
    // Without AVAHI_CLIENT_NO_FAIL the client gives up at once where no
    // daemon (or no system bus) is there, instead of waiting for one.
    std::unique_ptr<AvahiClient, ClientDeleter> client(avahi_client_new(
        avahi_simple_poll_get(poll.get()), AvahiClientFlags(0), nullptr, nullptr, &error));
    if (!client)
        return {};
    if (!avahi_service_browser_new(client.get(), AVAHI_IF_UNSPEC, AVAHI_PROTO_UNSPEC, "_smb._tcp",
                                   nullptr, AvahiLookupFlags(0), onBrowsed, &browse))
        return {};

    struct timeval deadline {};
    avahi_elapse_time(&deadline, unsigned(std::max(timeoutMs, 0)), 0);
    while (!browse.done()) {
        const AvahiUsec left = -avahi_age(&deadline);
        if (left <= 0)
            break;
        const int sliceMs = int(std::min<AvahiUsec>(left / 1000 + 1, 100));
        if (avahi_simple_poll_iterate(poll.get(), sliceMs) != 0)
            break;
    }
    // The client frees its browser and any resolver still running.
    client.reset();
    return {browse.hosts.begin(), browse.hosts.end()};
}

} // namespace fw::desktop
