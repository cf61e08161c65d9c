#pragma once

#include <QTcpServer>

#include <chrono>
#include <list>

class QTcpSocket;

// A listener that keeps what a peer without the key can hold small. Qt's HTTP
// server reads a request whole, body and all, before it can refuse it, and
// keeps a connection that sends nothing for as long as the peer likes. So a
// connection must send each request whole within kRequestTime, and in at
// most kLargestRequest bytes, or it is cut, unanswered; and at most
// kMostWaiting connections that have not shown the key are held at once, the
// one waiting longest cut to make room for the next. A connection that
// becomes a WebSocket is no longer an HTTP connection: none of this applies.
class BoundedTcpServer : public QTcpServer {
public:
    static constexpr qint64 kLargestRequest = 64 * 1024;
    static constexpr std::chrono::milliseconds kRequestTime{10000};
    static constexpr int kMostWaiting = 64;

    explicit BoundedTcpServer(QObject* parent = nullptr);
    ~BoundedTcpServer() override;

    // The request on socket is answered: the next one counts from nothing,
    // and its time from now.
    static void Answered(QTcpSocket* socket);
    // The request on socket carried the key: its connection makes room for
    // nobody.
    static void KeyShown(QTcpSocket* socket);
    // socket leaves HTTP for a WebSocket.
    static void Upgraded(QTcpSocket* socket);

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    class Meter;

    void CutLongestWaiting();

    std::list<Meter*> waiting_;  // connections that have not shown the key, oldest first
};
