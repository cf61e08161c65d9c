#pragma once

#include "SyncDocument.h"

#include <QAbstractHttpServer>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>

class QHostAddress;

// Layout sync's server, as a touch app's "add layout from editor" asks it: a
// GET of "/" is answered with the document as it stands, an attachment named
// "NAME.touchosc"; anything else, and anything while there is no document,
// is answered 404. At most LimitedTcpServer::kMostConnections connections at
// once, each closed after its idle time, with requests of at most
// BoundedTcpServer::kLargestRequest bytes.
class LayoutSyncServer : public QAbstractHttpServer {
    Q_OBJECT

public:
    // The document to send now; none while no layout is open.
    using Document = std::function<std::optional<SyncDocument>()>;
    static constexpr std::chrono::milliseconds kIdleTime{10000};

    explicit LayoutSyncServer(Document document, std::chrono::milliseconds idleTime = kIdleTime,
                              QObject* parent = nullptr);

    // Listens on port of address (0: any free port); on failure error says why.
    bool Listen(const QHostAddress& address, int port, QString& error);
    int Port() const { return port_; }

Q_SIGNALS:
    // The document went to the peer at address, under the file name given.
    void sent(const QString& address, const QString& fileName);

protected:
    bool handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) override;
    void missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) override;

private:
    Document document_;
    const std::chrono::milliseconds idleTime_;
    int port_ = 0;
};
