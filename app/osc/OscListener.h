#pragma once

#include "OscPacket.h"
#include "OscTarget.h"

#include <QObject>

#include <functional>

class QUdpSocket;

// Receives OSC over UDP while on. Datagrams are read as they arrive, from the
// event loop's socket notifier, so nothing waits on the network; a packet that
// does not read is dropped and counted.
class OscListener : public QObject {
    Q_OBJECT

public:
    explicit OscListener(QObject* parent = nullptr);

    // Starts listening where input says, or stops when it is off. On failure
    // it listens nowhere and error says why, naming the port.
    bool Apply(const OscInput& input, QString& error);
    bool IsListening() const;
    int Port() const;
    int Malformed() const { return malformed_; }
    // Messages read since the listener was made.
    int Received() const { return received_; }

    // Called for each message of each packet, in order.
    std::function<void(const OscMessageIn&)> onMessage;
    // Called after a packet that did not read was dropped.
    std::function<void()> onMalformed;

private:
    void ReadDatagrams();

    QUdpSocket* socket_ = nullptr;
    int malformed_ = 0;
    int received_ = 0;
};
