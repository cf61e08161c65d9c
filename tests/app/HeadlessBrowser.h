#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QWebSocket>

#include <chrono>
#include <map>
#include <vector>

// Debian's Chromium, headless, driven through its DevTools protocol over a
// WebSocket: a page the size of a phone or tablet, with a touch screen.
// Every wait runs the event loop, so that an application in the same process
// answers the page meanwhile.
class HeadlessBrowser {
public:
    struct Touch {
        double x, y;  // CSS pixels
        int id;
    };

    // Throws std::runtime_error when Chromium does not start.
    HeadlessBrowser(int width, int height);
    ~HeadlessBrowser();
    HeadlessBrowser(const HeadlessBrowser&) = delete;
    HeadlessBrowser& operator=(const HeadlessBrowser&) = delete;

    // The viewport's size in CSS pixels, as a device turned would change it.
    void Resize(int width, int height);
    void Open(const QString& url);
    // The value of a JavaScript expression in the page.
    QJsonValue Evaluate(const QString& expression);
    // Evaluates expression until it is true; false when timeout passed first.
    bool WaitUntil(const QString& expression,
                   std::chrono::milliseconds timeout = std::chrono::seconds(5));
    // "touchStart", "touchMove" or "touchEnd" with the points down after it.
    void Touches(const char* type, const std::vector<Touch>& down);

private:
    // Sends a command to the page and waits for its answer's result.
    QJsonObject Call(const QString& method, const QJsonObject& parameters = {});
    QJsonObject Send(const QString& method, const QJsonObject& parameters, const QString& session);

    QTemporaryDir profile_;
    QProcess chromium_;
    QWebSocket devtools_;
    QString session_;  // of the page's target
    int lastId_ = 0;
    std::map<int, QJsonObject> answers_;
};
