#include "PreviewServer.h"

#include "BoundedTcpServer.h"
#include "PreviewKey.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QHostInfo>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QIcon>
#include <QLoggingCategory>
#include <QNetworkInterface>
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
// The one file served without the key: the icon a browser shows by the page's name.
constexpr char kIconPath[] = "/favicon.ico";
constexpr int kIconPixels = 64;

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

// Whether a request's Host names this computer and port as a browser writes
// them: by one of its addresses, "localhost" or its own name. The name of any
// other site is refused, even when it leads here as a rebinding site's does.
bool NamesThisComputer(const QByteArray& host, quint16 port)
{
    const QUrl url(QStringLiteral("http://") + QString::fromLatin1(host), QUrl::StrictMode);
    if (host.isEmpty() || !url.isValid() || !url.userInfo().isEmpty() || !url.path().isEmpty() ||
        url.hasQuery() || url.hasFragment() || url.port(80) != port)
        return false;
    const QString name = url.host();
    const QString own = QHostInfo::localHostName().toLower();
    return name == QLatin1String("localhost") || name == own ||
           name == own + QStringLiteral(".local") ||
           QNetworkInterface::allAddresses().contains(QHostAddress(name));
}

bool Reads(const QHttpServerRequest& request)
{
    return request.method() == QHttpServerRequest::Method::Get ||
           request.method() == QHttpServerRequest::Method::Head;
}

QByteArray IconAsPng()
{
    QByteArray png;
    const QIcon icon = QGuiApplication::windowIcon();
    if (icon.isNull())
        return png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    icon.pixmap(kIconPixels).toImage().save(&buffer, "PNG");
    return png;
}

QString Shown(const QHostAddress& address)
{
    bool mapped = false;
    const QHostAddress v4(address.toIPv4Address(&mapped));
    return mapped ? v4.toString() : address.toString();
}

}  // namespace

// What a request gets.
enum class PreviewServer::Verdict {
    kRefused,      // 403: not addressed to this computer, or without the key or the origin
    kIcon,         // the application's icon
    kFile,         // a file of the page
    kWebSocket,    // the browsers' WebSocket
    kMissing,      // 404
    kWrongMethod,  // 405
};

PreviewServer::PreviewServer(const QString& key, QObject* parent)
    : QAbstractHttpServer(parent), key_(key), icon_(IconAsPng())
{
    clock_.start();
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

PreviewServer::Verdict PreviewServer::Judge(const QHttpServerRequest& request) const
{
    const QByteArray host = request.value(QByteArrayLiteral("host"));
    if (!NamesThisComputer(host, port_))
        return Verdict::kRefused;
    const QString path = request.url().path();
    if (path == QLatin1String(kIconPath) && Reads(request) && !icon_.isEmpty())
        return Verdict::kIcon;
    if (!CarriesKey(request.url(), key_))
        return Verdict::kRefused;
    if (AsksForWebSocket(request)) {
        // Another site's page may have the key too, from the address typed
        // into it; only the preview's own page may open the WebSocket.
        const QByteArray origin = request.value(QByteArrayLiteral("origin"));
        if (origin.compare("http://" + host, Qt::CaseInsensitive) != 0)
            return Verdict::kRefused;
        return path == QLatin1String(kSocketPath) ? Verdict::kWebSocket : Verdict::kMissing;
    }
    if (AssetAt(path) == nullptr)
        return Verdict::kMissing;
    return Reads(request) ? Verdict::kFile : Verdict::kWrongMethod;
}

bool PreviewServer::handleRequest(const QHttpServerRequest& request, QTcpSocket* socket)
{
    // Everything refused is answered by missingHandler: for a WebSocket, Qt
    // takes a request handled here as one to upgrade.
    BoundedTcpServer::Answered(socket);
    const Verdict verdict = Judge(request);
    if (verdict != Verdict::kRefused && verdict != Verdict::kIcon)
        BoundedTcpServer::KeyShown(socket);
    if (verdict == Verdict::kWebSocket) {
        agents_[socket->peerPort()] =
            QString::fromUtf8(request.value(QByteArrayLiteral("user-agent")));
        BoundedTcpServer::Upgraded(socket);
        return true;
    }
    QByteArray body;
    const char* type = "image/png";
    if (verdict == Verdict::kIcon) {
        body = icon_;
    } else if (verdict == Verdict::kFile) {
        const Asset* asset = AssetAt(request.url().path());
        QFile file(QString::fromLatin1(asset->resource));
        if (!file.open(QIODevice::ReadOnly))
            return false;
        body = file.readAll().replace(kKeyPlace, key_.toLatin1());
        type = asset->type;
    } else {
        return false;
    }
    QHttpServerResponder responder = makeResponder(request, socket);
    responder.writeStatusLine();
    responder.writeHeaders(
        {{"Content-Type", type},
         {"Cache-Control", "no-store"},
         {"X-Content-Type-Options", "nosniff"},
         {"Referrer-Policy", "no-referrer"},
         {"Content-Security-Policy",
          "default-src 'self'; connect-src 'self' ws:; frame-ancestors 'none'"}});
    responder.writeHeader("Content-Length", QByteArray::number(body.size()));
    // HEAD is answered as GET is, but for the body.
    responder.writeBody(request.method() == QHttpServerRequest::Method::Head ? QByteArray() : body);
    return true;
}

void PreviewServer::missingHandler(const QHttpServerRequest& request, QTcpSocket* socket)
{
    const Verdict verdict = Judge(request);
    makeResponder(request, socket)
        .write(verdict == Verdict::kRefused       ? Status::Forbidden
               : verdict == Verdict::kWrongMethod ? Status::MethodNotAllowed
                                                  : Status::NotFound);
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
                       QStringLiteral("VornOSC shows its preview on %1 browsers at most; close "
                                      "it on another one first.")
                           .arg(kMostBrowsers));
        return;
    }
    socket->setMaxAllowedIncomingMessageSize(kLargestMessage);
    socket->setMaxAllowedIncomingFrameSize(kLargestMessage);
    const int id = ++lastId_;
    QWebSocket* raw = socket.get();
    connect(raw, &QWebSocket::textMessageReceived, this,
            [this, id](const QString& text) { Take(id, text); });
    connect(raw, &QWebSocket::disconnected, this, [this, id] {
        const auto found = browsers_.find(id);
        if (found == browsers_.end())
            return;
        found->second.socket.release()->deleteLater();
        browsers_.erase(found);
        Q_EMIT browserLeft(id);
    });
    browsers_[id] = {std::move(socket), {id, Shown(raw->peerAddress()), agent}, clock_.elapsed()};
    Q_EMIT browserCame(id);
}

void PreviewServer::Take(int browser, const QString& text)
{
    const auto found = browsers_.find(browser);
    if (found == browsers_.end())
        return;
    Connected& connected = found->second;
    const qint64 now = clock_.elapsed();
    if (now - connected.secondFrom >= 1000) {
        connected.secondFrom = now;
        connected.inSecond = 0;
    }
    if (++connected.inSecond > kMostMessagesPerSecond) {
        ++connected.browser.dropped;
        Q_EMIT messageDropped(browser);
        return;
    }
    Q_EMIT messageFrom(browser, text);
}
