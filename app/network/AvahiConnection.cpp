#include "AvahiConnection.h"

#include <avahi-common/error.h>

namespace {

constexpr int kRetryMilliseconds = 5000;

QString Unavailable(int error)
{
    return AvahiConnection::tr(
               "Network announcements unavailable: Avahi says \u201c%1\u201d; start avahi-daemon "
               "for phones to find this computer.")
        .arg(QString::fromUtf8(avahi_strerror(error)));
}

}  // namespace

AvahiConnection::AvahiConnection(QObject* parent) : QObject(parent)
{
    retry_.setSingleShot(true);
    retry_.setInterval(kRetryMilliseconds);
    connect(&retry_, &QTimer::timeout, this, &AvahiConnection::Open);
}

AvahiConnection::~AvahiConnection()
{
    if (client_ != nullptr)
        avahi_client_free(client_);
}

void AvahiConnection::Open()
{
    if (client_ != nullptr)
        return;
    int error = 0;
    // Without a daemon yet, the client waits for one instead of failing.
    AvahiClient* client = avahi_client_new(poll_.Poll(), AVAHI_CLIENT_NO_FAIL,
                                           &AvahiConnection::StateChanged, this, &error);
    if (client == nullptr) {
        problem_ = Unavailable(error);
        retry_.start();
        Q_EMIT changed();
        return;
    }
    client_ = client;
}

AvahiClient* AvahiConnection::Running() const
{
    return running_ ? client_ : nullptr;
}

void AvahiConnection::StateChanged(AvahiClient* client, AvahiClientState state, void* self)
{
    static_cast<AvahiConnection*>(self)->Take(client, state);
}

void AvahiConnection::Take(AvahiClient* client, AvahiClientState state)
{
    // The first call comes from inside avahi_client_new, before it returns the client.
    client_ = client;
    const bool running = state == AVAHI_CLIENT_S_RUNNING;
    const QString problem = state == AVAHI_CLIENT_CONNECTING ? Unavailable(AVAHI_ERR_NO_DAEMON)
                            : state == AVAHI_CLIENT_FAILURE
                                ? Unavailable(avahi_client_errno(client))
                                : QString();
    if (running != running_ || problem != problem_) {
        running_ = running;
        problem_ = problem;
        Q_EMIT changed();
    }
    // A failed client is of no more use; it goes once Avahi has left this callback.
    if (state == AVAHI_CLIENT_FAILURE)
        QMetaObject::invokeMethod(this, &AvahiConnection::Close, Qt::QueuedConnection);
}

void AvahiConnection::Close()
{
    if (client_ == nullptr || avahi_client_get_state(client_) != AVAHI_CLIENT_FAILURE)
        return;
    avahi_client_free(client_);
    client_ = nullptr;
    retry_.start();
}
