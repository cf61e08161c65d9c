#include "BoundedTcpServer.h"

#include <QTcpSocket>

namespace {

// Counts what came on its socket since the last answer. It is connected
// before the HTTP server, so it sees each piece before the server reads it.
class RequestMeter : public QObject {
public:
    explicit RequestMeter(QTcpSocket* socket) : QObject(socket)
    {
        // The server keeps a request in the socket's buffer until it is whole:
        // with room for more than the limit, the buffer never fills before
        // the request is cut, and never holds much more.
        socket->setReadBufferSize(2 * BoundedTcpServer::kLargestRequest);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            unanswered += socket->bytesAvailable();
            if (unanswered > BoundedTcpServer::kLargestRequest)
                QMetaObject::invokeMethod(socket, &QTcpSocket::abort, Qt::QueuedConnection);
        });
    }

    qint64 unanswered = 0;
};

RequestMeter* MeterOf(QTcpSocket* socket)
{
    for (QObject* child : socket->children()) {
        if (auto* meter = dynamic_cast<RequestMeter*>(child))
            return meter;
    }
    return nullptr;
}

}  // namespace

void BoundedTcpServer::Answered(QTcpSocket* socket)
{
    if (RequestMeter* meter = MeterOf(socket))
        meter->unanswered = 0;
}

void BoundedTcpServer::incomingConnection(qintptr descriptor)
{
    auto* socket = new QTcpSocket(this);
    if (!socket->setSocketDescriptor(descriptor)) {
        delete socket;
        return;
    }
    new RequestMeter(socket);
    addPendingConnection(socket);
}
