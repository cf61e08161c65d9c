#pragma once

#include "app/preview/BoundedTcpServer.h"

#include <chrono>

// A BoundedTcpServer that also holds at most kMostConnections connections at
// once, closing any more unanswered as they come, and closes a connection on
// which nothing was sent or taken for its idle time: a peer that opens
// connections and leaves them quiet cannot keep others out.
class LimitedTcpServer : public BoundedTcpServer {
public:
    static constexpr int kMostConnections = 8;

    explicit LimitedTcpServer(std::chrono::milliseconds idleTime, QObject* parent = nullptr);

    QTcpSocket* nextPendingConnection() override;

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    const std::chrono::milliseconds idleTime_;
};
