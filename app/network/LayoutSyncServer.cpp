#include "LayoutSyncServer.h"

#include "LimitedTcpServer.h"

#include <QHostAddress>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QTcpSocket>

namespace {

// The file name a touch app keeps the layout under: its name, without the
// characters that would end the header's quotes, its line or a folder.
QByteArray FileName(const QString& name)
{
    QByteArray file = name.toUtf8();
    for (char& c : file) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F || c == '"' || c == '\\' || c == '/')
            c = '_';
    }
    return file + ".touchosc";
}

QString Shown(const QHostAddress& address)
{
    bool mapped = false;
    const QHostAddress v4(address.toIPv4Address(&mapped));
    return mapped ? v4.toString() : address.toString();
}

}  // namespace

LayoutSyncServer::LayoutSyncServer(Document document, std::chrono::milliseconds idleTime,
                                   QObject* parent)
    : QAbstractHttpServer(parent), document_(std::move(document)), idleTime_(idleTime)
{
}

bool LayoutSyncServer::Listen(const QHostAddress& address, int port, QString& error)
{
    auto* server = new LimitedTcpServer(idleTime_, this);
    if (!server->listen(address, static_cast<quint16>(port))) {
        error = server->errorString();
        delete server;
        return false;
    }
    port_ = server->serverPort();
    bind(server);
    return true;
}

bool LayoutSyncServer::handleRequest(const QHttpServerRequest& request, QTcpSocket* socket)
{
    BoundedTcpServer::Answered(socket);
    if (request.method() != QHttpServerRequest::Method::Get ||
        request.url().path() != QLatin1String("/"))
        return false;
    const std::optional<SyncDocument> document = document_();
    if (!document)
        return false;
    const QByteArray file = FileName(document->name);
    makeResponder(request, socket)
        .write(document->xml, {{"Content-Type", "application/touchosc"},
                               {"Content-Disposition", "attachment; filename=\"" + file + '"'},
                               {"Cache-Control", "no-store"}});
    Q_EMIT sent(Shown(socket->peerAddress()), QString::fromUtf8(file));
    return true;
}

void LayoutSyncServer::missingHandler(const QHttpServerRequest& request, QTcpSocket* socket)
{
    makeResponder(request, socket).write(QHttpServerResponder::StatusCode::NotFound);
}
