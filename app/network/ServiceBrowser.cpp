#include "ServiceBrowser.h"

#include "AvahiConnection.h"

#include <avahi-common/error.h>

#include <algorithm>

ServiceBrowser::ServiceBrowser(AvahiConnection& connection, const char* type, QObject* parent)
    : QObject(parent), connection_(connection), type_(type)
{
    connect(&connection_, &AvahiConnection::changed, this, &ServiceBrowser::Follow);
    connection_.Open();
    Follow();
}

ServiceBrowser::~ServiceBrowser()
{
    Stop();
}

std::vector<FoundService> ServiceBrowser::Services() const
{
    std::vector<FoundService> services;
    for (const Entry& entry : entries_) {
        if (entry.resolver == nullptr)
            services.push_back(entry.found);
    }
    return services;
}

QString ServiceBrowser::Problem() const
{
    if (!connection_.Problem().isEmpty())
        return connection_.Problem();
    if (refusal_.isEmpty())
        return QString();
    return tr("Nothing can be found on the network: Avahi says \u201c%1\u201d.").arg(refusal_);
}

void ServiceBrowser::Follow()
{
    AvahiClient* client = connection_.Running();
    if (client == nullptr) {
        Stop();
    } else if (browser_ == nullptr) {
        // Phones and OSC programs announce themselves over IPv4; one
        // address for each is what a user can pick from.
        browser_ =
            avahi_service_browser_new(client, AVAHI_IF_UNSPEC, AVAHI_PROTO_INET, type_.constData(),
                                      nullptr, AvahiLookupFlags(0), &ServiceBrowser::Browsed, this);
        refusal_ = browser_ != nullptr
                       ? QString()
                       : QString::fromUtf8(avahi_strerror(avahi_client_errno(client)));
    }
    Q_EMIT changed();
}

void ServiceBrowser::Stop()
{
    while (!entries_.empty())
        Forget(entries_.end() - 1);
    if (browser_ != nullptr)
        avahi_service_browser_free(browser_);
    browser_ = nullptr;
}

void ServiceBrowser::Browsed(AvahiServiceBrowser* browser, AvahiIfIndex interface,
                             AvahiProtocol protocol, AvahiBrowserEvent event, const char* name,
                             const char* type, const char* domain, AvahiLookupResultFlags,
                             void* self)
{
    auto& found = *static_cast<ServiceBrowser*>(self);
    if (event == AVAHI_BROWSER_NEW && found.Find(interface, name, domain) == found.entries_.end()) {
        AvahiServiceResolver* resolver = avahi_service_resolver_new(
            avahi_service_browser_get_client(browser), interface, protocol, name, type, domain,
            AVAHI_PROTO_INET, AvahiLookupFlags(0), &ServiceBrowser::Resolved, self);
        if (resolver != nullptr)
            found.entries_.push_back({interface, name, domain, resolver, {}});
    } else if (event == AVAHI_BROWSER_REMOVE) {
        const auto entry = found.Find(interface, name, domain);
        if (entry != found.entries_.end()) {
            found.Forget(entry);
            Q_EMIT found.changed();
        }
    } else if (event == AVAHI_BROWSER_FAILURE) {
        found.refusal_ = QString::fromUtf8(
            avahi_strerror(avahi_client_errno(avahi_service_browser_get_client(browser))));
        // The browser goes once Avahi has left this callback.
        QMetaObject::invokeMethod(
            &found,
            [&found] {
                found.Stop();
                Q_EMIT found.changed();
            },
            Qt::QueuedConnection);
    }
}

void ServiceBrowser::Resolved(AvahiServiceResolver* resolver, AvahiIfIndex interface, AvahiProtocol,
                              AvahiResolverEvent event, const char* name, const char*,
                              const char* domain, const char*, const AvahiAddress* address,
                              uint16_t port, AvahiStringList*, AvahiLookupResultFlags, void* self)
{
    auto& found = *static_cast<ServiceBrowser*>(self);
    const auto entry = found.Find(interface, name, domain);
    if (entry == found.entries_.end() || entry->resolver != resolver)
        return;
    if (event != AVAHI_RESOLVER_FOUND) {
        // Gone before it could be reached: as if never seen.
        found.Forget(entry);
        return;
    }
    char text[AVAHI_ADDRESS_STR_MAX];
    avahi_address_snprint(text, sizeof text, address);
    entry->found = {QString::fromUtf8(name), QString::fromLatin1(text), port};
    avahi_service_resolver_free(resolver);
    entry->resolver = nullptr;
    Q_EMIT found.changed();
}

std::vector<ServiceBrowser::Entry>::iterator ServiceBrowser::Find(AvahiIfIndex interface,
                                                                  const char* name,
                                                                  const char* domain)
{
    return std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.interface == interface && entry.name == name && entry.domain == domain;
    });
}

void ServiceBrowser::Forget(std::vector<Entry>::iterator entry)
{
    if (entry->resolver != nullptr)
        avahi_service_resolver_free(entry->resolver);
    entries_.erase(entry);
}
