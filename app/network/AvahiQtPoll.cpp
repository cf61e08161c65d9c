#include "AvahiQtPoll.h"

#include <avahi-common/timeval.h>

#include <QSocketNotifier>
#include <QTimer>

#include <chrono>

// Avahi declares these two and leaves their making to the loop.
struct AvahiWatch : QObject {
    AvahiWatch(int fd, AvahiWatchCallback callback, void* userdata, QObject* parent)
        : QObject(parent),
          fd(fd),
          callback(callback),
          userdata(userdata),
          in(fd, QSocketNotifier::Read, this),
          out(fd, QSocketNotifier::Write, this)
    {
        connect(&in, &QSocketNotifier::activated, this, [this] { Tell(AVAHI_WATCH_IN); });
        connect(&out, &QSocketNotifier::activated, this, [this] { Tell(AVAHI_WATCH_OUT); });
    }

    void Want(AvahiWatchEvent events)
    {
        in.setEnabled((events & AVAHI_WATCH_IN) != 0);
        out.setEnabled((events & AVAHI_WATCH_OUT) != 0);
    }

    void Tell(AvahiWatchEvent event)
    {
        happened = event;
        // The callback may free this watch: it is deleted later, never under its own feet.
        callback(this, fd, event, userdata);
        happened = AvahiWatchEvent(0);
    }

    // Freed by Avahi: silent from now on, and gone once the loop comes back.
    void Free()
    {
        Want(AvahiWatchEvent(0));
        deleteLater();
    }

    const int fd;
    const AvahiWatchCallback callback;
    void* const userdata;
    // What Avahi asks about while its callback runs.
    AvahiWatchEvent happened = AvahiWatchEvent(0);
    QSocketNotifier in;
    QSocketNotifier out;
};

struct AvahiTimeout : QObject {
    AvahiTimeout(AvahiTimeoutCallback callback, void* userdata, QObject* parent) : QObject(parent)
    {
        timer.setSingleShot(true);
        timer.setTimerType(Qt::PreciseTimer);
        connect(&timer, &QTimer::timeout, this,
                [this, callback, userdata] { callback(this, userdata); });
    }

    // Avahi gives the moment, by the wall clock, or none to disable.
    void Set(const timeval* moment)
    {
        if (moment == nullptr) {
            timer.stop();
            return;
        }
        const AvahiUsec left = -avahi_age(moment);
        timer.start(std::chrono::milliseconds(left <= 0 ? 0 : (left + 999) / 1000));
    }

    void Free()
    {
        timer.stop();
        deleteLater();
    }

    QTimer timer;
};

namespace {

QObject* Owner(const AvahiPoll* poll)
{
    return static_cast<QObject*>(poll->userdata);
}

AvahiWatch* NewWatch(const AvahiPoll* poll, int fd, AvahiWatchEvent events,
                     AvahiWatchCallback callback, void* userdata)
{
    auto* watch = new AvahiWatch(fd, callback, userdata, Owner(poll));
    watch->Want(events);
    return watch;
}

AvahiTimeout* NewTimeout(const AvahiPoll* poll, const timeval* moment,
                         AvahiTimeoutCallback callback, void* userdata)
{
    auto* timeout = new AvahiTimeout(callback, userdata, Owner(poll));
    timeout->Set(moment);
    return timeout;
}

}  // namespace

AvahiQtPoll::AvahiQtPoll(QObject* parent) : QObject(parent)
{
    poll_.userdata = this;
    poll_.watch_new = NewWatch;
    poll_.watch_update = [](AvahiWatch* watch, AvahiWatchEvent events) { watch->Want(events); };
    poll_.watch_get_events = [](AvahiWatch* watch) { return watch->happened; };
    poll_.watch_free = [](AvahiWatch* watch) { watch->Free(); };
    poll_.timeout_new = NewTimeout;
    poll_.timeout_update = [](AvahiTimeout* timeout, const timeval* moment) {
        timeout->Set(moment);
    };
    poll_.timeout_free = [](AvahiTimeout* timeout) { timeout->Free(); };
}
