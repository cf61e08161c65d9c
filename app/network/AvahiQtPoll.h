#pragma once

#include <avahi-common/watch.h>

#include <QObject>

// Avahi's main loop on Qt's event loop: each file descriptor Avahi watches is
// a pair of socket notifiers, each timeout a single-shot timer, so Avahi's
// callbacks run from the event loop of this object's thread and nothing
// waits on the daemon between them. Whatever Avahi made with Poll() must be
// freed before this object goes.
class AvahiQtPoll : public QObject {
public:
    explicit AvahiQtPoll(QObject* parent = nullptr);

    const AvahiPoll* Poll() const { return &poll_; }

private:
    AvahiPoll poll_;
};
