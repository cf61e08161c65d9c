#pragma once

#include "AvahiQtPoll.h"

#include <avahi-client/client.h>

#include <QObject>
#include <QString>
#include <QTimer>

// The application's one connection to the system's Avahi daemon, made when
// something first needs it. While the daemon is away it waits for it, and
// when the connection breaks it tries again every few seconds; meanwhile it
// says why network announcements are unavailable.
class AvahiConnection : public QObject {
    Q_OBJECT

public:
    explicit AvahiConnection(QObject* parent = nullptr);
    // Whatever was made on the client must be freed first.
    ~AvahiConnection() override;

    // Connects, unless it is connected or trying.
    void Open();
    // The client while the daemon serves it; null otherwise.
    AvahiClient* Running() const;
    // Why announcements are unavailable, in one line; empty while running or never opened.
    const QString& Problem() const { return problem_; }

Q_SIGNALS:
    // The client came to run or stopped running. Emitted before a client
    // goes, so that what was made on it can be freed in time.
    void changed();

private:
    static void StateChanged(AvahiClient* client, AvahiClientState state, void* self);
    void Take(AvahiClient* client, AvahiClientState state);
    void Close();

    AvahiQtPoll poll_;
    AvahiClient* client_ = nullptr;
    bool running_ = false;
    QString problem_;
    QTimer retry_;
};
