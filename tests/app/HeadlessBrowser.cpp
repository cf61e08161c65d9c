#include "HeadlessBrowser.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

#include <signal.h>
#include <sys/prctl.h>

#include <stdexcept>

namespace {

constexpr int kAnswerMilliseconds = 10000;

// Runs the event loop until done says so, true, or milliseconds pass, false.
// done is asked once each time: what it says may change between two askings.
template <typename Done>
bool RunUntil(Done done, int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() >= milliseconds)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

}  // namespace

HeadlessBrowser::HeadlessBrowser(int width, int height)
{
    // A test stopped short takes its browser with it.
    chromium_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    chromium_.start(
        QStringLiteral("chromium"),
        {QStringLiteral("--headless"), QStringLiteral("--no-sandbox"),
         QStringLiteral("--disable-gpu"), QStringLiteral("--disable-quic"),
         QStringLiteral("--no-first-run"), QStringLiteral("--disable-background-networking"),
         QStringLiteral("--disable-component-update"), QStringLiteral("--disable-sync"),
         QStringLiteral("--user-data-dir=") + profile_.path(),
         // Another site's name that leads here, as a rebinding site's does.
         QStringLiteral("--host-resolver-rules=MAP rebound.example 127.0.0.1"),
         QStringLiteral("--remote-debugging-port=0"), QStringLiteral("about:blank")});
    // Chromium says on stderr where its DevTools listen.
    const QRegularExpression listening(QStringLiteral("DevTools listening on (ws://\\S+)"));
    QString said;
    QString address;
    RunUntil(
        [&] {
            said += QString::fromUtf8(chromium_.readAllStandardError());
            address = listening.match(said).captured(1);
            return !address.isEmpty() || chromium_.state() == QProcess::NotRunning;
        },
        kAnswerMilliseconds);
    if (address.isEmpty())
        throw std::runtime_error("chromium did not start: " + said.toStdString());
    devtools_.setMaxAllowedIncomingMessageSize(256 << 20);
    QObject::connect(&devtools_, &QWebSocket::textMessageReceived, [this](const QString& text) {
        const QJsonObject message = QJsonDocument::fromJson(text.toUtf8()).object();
        if (message.contains(QStringLiteral("id")))
            answers_[message.value(QStringLiteral("id")).toInt()] = message;
    });
    devtools_.open(QUrl(address));
    if (!RunUntil([&] { return devtools_.state() == QAbstractSocket::ConnectedState; },
                  kAnswerMilliseconds))
        throw std::runtime_error("chromium's DevTools did not answer at " + address.toStdString());
    const QString target = Send(QStringLiteral("Target.createTarget"),
                                {{QStringLiteral("url"), QStringLiteral("about:blank")}}, {})
                               .value(QStringLiteral("targetId"))
                               .toString();
    session_ = Send(QStringLiteral("Target.attachToTarget"),
                    {{QStringLiteral("targetId"), target}, {QStringLiteral("flatten"), true}}, {})
                   .value(QStringLiteral("sessionId"))
                   .toString();
    Resize(width, height);
    Call(QStringLiteral("Emulation.setTouchEmulationEnabled"),
         {{QStringLiteral("enabled"), true}, {QStringLiteral("maxTouchPoints"), 5}});
}

HeadlessBrowser::~HeadlessBrowser()
{
    devtools_.abort();
    chromium_.kill();
    chromium_.waitForFinished();
}

void HeadlessBrowser::Resize(int width, int height)
{
    Call(QStringLiteral("Emulation.setDeviceMetricsOverride"),
         {{QStringLiteral("width"), width},
          {QStringLiteral("height"), height},
          {QStringLiteral("deviceScaleFactor"), 1},
          {QStringLiteral("mobile"), true}});
}

void HeadlessBrowser::Open(const QString& url)
{
    Call(QStringLiteral("Page.navigate"), {{QStringLiteral("url"), url}});
}

QJsonValue HeadlessBrowser::Evaluate(const QString& expression)
{
    return Call(QStringLiteral("Runtime.evaluate"), {{QStringLiteral("expression"), expression},
                                                     {QStringLiteral("returnByValue"), true}})
        .value(QStringLiteral("result"))
        .toObject()
        .value(QStringLiteral("value"));
}

bool HeadlessBrowser::WaitUntil(const QString& expression, std::chrono::milliseconds timeout)
{
    return RunUntil([&] { return Evaluate(expression).toBool(); },
                    static_cast<int>(timeout.count()));
}

void HeadlessBrowser::Touches(const char* type, const std::vector<Touch>& down)
{
    QJsonArray points;
    for (const Touch& touch : down)
        points.append(QJsonObject{{QStringLiteral("x"), touch.x},
                                  {QStringLiteral("y"), touch.y},
                                  {QStringLiteral("id"), touch.id}});
    Call(QStringLiteral("Input.dispatchTouchEvent"),
         {{QStringLiteral("type"), QLatin1String(type)}, {QStringLiteral("touchPoints"), points}});
}

QJsonObject HeadlessBrowser::Call(const QString& method, const QJsonObject& parameters)
{
    return Send(method, parameters, session_);
}

QJsonObject HeadlessBrowser::Send(const QString& method, const QJsonObject& parameters,
                                  const QString& session)
{
    const int id = ++lastId_;
    QJsonObject command{{QStringLiteral("id"), id},
                        {QStringLiteral("method"), method},
                        {QStringLiteral("params"), parameters}};
    if (!session.isEmpty())
        command.insert(QStringLiteral("sessionId"), session);
    devtools_.sendTextMessage(
        QString::fromUtf8(QJsonDocument(command).toJson(QJsonDocument::Compact)));
    if (!RunUntil([&] { return answers_.count(id) != 0; }, kAnswerMilliseconds))
        throw std::runtime_error("chromium did not answer " + method.toStdString());
    const QJsonObject answer = answers_[id];
    answers_.erase(id);
    if (answer.contains(QStringLiteral("error")))
        throw std::runtime_error(method.toStdString() + ": " +
                                 QJsonDocument(answer.value(QStringLiteral("error")).toObject())
                                     .toJson(QJsonDocument::Compact)
                                     .toStdString());
    return answer.value(QStringLiteral("result")).toObject();
}
