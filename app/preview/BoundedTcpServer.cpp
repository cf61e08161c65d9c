#include "BoundedTcpServer.h"

#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

#include <optional>

namespace {

// How long the listener waits after an error before it accepts again.
constexpr std::chrono::milliseconds kAcceptPause{100};

}  // namespace

// What one connection sent since its last answer, and how long it has left
// to finish its request. It is connected before the HTTP server, so it sees
// each piece before the server reads it.
class BoundedTcpServer::Meter : public QObject {
public:
    Meter(QTcpSocket* socket, BoundedTcpServer* server)
        : QObject(socket), socket_(socket), server_(server)
    {
        // The server keeps a request in the socket's buffer until it is whole:
        // with room for more than the limit, the buffer never fills before
        // the request is cut, and never holds much more.
        socket->setReadBufferSize(2 * kLargestRequest);
        connect(socket, &QTcpSocket::readyRead, this, [this] {
            unanswered_ += socket_->bytesAvailable();
            if (unanswered_ > kLargestRequest)
                QMetaObject::invokeMethod(socket_, &QTcpSocket::abort, Qt::QueuedConnection);
        });
        deadline_.setSingleShot(true);
        connect(&deadline_, &QTimer::timeout, socket, &QTcpSocket::abort);
        deadline_.start(kRequestTime);
        waiting_ = server->waiting_.insert(server->waiting_.end(), this);
    }
    ~Meter() override { StopWaiting(); }

    static Meter* Of(QTcpSocket* socket)
    {
        for (QObject* child : socket->children()) {
            if (auto* meter = dynamic_cast<Meter*>(child))
                return meter;
        }
        return nullptr;
    }
    QTcpSocket* Socket() const { return socket_; }

    void Answered()
    {
        unanswered_ = 0;
        deadline_.start(kRequestTime);
    }
    void StopWaiting()
    {
        if (server_ && waiting_)
            server_->waiting_.erase(*waiting_);
        waiting_.reset();
    }
    void Upgraded()
    {
        StopWaiting();
        deadline_.stop();
    }

private:
    QTcpSocket* socket_;
    QPointer<BoundedTcpServer> server_;
    std::optional<std::list<Meter*>::iterator> waiting_;  // its place among those waiting
    qint64 unanswered_ = 0;
    QTimer deadline_;
};

BoundedTcpServer::BoundedTcpServer(QObject* parent) : QTcpServer(parent)
{
    // Qt stops accepting at any error, out of files too; a moment later the
    // connections' time may have freed some.
    connect(this, &QTcpServer::acceptError, this,
            [this] { QTimer::singleShot(kAcceptPause, this, &QTcpServer::resumeAccepting); });
}

BoundedTcpServer::~BoundedTcpServer()
{
    // The connections go after this part of the server, with nothing to leave.
    for (Meter* meter : std::list(waiting_))
        meter->StopWaiting();
}

void BoundedTcpServer::Answered(QTcpSocket* socket)
{
    if (Meter* meter = Meter::Of(socket))
        meter->Answered();
}

void BoundedTcpServer::KeyShown(QTcpSocket* socket)
{
    if (Meter* meter = Meter::Of(socket))
        meter->StopWaiting();
}

void BoundedTcpServer::Upgraded(QTcpSocket* socket)
{
    if (Meter* meter = Meter::Of(socket))
        meter->Upgraded();
}

void BoundedTcpServer::incomingConnection(qintptr descriptor)
{
    auto* socket = new QTcpSocket(this);
    if (!socket->setSocketDescriptor(descriptor)) {
        delete socket;
        return;
    }
    if (std::ssize(waiting_) >= kMostWaiting)
        CutLongestWaiting();
    new Meter(socket, this);
    addPendingConnection(socket);
}

void BoundedTcpServer::CutLongestWaiting()
{
    Meter* oldest = waiting_.front();
    oldest->StopWaiting();
    oldest->Socket()->abort();
}
