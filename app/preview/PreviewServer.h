#pragma once

#include <QAbstractHttpServer>
#include <QString>

#include <map>
#include <memory>
#include <vector>

class QHostAddress;
class QWebSocket;

// The phone preview's server: Qt's HTTP server for the page and its files,
// which are compiled into the program, and its WebSocket server for the
// browsers that show the page. Every request, WebSocket too, must carry the
// run's key in its query ("?key=KEY"): one without it is answered 403 and
// nothing else. At most kMostBrowsers browsers are connected at once; a
// message from one may be kLargestMessage bytes long, and a request
// BoundedTcpServer::kLargestRequest.
class PreviewServer : public QAbstractHttpServer {
    Q_OBJECT

public:
    static constexpr int kMostBrowsers = 8;
    static constexpr qint64 kLargestMessage = 4096;
    // The path of the browsers' WebSocket.
    static constexpr char kSocketPath[] = "/socket";

    struct Browser {
        int id;
        QString address;
        QString agent;  // what the browser calls itself
    };

    explicit PreviewServer(const QString& key, QObject* parent = nullptr);
    ~PreviewServer() override;

    // Listens on port of address (0: any free port); on failure error says why.
    bool Listen(const QHostAddress& address, int port, QString& error);
    int Port() const;
    std::vector<Browser> Browsers() const;
    void Send(int browser, const QString& text);
    void SendAll(const QString& text);

Q_SIGNALS:
    void browserCame(int browser);
    void browserLeft(int browser);
    void messageFrom(int browser, const QString& text);

protected:
    bool handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) override;
    void missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) override;

private:
    void TakeWebSockets();
    void Welcome(std::unique_ptr<QWebSocket> socket);

    struct Connected {
        std::unique_ptr<QWebSocket> socket;
        Browser browser;
    };
    QString key_;
    std::map<int, Connected> browsers_;
    // What each browser that asked for the WebSocket calls itself, by its
    // port, until its WebSocket comes.
    std::map<quint16, QString> agents_;
    int lastId_ = 0;
    quint16 port_ = 0;
};
