#pragma once

#include <avahi-client/lookup.h>

#include <QByteArray>
#include <QObject>
#include <QString>

#include <vector>

class AvahiConnection;

// A service found on the network: its name, and the IPv4 address and port
// it answers on.
struct FoundService {
    QString name;
    QString address;
    int port = 0;
    bool operator==(const FoundService&) const = default;
};

// The services of one type on the networks around, as Avahi finds them, kept
// up to date while the browser lives: a service that comes is resolved to
// its address and added, one that goes is removed.
class ServiceBrowser : public QObject {
    Q_OBJECT

public:
    ServiceBrowser(AvahiConnection& connection, const char* type, QObject* parent = nullptr);
    ~ServiceBrowser() override;

    // In the order they were resolved.
    std::vector<FoundService> Services() const;
    // Why nothing can be found, in one line; empty while browsing.
    QString Problem() const;

Q_SIGNALS:
    // A service came or went, or browsing started or stopped.
    void changed();

private:
    // A service seen on one interface, resolved or still being resolved.
    struct Entry {
        AvahiIfIndex interface;
        QByteArray name;
        QByteArray domain;
        AvahiServiceResolver* resolver = nullptr;  // until resolved
        FoundService found;
    };

    static void Browsed(AvahiServiceBrowser* browser, AvahiIfIndex interface,
                        AvahiProtocol protocol, AvahiBrowserEvent event, const char* name,
                        const char* type, const char* domain, AvahiLookupResultFlags flags,
                        void* self);
    static void Resolved(AvahiServiceResolver* resolver, AvahiIfIndex interface,
                         AvahiProtocol protocol, AvahiResolverEvent event, const char* name,
                         const char* type, const char* domain, const char* host,
                         const AvahiAddress* address, uint16_t port, AvahiStringList* text,
                         AvahiLookupResultFlags flags, void* self);
    // Browses or stops as the connection allows.
    void Follow();
    void Stop();
    std::vector<Entry>::iterator Find(AvahiIfIndex interface, const char* name, const char* domain);
    void Forget(std::vector<Entry>::iterator entry);

    AvahiConnection& connection_;
    const QByteArray type_;
    AvahiServiceBrowser* browser_ = nullptr;
    std::vector<Entry> entries_;
    QString refusal_;  // Avahi's reason for not browsing
};
