#include "LimitedTcpServer.h"

#include <QTcpSocket>
#include <QTimer>

LimitedTcpServer::LimitedTcpServer(std::chrono::milliseconds idleTime, QObject* parent)
    : BoundedTcpServer(parent), idleTime_(idleTime)
{
}

void LimitedTcpServer::incomingConnection(qintptr descriptor)
{
    // Every connection is a child socket of the server until it is deleted,
    // taken or not.
    if (findChildren<QTcpSocket*>(Qt::FindDirectChildrenOnly).size() >= kMostConnections) {
        QTcpSocket refused;
        refused.setSocketDescriptor(descriptor);
        refused.abort();
        return;
    }
    BoundedTcpServer::incomingConnection(descriptor);
}

QTcpSocket* LimitedTcpServer::nextPendingConnection()
{
    QTcpSocket* socket = BoundedTcpServer::nextPendingConnection();
    if (socket == nullptr)
        return nullptr;
    auto* idle = new QTimer(socket);
    idle->setSingleShot(true);
    idle->setInterval(idleTime_);
    connect(idle, &QTimer::timeout, socket, &QTcpSocket::abort);
    // Each piece of a request or of an answer on its way starts the time anew.
    connect(socket, &QTcpSocket::readyRead, idle, qOverload<>(&QTimer::start));
    connect(socket, &QTcpSocket::bytesWritten, idle, qOverload<>(&QTimer::start));
    idle->start();
    return socket;
}
