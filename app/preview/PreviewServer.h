#pragma once

#include <QAbstractHttpServer>
#include <QElapsedTimer>
#include <QString>

#include <map>
#include <memory>
#include <vector>

class QHostAddress;
class QWebSocket;

// The phone preview's server: Qt's HTTP server for the page and its files,
// which are compiled into the program, and its WebSocket server for the
// browsers that show the page. Only requests addressed to this computer, by
// one of its addresses or names and the port served, are answered; every one
// but for the application's icon must carry the run's key in its query
// ("?key=KEY"), and a WebSocket must come from the page's own origin. Any
// other is answered 403 and nothing else. At most kMostBrowsers browsers are
// connected at once; a message from one may be kLargestMessage bytes long,
// and a request BoundedTcpServer::kLargestRequest. A browser's messages past
// kMostMessagesPerSecond in a second are dropped, and counted.
class PreviewServer : public QAbstractHttpServer {
    Q_OBJECT

public:
    static constexpr int kMostBrowsers = 8;
    static constexpr qint64 kLargestMessage = 4096;
    static constexpr int kMostMessagesPerSecond = 1000;
    // The path of the browsers' WebSocket.
    static constexpr char kSocketPath[] = "/socket";

    struct Browser {
        int id;
        QString address;
        QString agent;       // what the browser calls itself
        qint64 dropped = 0;  // messages past the most a second
    };

    explicit PreviewServer(const QString& key, QObject* parent = nullptr);
    ~PreviewServer() override;

    // Listens on port of address (0: any free port); on failure error says
    // why. Called again, it listens on another address as well.
    bool Listen(const QHostAddress& address, int port, QString& error);
    int Port() const;
    std::vector<Browser> Browsers() const;
    void Send(int browser, const QString& text);
    void SendAll(const QString& text);

Q_SIGNALS:
    void browserCame(int browser);
    void browserLeft(int browser);
    void messageFrom(int browser, const QString& text);
    void messageDropped(int browser);

protected:
    bool handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) override;
    void missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) override;

private:
    enum class Verdict;

    Verdict Judge(const QHttpServerRequest& request) const;
    void TakeWebSockets();
    void Welcome(std::unique_ptr<QWebSocket> socket);
    void Take(int browser, const QString& text);

    struct Connected {
        std::unique_ptr<QWebSocket> socket;
        Browser browser;
        qint64 secondFrom;  // when its current second of messages began
        int inSecond = 0;   // how many it sent in that second
    };
    QString key_;
    QByteArray icon_;  // the application's icon as PNG; empty when it has none
    std::map<int, Connected> browsers_;
    // What each browser that asked for the WebSocket calls itself, by its
    // port, until its WebSocket comes.
    std::map<quint16, QString> agents_;
    int lastId_ = 0;
    quint16 port_ = 0;
    QElapsedTimer clock_;
};
