#include "ServiceAnnouncement.h"

#include "AvahiConnection.h"

#include <avahi-common/alternative.h>
#include <avahi-common/error.h>
#include <avahi-common/malloc.h>

namespace {

// Enough for the names of several copies of the application on one network.
constexpr int kMostRenames = 16;

}  // namespace

ServiceAnnouncement::ServiceAnnouncement(AvahiConnection& connection, const char* type,
                                         QObject* parent)
    : QObject(parent), connection_(connection), type_(type)
{
    connect(&connection_, &AvahiConnection::changed, this, &ServiceAnnouncement::Follow);
}

ServiceAnnouncement::~ServiceAnnouncement()
{
    FreeGroup();
}

void ServiceAnnouncement::Announce(const QString& name, int port, int interfaceIndex)
{
    const Wanted wanted{name.toUtf8(), port, interfaceIndex};
    if (wanted_ == wanted)
        return;
    FreeGroup();
    wanted_ = wanted;
    refusal_.clear();
    connection_.Open();
    Follow();
}

void ServiceAnnouncement::Withdraw()
{
    if (!wanted_)
        return;
    FreeGroup();
    wanted_.reset();
    refusal_.clear();
    Q_EMIT changed();
}

QString ServiceAnnouncement::Problem() const
{
    if (!wanted_)
        return QString();
    if (!connection_.Problem().isEmpty())
        return connection_.Problem();
    if (refusal_.isEmpty())
        return QString();
    return tr("\u201c%1\u201d is not announced on the network: Avahi says \u201c%2\u201d.")
        .arg(QString::fromUtf8(wanted_->name), refusal_);
}

void ServiceAnnouncement::Follow()
{
    if (connection_.Running() == nullptr)
        FreeGroup();
    else if (wanted_ && group_ == nullptr)
        Publish();
    Q_EMIT changed();
}

void ServiceAnnouncement::Publish()
{
    AvahiClient* client = connection_.Running();
    group_ = avahi_entry_group_new(client, &ServiceAnnouncement::GroupChanged, this);
    Refuse(group_ == nullptr ? avahi_client_errno(client) : AddAndCommit());
}

int ServiceAnnouncement::AddAndCommit()
{
    for (int renames = 0;; ++renames) {
        const int interface =
            wanted_->interfaceIndex > 0 ? wanted_->interfaceIndex : AVAHI_IF_UNSPEC;
        const int error = avahi_entry_group_add_service(
            group_, interface, AVAHI_PROTO_UNSPEC, AvahiPublishFlags(0), wanted_->name.constData(),
            type_.constData(), nullptr, nullptr, static_cast<std::uint16_t>(wanted_->port),
            static_cast<const char*>(nullptr));
        if (error != AVAHI_ERR_COLLISION || renames == kMostRenames)
            return error != AVAHI_OK ? error : avahi_entry_group_commit(group_);
        // Another service of this computer holds the name.
        Rename();
    }
}

void ServiceAnnouncement::Rename()
{
    char* alternative = avahi_alternative_service_name(wanted_->name.constData());
    wanted_->name = alternative;
    avahi_free(alternative);
}

void ServiceAnnouncement::Refuse(int error)
{
    refusal_ = error == AVAHI_OK ? QString() : QString::fromUtf8(avahi_strerror(error));
}

void ServiceAnnouncement::GroupChanged(AvahiEntryGroup* group, AvahiEntryGroupState state,
                                       void* self)
{
    auto& announcement = *static_cast<ServiceAnnouncement*>(self);
    if (state == AVAHI_ENTRY_GROUP_COLLISION) {
        // A service elsewhere on the network holds the name.
        announcement.Rename();
        avahi_entry_group_reset(group);
        announcement.Refuse(announcement.AddAndCommit());
    } else if (state == AVAHI_ENTRY_GROUP_FAILURE) {
        announcement.Refuse(avahi_client_errno(avahi_entry_group_get_client(group)));
    }
    Q_EMIT announcement.changed();
}

void ServiceAnnouncement::FreeGroup()
{
    if (group_ == nullptr)
        return;
    avahi_entry_group_free(group_);
    group_ = nullptr;
}
