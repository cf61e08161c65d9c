#pragma once

#include <QTcpServer>

class QTcpSocket;

// A listener whose connections may carry at most kLargestRequest bytes of a
// request: Qt's HTTP server reads a request whole, body and all, before it can
// refuse it, so a peer without the key could otherwise fill the memory. A
// connection that sends more is cut, unanswered. A connection that becomes a
// WebSocket is no longer counted: the HTTP server lets go of all its signals.
class BoundedTcpServer : public QTcpServer {
public:
    static constexpr qint64 kLargestRequest = 64 * 1024;

    using QTcpServer::QTcpServer;

    // The request on socket is answered: the next one counts from nothing.
    static void Answered(QTcpSocket* socket);

protected:
    void incomingConnection(qintptr descriptor) override;
};
