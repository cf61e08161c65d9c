#include "PreviewServer.h"

#include "BoundedTcpServer.h"
#include "PreviewKey.h"

#include <QFile>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QLoggingCategory>
#include <QTcpServer>
#include <QTcpSocket>
#include <QWebSocket>

#include <string_view>

namespace {

using Status = QHttpServerResponder::StatusCode;

// The only files served, from the program's own resources.
struct Asset {
    std::string_view path;
    const char* resource;
    const char* type;
};
constexpr Asset kAssets[] = {
    {"/", ":/preview/index.html", "text/html; charset=utf-8"},
    {"/preview.css", ":/preview/preview.css", "text/css; charset=utf-8"},
    {"/preview.js", ":/preview/preview.js", "text/javascript; charset=utf-8"},
};

// The page names its files with the key, which it is given in its place.
constexpr char kKeyPlace[] = "@KEY@";

const Asset* AssetAt(const QString& path)
{
    for (const Asset& asset : kAssets) {
        if (path == QLatin1String(asset.path.data(), asset.path.size()))
            return &asset;
    }
    return nullptr;
}

bool AsksForWebSocket(const QHttpServerRequest& request)
{
    return request.value(QByteArrayLiteral("upgrade")).compare("websocket", Qt::CaseInsensitive) ==
           0;
}

QString Shown(const QHostAddress& address)
{
    bool mapped = false;
    const QHostAddress v4(address.toIPv4Address(&mapped));
    return mapped ? v4.toString() : address.toString();
}

}  // namespace

PreviewServer::PreviewServer(const QString& key, QObject* parent)
    : QAbstractHttpServer(parent), key_(key)
{
    // The page's files live in this static library, which nothing else names.
    Q_INIT_RESOURCE(preview);
    // Qt warns of every WebSocket refused, which is the key doing its work.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.httpserver.warning=false"));
    connect(this, &QAbstractHttpServer::newWebSocketConnection, this,
            &PreviewServer::TakeWebSockets);
}

PreviewServer::~PreviewServer()
{
    // The sockets go first, quietly: nobody hears of their leaving now.
    for (auto& [id, connected] : browsers_)
        connected.socket->disconnect(this);
}

bool PreviewServer::Listen(const QHostAddress& address, int port, QString& error)
{
    auto* server = new BoundedTcpServer(this);
    if (!server->listen(address, static_cast<quint16>(port))) {
        error = server->errorString();
        delete server;
        return false;
    }
    port_ = server->serverPort();
    bind(server);
    return true;
}

int PreviewServer::Port() const
{
    return port_;
}

std::vector<PreviewServer::Browser> PreviewServer::Browsers() const
{
    std::vector<Browser> browsers;
    for (const auto& [id, connected] : browsers_)
        browsers.push_back(connected.browser);
    return browsers;
}

void PreviewServer::Send(int browser, const QString& text)
{
    if (const auto found = browsers_.find(browser); found != browsers_.end())
        found->second.socket->sendTextMessage(text);
}

void PreviewServer::SendAll(const QString& text)
{
    for (auto& [id, connected] : browsers_)
        connected.socket->sendTextMessage(text);
}

bool PreviewServer::handleRequest(const QHttpServerRequest& request, QTcpSocket* socket)
{
    // Everything refused is answered by missingHandler: for a WebSocket, Qt
    // takes a request handled here as one to upgrade.
    BoundedTcpServer::Answered(socket);
    if (!CarriesKey(request.url(), key_))
        return false;
    if (AsksForWebSocket(request)) {
        if (request.url().path() != QLatin1String(kSocketPath))
            return false;
        agents_[socket->peerPort()] =
            QString::fromUtf8(request.value(QByteArrayLiteral("user-agent")));
        return true;
    }
    const Asset* asset = AssetAt(request.url().path());
    if (asset == nullptr || request.method() != QHttpServerRequest::Method::Get)
        return false;
    QFile file(QString::fromLatin1(asset->resource));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QByteArray body = file.readAll();
    body.replace(kKeyPlace, key_.toLatin1());
    makeResponder(request, socket)
        .write(body, {{"Content-Type", asset->type},
                      {"Cache-Control", "no-store"},
                      {"X-Content-Type-Options", "nosniff"},
                      {"Referrer-Policy", "no-referrer"},
                      {"Content-Security-Policy",
                       "default-src 'self'; connect-src 'self' ws:; frame-ancestors 'none'"}});
    return true;
}

void PreviewServer::missingHandler(const QHttpServerRequest& request, QTcpSocket* socket)
{
    Status status = Status::NotFound;
    if (!CarriesKey(request.url(), key_))
        status = Status::Forbidden;
    else if (request.method() != QHttpServerRequest::Method::Get)
        status = Status::MethodNotAllowed;
    makeResponder(request, socket).write(status);
}

void PreviewServer::TakeWebSockets()
{
    while (hasPendingWebSocketConnections())
        Welcome(nextPendingWebSocketConnection());
}

void PreviewServer::Welcome(std::unique_ptr<QWebSocket> socket)
{
    const QString agent = agents_[socket->peerPort()];
    agents_.erase(socket->peerPort());
    if (std::ssize(browsers_) >= kMostBrowsers) {
        QWebSocket* refused = socket.release();
        refused->setParent(this);
        connect(refused, &QWebSocket::disconnected, refused, &QObject::deleteLater);
        refused->close(QWebSocketProtocol::CloseCodePolicyViolated,
                       QStringLiteral("vornosc shows its preview on %1 browsers at most; close "
                                      "it on another one first.")
                           .arg(kMostBrowsers));
        return;
    }
    socket->setMaxAllowedIncomingMessageSize(kLargestMessage);
    socket->setMaxAllowedIncomingFrameSize(kLargestMessage);
    const int id = ++lastId_;
    QWebSocket* raw = socket.get();
    connect(raw, &QWebSocket::textMessageReceived, this,
            [this, id](const QString& text) { Q_EMIT messageFrom(id, text); });
    connect(raw, &QWebSocket::disconnected, this, [this, id] {
        const auto found = browsers_.find(id);
        if (found == browsers_.end())
            return;
        found->second.socket.release()->deleteLater();
        browsers_.erase(found);
        Q_EMIT browserLeft(id);
    });
    browsers_[id] = {std::move(socket), {id, Shown(raw->peerAddress()), agent}};
    Q_EMIT browserCame(id);
}
