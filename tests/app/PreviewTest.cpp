// The phone preview as a phone shows it: a real browser, headless, opens the
// address the application gives, operates the layout by touch and follows
// the editor's edits; and what anyone without the key gets.
#include "AppFixture.h"
#include "HeadlessBrowser.h"
#include "app/osc/OscMonitor.h"
#include "app/preview/BoundedTcpServer.h"
#include "app/preview/PreviewDialog.h"
#include "app/preview/PreviewPlace.h"
#include "app/preview/PreviewServer.h"
#include "editor/CommandIds.h"

#include <QCheckBox>
#include <QColor>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QUrlQuery>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <mutex>
#include <thread>

namespace {

using nlohmann::json;
using Touch = HeadlessBrowser::Touch;
using namespace Qt::StringLiterals;

// An iPad held sideways: the browser's viewport, so one CSS pixel is one unit.
constexpr int kWidth = 1024, kHeight = 768;

double Now()
{
    return std::chrono::duration<double, std::milli>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

// When each datagram sent to a loopback port arrives, noted by a thread of
// its own, so that the application's event loop does not hold the note back.
class DatagramClock {
public:
    DatagramClock() : socket_(::socket(AF_INET, SOCK_DGRAM, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        ::bind(socket_, reinterpret_cast<sockaddr*>(&address), size);
        ::getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
        port_ = ntohs(address.sin_port);
        const timeval tick{0, 20000};
        ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &tick, sizeof tick);
        thread_ = std::thread([this] {
            char bytes[1024];
            while (!stop_) {
                if (::recv(socket_, bytes, sizeof bytes, 0) > 0) {
                    const std::lock_guard lock(mutex_);
                    times_.push_back(Now());
                }
            }
        });
    }
    ~DatagramClock()
    {
        stop_ = true;
        thread_.join();
        ::close(socket_);
    }
    int Port() const { return port_; }
    std::vector<double> Times()
    {
        const std::lock_guard lock(mutex_);
        return times_;
    }

private:
    int socket_;
    int port_ = 0;
    std::atomic<bool> stop_ = false;
    std::mutex mutex_;
    std::vector<double> times_;
    std::thread thread_;
};

class PreviewTest : public AppTest {
protected:
    // Serves the preview on a free loopback port and opens layout.
    QString Serve(const std::string& layout)
    {
        EXPECT_TRUE(Open(layout));
        QString error;
        EXPECT_TRUE(window->Services().ServePreview({true, "127.0.0.1", 0}, error)) << error.toStdString();
        return window->Services().Preview().Address();
    }

    // The OSC messages received, waiting for count while the application and
    // the browser go on.
    std::vector<std::string> Received(std::size_t count)
    {
        std::vector<std::string> all;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            all = receiver.WaitFor(count, std::chrono::milliseconds(1));
            return all.size() >= count;
        }));
        return all;
    }

    // Waits until condition holds of what the page was told, and the page was
    // drawn since it was last told anything.
    bool Drawn(const QString& condition)
    {
        return browser->WaitUntil(
            QStringLiteral("window.vornoscPreview && (%1) && "
                           "vornoscPreview.stats.drawnAt >= vornoscPreview.stats.toldAt")
                .arg(condition));
    }

    void Tap(double x, double y)
    {
        browser->Touches("touchStart", {{x, y, 1}});
        browser->Touches("touchEnd", {});
    }

    // The colour the page shows at a point, as "#rrggbb".
    std::string PixelAt(int x, int y)
    {
        const QJsonValue rgb = browser->Evaluate(
            QStringLiteral("Array.from(document.getElementById('surface').getContext('2d')"
                           ".getImageData(%1, %2, 1, 1).data.slice(0, 3))")
                .arg(x)
                .arg(y));
        return QColor(rgb[0].toInt(), rgb[1].toInt(), rgb[2].toInt()).name().toStdString();
    }

    // How far the browser's clock is ahead of this process's, in milliseconds,
    // from the quickest of a few readings.
    double BrowserClockAhead()
    {
        double quickest = 1e9, ahead = 0;
        for (int i = 0; i < 5; ++i) {
            const double before = Now();
            const double browserNow =
                browser->Evaluate(QStringLiteral("performance.timeOrigin + performance.now()"))
                    .toDouble();
            const double after = Now();
            if (after - before < quickest) {
                quickest = after - before;
                ahead = browserNow - (before + after) / 2;
            }
        }
        return ahead;
    }

    std::unique_ptr<HeadlessBrowser> browser = std::make_unique<HeadlessBrowser>(kWidth, kHeight);
};

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

TEST_F(PreviewTest, TouchesOperateTheLayoutAsTestModeDoesAndEditsShowInTheBrowser)
{
    const json controls = json::array({
        {{"at", {100, 100, 200, 40}},
         {"type", "fader"},
         {"color", 1},
         {"range", {0, 100}},
         {"command", "/a"}},
        {{"at", {400, 100, 40, 200}},
         {"type", "fader"},
         {"color", 1},
         {"range", {0, 100}},
         {"command", "/b"}},
        {{"at", {500, 100, 40, 200}},
         {"type", "fader"},
         {"color", 1},
         {"range", {0, 100}},
         {"command", "/c"}},
        {{"at", {100, 300, 60, 40}},
         {"type", "toggle"},
         {"color", 1},
         {"range", {0, 1}},
         {"command", "/mute"}},
        {{"at", {200, 300, 60, 40}}, {"type", "button"}, {"range", {10, 20}}, {"command", "/tap"}},
        {{"at", {300, 300, 100, 30}}, {"type", "label"}, {"name", "Title"}, {"command", "/t"}},
    });
    browser->Open(Serve(WriteLayout("Touch.VornOsc", controls)));
    ASSERT_TRUE(Drawn(QStringLiteral("vornoscPreview.layout.controls[0]?.length === 6")));

    // Taps, a drag, and two faders moved at once by two fingers, each value
    // at the control's own address, in order.
    Tap(130, 320);
    Tap(230, 320);
    Tap(350, 315);
    browser->Touches("touchStart", {{150, 120, 1}});
    browser->Touches("touchMove", {{200, 120, 1}});
    browser->Touches("touchMove", {{250, 120, 1}});
    browser->Touches("touchMove", {{350, 120, 1}});  // off the fader: nothing
    browser->Touches("touchEnd", {});                // released away: nothing
    browser->Touches("touchStart", {{420, 250, 1}, {520, 250, 2}});
    browser->Touches("touchMove", {{420, 200, 1}, {520, 150, 2}});
    browser->Touches("touchEnd", {});
    // Two fingers moved at once are told in an order of the browser's own.
    std::vector<std::string> received = Received(12);
    std::stable_partition(received.begin() + 6, received.end(),
                          [](const std::string& message) { return message[1] == 'b'; });
    EXPECT_EQ(received,
              (std::vector<std::string>{"/mute 1", "/tap 20", "/tap 10", "/a 25", "/a 50", "/a 75",
                                        "/b 25", "/b 50", "/b 50", "/c 25", "/c 75", "/c 75"}));
    EXPECT_EQ(window->Monitor().Count(), 12);
    // The canvas shows the values; every browser too, the toggle lit.
    LayoutSnapshot shown;
    Frame().LayoutState(&shown, nullptr);
    std::vector<int> values;
    for (const OSCControl& control : shown.pages[0].controls)
        values.push_back(control.value);
    EXPECT_EQ(values, (std::vector<int>{75, 50, 75, 1, 0, 0}));
    EXPECT_TRUE(Drawn(QStringLiteral(
        "vornoscPreview.layout.controls[0].map(c => c.value).join() === '75,50,75,1,0,0'")));
    EXPECT_EQ(PixelAt(130, 320), "#00ff00");  // the toggle lit, in its full colour
    EXPECT_EQ(PixelAt(420, 250), "#00ff00");  // fader b's level, half way up
    EXPECT_EQ(PixelAt(420, 150), "#001f00");  // and its frame above

    // Touch to OSC, from the touch's pointer event reaching the page to the datagram's
    // arrival; and from the time the browser stamped on the touch, which includes its
    // own way from the screen to the page.
    DatagramClock datagrams;
    window->Sender().SetTarget({"127.0.0.1", datagrams.Port()});
    browser->Evaluate(QStringLiteral(
        "window.pressed = []; document.getElementById('surface').addEventListener("
        "'pointerdown', e => pressed.push([performance.timeOrigin + performance.now(), "
        "performance.timeOrigin + e.timeStamp]))"));
    for (int i = 0; i < 20; ++i)
        Tap(130, 320);
    std::vector<double> arrivals, latencies, stamped;
    EXPECT_TRUE(QTest::qWaitFor([&] { return (arrivals = datagrams.Times()).size() >= 20; }));
    const QJsonArray pressed = browser->Evaluate(QStringLiteral("pressed")).toArray();
    const double ahead = BrowserClockAhead();
    ASSERT_EQ(arrivals.size(), 20u);
    for (int i = 0; i < 20; ++i) {
        latencies.push_back(arrivals[i] + ahead - pressed[i][0].toDouble());
        stamped.push_back(arrivals[i] + ahead - pressed[i][1].toDouble());
    }
    std::printf(
        "touch to OSC on loopback: median %.2f ms from the page's pointer event, "
        "%.2f ms from the touch's time stamp\n",
        Median(latencies), Median(stamped));

    // An edit in the editor: the label dragged on the canvas shows at its new place.
    QElapsedTimer edit;
    edit.start();
    Drag({350, 315}, {650, 515});
    ASSERT_TRUE(Drawn(QStringLiteral("vornoscPreview.layout.controls[0][5].x === 600")));
    std::printf("edit in the editor to the browser's drawing: %lld ms\n", edit.elapsed());
    // The page may show its next frame a moment after it drew it.
    const bool redrawn = QTest::qWaitFor(
        [&] { return PixelAt(605, 525) == "#3f0000" && PixelAt(305, 325) == "#000000"; }, 3000);
    EXPECT_TRUE(redrawn);
    EXPECT_EQ(PixelAt(605, 525), "#3f0000");  // the label's fill: red at a quarter
    EXPECT_EQ(PixelAt(305, 325), "#000000");  // where it was

    // At most eight browsers: seven more come, the ninth is turned away, saying why.
    const QUrl socketUrl(QString(window->Services().Preview().Address())
                             .replace(QStringLiteral("http:"), QStringLiteral("ws:"))
                             .replace(QStringLiteral("/?"), QStringLiteral("/socket?")));
    std::vector<std::unique_ptr<QWebSocket>> others;
    for (int i = 0; i < PreviewServer::kMostBrowsers; ++i) {
        others.push_back(std::make_unique<QWebSocket>());
        others.back()->open(socketUrl);
    }
    const auto count = [&](QAbstractSocket::SocketState state) {
        return std::count_if(others.begin(), others.end(),
                             [&](const auto& socket) { return socket->state() == state; });
    };
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return count(QAbstractSocket::ConnectedState) == 7 &&
               count(QAbstractSocket::UnconnectedState) == 1;
    }));
    EXPECT_EQ(window->Services().Preview().Browsers().size(), 8u);
    EXPECT_EQ(window->findChild<QListWidget*>(QStringLiteral("browsers"))->count(), 8);
    for (const auto& socket : others) {
        if (socket->state() != QAbstractSocket::UnconnectedState)
            continue;
        EXPECT_EQ(socket->closeCode(), QWebSocketProtocol::CloseCodePolicyViolated);
        EXPECT_EQ(socket->closeReason().toStdString(),
                  "vornosc shows its preview on 8 browsers at most; close it on another one "
                  "first.");
    }

    // A browser that goes while holding the push button lets go of it; one
    // that sends more than a message may hold is shut out.
    window->Sender().SetTarget({"127.0.0.1", receiver.Port()});
    std::vector<QWebSocket*> connected;
    for (const auto& socket : others) {
        if (socket->state() == QAbstractSocket::ConnectedState)
            connected.push_back(socket.get());
    }
    connected[0]->sendTextMessage(QStringLiteral(
        R"({"kind": "pointer", "pointer": 1, "phase": "down", "page": 0, "x": 230, "y": 320})"));
    ASSERT_EQ(Received(13).back(), "/tap 20");
    connected[0]->close();
    EXPECT_EQ(Received(14).back(), "/tap 10");
    connected[1]->sendTextMessage(QString(PreviewServer::kLargestMessage + 1, u' '));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return connected[1]->state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(connected[1]->closeCode(), QWebSocketProtocol::CloseCodeTooMuchData);

    // Messages within the limit may add up to more than any request.
    const QString tap = QStringLiteral(
        R"({"kind": "pointer", "pointer": 1, "phase": "%1", "page": 0, "x": 230, "y": 320, )"
        R"("padding": "%2"})");
    const QString padding(PreviewServer::kLargestMessage / 2, u'p');
    connected[2]->sendTextMessage(tap.arg(QStringLiteral("down"), padding));
    for (qint64 sent = 0; sent <= BoundedTcpServer::kLargestRequest; sent += padding.size())
        connected[2]->sendTextMessage(tap.arg(QStringLiteral("move"), padding));
    connected[2]->sendTextMessage(tap.arg(QStringLiteral("up"), padding));
    const std::vector<std::string> lastTaps = Received(16);
    EXPECT_EQ(std::vector(lastTaps.end() - 2, lastTaps.end()),
              (std::vector<std::string>{"/tap 20", "/tap 10"}));
}

TEST_F(PreviewTest, APageOfFiveHundredControlsIsDrawnFastAndFollowsTheEditorsPage)
{
    json controls = json::array();
    for (int i = 0; i < 500; ++i) {
        static const char* const types[] = {"label", "fader", "knob", "toggle", "button"};
        controls.push_back({{"at", {(i % 25) * 40, 40 + (i / 25) * 36, 38, 34}},
                            {"type", types[i % 5]},
                            {"color", i % 9},
                            {"value", 60},
                            {"name", "Control " + std::to_string(i)}});
    }
    browser->Open(Serve(WriteLayout("Large.VornOsc", controls)));
    ASSERT_TRUE(Drawn(QStringLiteral("vornoscPreview.layout.controls[0]?.length === 500")));
    std::vector<double> times;
    for (int i = 0; i < 5; ++i) {
        const int drawn = browser->Evaluate(QStringLiteral("vornoscPreview.stats.draws")).toInt();
        browser->Evaluate(QStringLiteral("window.dispatchEvent(new Event('resize'))"));
        browser->WaitUntil(QStringLiteral("vornoscPreview.stats.draws > %1").arg(drawn));
        times.push_back(
            browser->Evaluate(QStringLiteral("vornoscPreview.stats.lastDrawMilliseconds"))
                .toDouble());
    }
    std::printf("a page of 500 controls drawn in %.1f ms (median of 5)\n", Median(times));

    // A new page in the editor becomes the page shown, as its tab.
    Pick(ID_OSCEDITOR_ADDPAGE);
    EXPECT_TRUE(Drawn(QStringLiteral(
        "vornoscPreview.layout.pages.length === 2 && vornoscPreview.shownPage() === 1")));
    EXPECT_EQ(PixelAt(520, 20), "#7f0000");  // the tab of the page shown
    EXPECT_EQ(PixelAt(20, 20), "#262626");
}

TEST(PreviewPlace, ReadsHostAndPortTheDialogEditsItAndTheNextRunFindsIt)
{
    const json cases = Cases(DATA_DIR "/osc.json", "preview");
    for (const auto& c : cases["places"]) {
        std::string error;
        const std::optional<PreviewPlace> place = ParsePreviewPlace(c[0].get<std::string>(), error);
        EXPECT_EQ(place ? PreviewUrl(*place, place->port, QStringLiteral("k"),
                                     QStringLiteral("192.0.2.7"))
                              .toStdString()
                        : error,
                  c[1]);
    }

    PreviewDialog dialog(PreviewPlace{});
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Phone Preview"));  // the Settings item's name
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("interface"))->text(), u"all"_s);
    EXPECT_EQ(dialog.Place(), PreviewPlace{});
    const QPushButton* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    // Each field typed as a user does; the box turned on or off by Space.
    for (const auto& c : cases["dialog"]) {
        SCOPED_TRACE(c.dump());
        for (const char* field : {"interface", "port"}) {
            Retype(dialog.findChild<QWidget*>(QString::fromUtf8(field)),
                   QString::fromStdString(c[field]));
        }
        if (c["check"])
            QTest::keyClick(dialog.findChild<QCheckBox*>(QStringLiteral("on")), Qt::Key_Space);
        const PreviewPlace place = dialog.Place();
        EXPECT_EQ(json::array({place.on, place.host, place.port}), c["place"]);
        EXPECT_EQ(ok->isEnabled(), c["ok"]);
    }

    // The place is kept for the next run; a port no run could use is not.
    QTemporaryDir folder;
    QSettings settings(folder.filePath(QStringLiteral("vornosc.ini")), QSettings::IniFormat);
    const PreviewPlace kept{true, "::1", 9000};
    SavePreviewPlace(settings, kept);
    EXPECT_EQ(LoadPreviewPlace(settings), kept);
    settings.setValue(QStringLiteral("preview/port"), 70000);
    EXPECT_EQ(LoadPreviewPlace(settings).port, 8080);
}

// The server's answer to a request, up to the end of its headers, or nothing
// when the connection ends first.
std::string Answer(QTcpSocket& socket, const QByteArray& request)
{
    socket.write(request);
    QByteArray answer;
    QElapsedTimer timer;
    timer.start();
    while (!answer.contains("\r\n\r\n") && socket.error() == QAbstractSocket::UnknownSocketError &&
           timer.elapsed() < 5000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        answer += socket.readAll();
    }
    return answer.toStdString();
}

std::string Answer(quint16 port, const QByteArray& request)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    return Answer(socket, request);
}

TEST_F(AppTest, NobodyWithoutTheKeySeesAnythingAndTheCodeShowsTheAddress)
{
    QString error;
    ASSERT_TRUE(window->Services().ServePreview({true, "127.0.0.1", 0}, error));
    const QUrl address(window->Services().Preview().Address());
    const QByteArray key = QUrlQuery(address).queryItemValue(QStringLiteral("key")).toLatin1();
    EXPECT_EQ(key.size(), 32);  // 128 bits
    QByteArray nearly = key;
    nearly[31] = nearly[31] == '0' ? '1' : '0';
    const QByteArray upgrade =
        "Connection: Upgrade\r\nUpgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
        "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n";
    const std::string forbidden =
        "HTTP/1.1 403 Forbidden\r\nContent-Type: application/x-empty\r\nContent-Length: 0\r\n\r\n";
    for (const char* const path : {"/", "/preview.js", "/preview.css", "/socket", "/favicon.ico",
                                   "/../../etc/passwd", "/socket/"}) {
        for (const QByteArray& query : {QByteArray(), "?key=" + nearly, QByteArray("?key="),
                                        "?KEY=" + key, "?key=" + key + "0"}) {
            for (const QByteArray& headers : {QByteArray(), upgrade}) {
                SCOPED_TRACE(
                    (path + query + (headers.isEmpty() ? "" : " (WebSocket)")).toStdString());
                EXPECT_EQ(Answer(address.port(), "GET " + QByteArray(path) + query +
                                                     " HTTP/1.1\r\nHost: a\r\n" + headers + "\r\n"),
                          forbidden);
            }
        }
    }
    // With the key: the page, its files, and the WebSocket; nothing else.
    for (const auto& [path, status] :
         std::vector<std::pair<QByteArray, std::string>>{{"/", "HTTP/1.1 200 OK"},
                                                         {"/preview.js", "HTTP/1.1 200 OK"},
                                                         {"/favicon.ico", "HTTP/1.1 404"},
                                                         {"/socket", "HTTP/1.1 101"}}) {
        SCOPED_TRACE(path.toStdString());
        const QByteArray headers = path == "/socket" ? upgrade : QByteArray();
        EXPECT_EQ(Answer(address.port(), "GET " + path + "?key=" + key +
                                             " HTTP/1.1\r\nHost: a\r\n" + headers + "\r\n")
                      .substr(0, status.size()),
                  status);
    }

    // A request larger than any of the page's is cut off unanswered, key or
    // not; requests one after another on a connection each count alone.
    const QByteArray body(BoundedTcpServer::kLargestRequest * 4, 'x');
    for (const QByteArray& query : {QByteArray(), "?key=" + key}) {
        SCOPED_TRACE(query.toStdString());
        QTcpSocket large;
        large.connectToHost(QHostAddress::LocalHost, address.port());
        EXPECT_EQ(Answer(large, "POST /" + query + " HTTP/1.1\r\nHost: a\r\nContent-Length: " +
                                    QByteArray::number(body.size()) + "\r\n\r\n" + body),
                  "");
        EXPECT_EQ(large.error(), QAbstractSocket::RemoteHostClosedError);
    }
    QTcpSocket kept;
    kept.connectToHost(QHostAddress::LocalHost, address.port());
    const QByteArray padding(BoundedTcpServer::kLargestRequest / 2, 'p');
    for (int request = 0; request < 3; ++request) {
        EXPECT_EQ(Answer(kept, "HEAD /?key=" + key + " HTTP/1.1\r\nHost: a\r\nX-Padding: " +
                                   padding + "\r\n\r\n")
                      .substr(0, 12),
                  "HTTP/1.1 405")
            << request;
    }

    // The panel shows the address, and its code reads as the address.
    const auto* code = window->findChild<QLabel*>(QStringLiteral("code"));
    EXPECT_FALSE(window->findChild<QDockWidget*>(QStringLiteral("phonePreview"))->isHidden());
    const std::string picture = folder / "code.png";
    ASSERT_TRUE(code->pixmap().save(QString::fromStdString(picture)));
    const CommandResult read =
        RunCommand("zbarimg --quiet --raw " + ShellQuoted(picture) + " | tail -n 1");
    EXPECT_EQ(read.output, address.toString().toStdString() + "\n");

    // Off again, the port is closed and the panel goes.
    ASSERT_TRUE(window->Services().ServePreview({}, error));
    EXPECT_EQ(Answer(address.port(), "GET / HTTP/1.1\r\n\r\n"), "");
    EXPECT_TRUE(window->findChild<QDockWidget*>(QStringLiteral("phonePreview"))->isHidden());
}

}  // namespace
