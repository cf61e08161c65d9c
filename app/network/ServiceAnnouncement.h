#pragma once

#include <avahi-client/publish.h>

#include <QByteArray>
#include <QObject>
#include <QString>

#include <optional>

class AvahiConnection;

// One service announced on the network through Avahi while it is wanted: a
// port of this computer under a type ("_osc._udp") and a name, on every
// interface or on one. When the daemon comes back after an absence the
// service is announced again; a name another service holds gives way to
// Avahi's alternative ("NAME #2").
class ServiceAnnouncement : public QObject {
    Q_OBJECT

public:
    ServiceAnnouncement(AvahiConnection& connection, const char* type, QObject* parent = nullptr);
    // Withdraws the service.
    ~ServiceAnnouncement() override;

    // Announces port under name on the interface of index, 0 for every one,
    // instead of what was announced before.
    void Announce(const QString& name, int port, int interfaceIndex);
    void Withdraw();
    // Why the wanted service is not announced, in one line; empty otherwise.
    QString Problem() const;

Q_SIGNALS:
    // Announced, withdrawn, or a problem came or went.
    void changed();

private:
    struct Wanted {
        QByteArray name;
        int port;
        int interfaceIndex;
        bool operator==(const Wanted&) const = default;
    };

    static void GroupChanged(AvahiEntryGroup* group, AvahiEntryGroupState state, void* self);
    // Publishes or frees the group as the connection and the wish say.
    void Follow();
    void Publish();
    // Adds the service to the group under its name, or the next free one, and commits it.
    int AddAndCommit();
    // Takes the name Avahi offers in place of one already held.
    void Rename();
    // Keeps Avahi's reason for error, or none for AVAHI_OK.
    void Refuse(int error);
    void FreeGroup();

    AvahiConnection& connection_;
    const QByteArray type_;
    std::optional<Wanted> wanted_;
    AvahiEntryGroup* group_ = nullptr;
    QString refusal_;  // Avahi's reason for not publishing
};
