// The phone preview as a phone shows it: a real browser, headless, opens the
// address the application gives, operates the layout by touch, held either
// way, and follows the editor's edits; what anyone without the key, from
// another site or without a word to say gets; and a page a restart left behind.
#include "AppFixture.h"
#include "HeadlessBrowser.h"
#include "app/osc/OscListener.h"
#include "app/osc/OscMonitor.h"
#include "app/preview/BoundedTcpServer.h"
#include "app/preview/PreviewDialog.h"
#include "app/preview/PreviewPlace.h"
#include "app/preview/PreviewServer.h"
#include "editor/CommandIds.h"

#include <QApplication>
#include <QCheckBox>
#include <QColor>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QHostInfo>
#include <QImage>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QUrlQuery>

#include <lo/lo.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <set>
#include <sstream>
#include <thread>

namespace {

using nlohmann::json;
using Touch = HeadlessBrowser::Touch;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// An iPad held sideways: the browser's viewport, so one CSS pixel is one unit.
constexpr int kWidth = 1024, kHeight = 768;

double Now()
{
    return std::chrono::duration<double, std::milli>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

QString PointerMessage(const char* phase, int pointer, int x, int y)
{
    return uR"({"kind": "pointer", "pointer": %1, "phase": "%2", "page": 0, "x": %3, "y": %4})"_s
        .arg(pointer)
        .arg(QLatin1String(phase))
        .arg(x)
        .arg(y);
}

// When each datagram of one OSC address sent to a loopback port arrives,
// noted by a thread of its own, so that the application's event loop does not
// hold the note back.
class DatagramClock {
public:
    explicit DatagramClock(const std::string& address) : socket_(::socket(AF_INET, SOCK_DGRAM, 0))
    {
        sockaddr_in local{};
        local.sin_family = AF_INET;
        local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof local;
        ::bind(socket_, reinterpret_cast<sockaddr*>(&local), size);
        ::getsockname(socket_, reinterpret_cast<sockaddr*>(&local), &size);
        port_ = ntohs(local.sin_port);
        const timeval tick{0, 20000};
        ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &tick, sizeof tick);
        thread_ = std::thread([this, address] {
            char bytes[1024];
            while (!stop_) {
                if (::recv(socket_, bytes, sizeof bytes, 0) > 0 && bytes == address) {
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

// Another browser, in a thread of its own, whose finger moves on fader 1 of
// a page of 500 controls 20,000 times a second.
class Flood {
public:
    Flood(const QUrl& socket, const QString& origin)
        : thread_([this, socket, origin] {
              QWebSocket browser(origin);
              QEventLoop loop;
              QObject::connect(&browser, &QWebSocket::connected, &loop, &QEventLoop::quit);
              browser.open(socket);
              loop.exec();
              QElapsedTimer clock;
              clock.start();
              for (qint64 sent = 0; !stop_; loop.processEvents(QEventLoop::AllEvents, 1)) {
                  for (; sent < clock.nsecsElapsed() / 50000; ++sent)
                      browser.sendTextMessage(
                          PointerMessage(sent == 0 ? "down" : "move", 1, 40 + sent % 38, 50));
                  std::this_thread::sleep_for(1ms);
              }
          })
    {
    }
    ~Flood()
    {
        stop_ = true;
        thread_.join();
    }

private:
    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

int OpenFiles()
{
    return static_cast<int>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

// The connections to a loopback port whose files this process holds, as the
// system lists them: a connection cut is gone from here, and a file opened
// meanwhile by anything else does not count.
int HeldConnections(int port)
{
    std::set<std::string> sockets;
    for (const auto& file : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        const std::string target = std::filesystem::read_symlink(file.path(), gone).string();
        if (target.starts_with("socket:["))
            sockets.insert(target.substr(8, target.size() - 9));
    }
    std::ifstream table("/proc/net/tcp");
    std::string line;
    std::getline(table, line);  // the headings
    int held = 0;
    while (std::getline(table, line)) {
        std::istringstream fields(line);
        std::string slot, local, remote, state, queues, timer, retries, uid, timeout, inode;
        fields >> slot >> local >> remote >> state >> queues >> timer >> retries >> uid >>
            timeout >> inode;
        const bool listening = state == "0A";
        held += !listening && std::stoi(local.substr(local.find(':') + 1), nullptr, 16) == port &&
                sockets.contains(inode);
    }
    return held;
}

// count connections to a loopback port that say nothing, every other one
// after asking for the page without the key, from a process of their own:
// only this end of each counts against this one's limit of open files,
// lowered to most meanwhile.
class IdleConnections {
public:
    IdleConnections(int port, int count, int most)
    {
        const std::string keyless =
            "GET / HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) + "\r\n\r\n";
        ::getrlimit(RLIMIT_NOFILE, &limit_);
        child_ = ::fork();
        if (child_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);  // a test stopped short leaves nothing behind
            const sockaddr_in server{AF_INET, htons(port), {htonl(INADDR_LOOPBACK)}, {}};
            const timespec pause{0, 1000000};  // one a millisecond: the server's queue keeps up
            for (int i = 0; i < count; ++i, ::nanosleep(&pause, nullptr)) {
                const int asks = i % 2;
                const int socket = ::socket(AF_INET, SOCK_STREAM | (asks ? 0 : SOCK_NONBLOCK), 0);
                ::connect(socket, reinterpret_cast<const sockaddr*>(&server), sizeof server);
                if (asks)
                    ::send(socket, keyless.data(), keyless.size(), MSG_NOSIGNAL);
            }
            for (;;)
                ::pause();
        }
        const rlimit lowered{static_cast<rlim_t>(most), limit_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &lowered);
    }
    ~IdleConnections()
    {
        ::kill(child_, SIGKILL);
        ::waitpid(child_, nullptr, 0);
        ::setrlimit(RLIMIT_NOFILE, &limit_);
    }

private:
    rlimit limit_{};
    pid_t child_;
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

    // The page's own origin, and the address of its WebSocket.
    QString Origin() const
    {
        return u"http://127.0.0.1:%1"_s.arg(QUrl(window->Services().Preview().Address()).port());
    }
    QUrl SocketUrl() const
    {
        return QString(window->Services().Preview().Address())
            .replace(u"http:"_s, u"ws:"_s)
            .replace(u"/?"_s, u"/socket?"_s);
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
    std::string PixelAt(double x, double y)
    {
        const QJsonValue rgb = browser->Evaluate(
            QStringLiteral("Array.from(document.getElementById('surface').getContext('2d')"
                           ".getImageData(%1, %2, 1, 1).data.slice(0, 3))")
                .arg(static_cast<int>(x))
                .arg(static_cast<int>(y)));
        return QColor(rgb[0].toInt(), rgb[1].toInt(), rgb[2].toInt()).name().toStdString();
    }

    // How far the browser's clock is ahead of this process's, in milliseconds,
    // from the quickest of some readings. Read it while this process is idle:
    // busy, it takes the browser's answer late, and the reading is off.
    double BrowserClockAhead()
    {
        double quickest = 1e9, ahead = 0;
        for (int i = 0; i < 20; ++i) {
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

    // The median time of taps on a toggle at x, y sending to address, from
    // each tap's pointer event reaching the page to its datagram's arrival,
    // with the browser's clock ahead by ahead.
    double TouchToOsc(double x, double y, const std::string& address, double ahead)
    {
        constexpr int kTaps = 20;
        DatagramClock datagrams(address);
        window->Sender().SetTarget({"127.0.0.1", datagrams.Port()});
        browser->Evaluate(QStringLiteral(
            "window.pressed || document.getElementById('surface').addEventListener("
            "'pointerdown', e => pressed.push(performance.timeOrigin + performance.now())); "
            "window.pressed = []"));
        for (int i = 0; i < kTaps; ++i)
            Tap(x, y);
        std::vector<double> arrivals, latencies;
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return (arrivals = datagrams.Times()).size() >= kTaps; }));
        const QJsonArray pressed = browser->Evaluate(QStringLiteral("pressed")).toArray();
        for (int i = 0; i < std::min<int>(arrivals.size(), pressed.size()); ++i)
            latencies.push_back(arrivals[i] + ahead - pressed[i].toDouble());
        window->Sender().SetTarget({"127.0.0.1", receiver.Port()});
        return Median(latencies);
    }

    std::vector<std::string> PanelBrowsers() const
    {
        std::vector<std::string> shown;
        const auto* list = window->findChild<QListWidget*>(QStringLiteral("browsers"));
        for (int row = 0; row < list->count(); ++row)
            shown.push_back(list->item(row)->text().toStdString());
        return shown;
    }

    std::unique_ptr<HeadlessBrowser> browser = std::make_unique<HeadlessBrowser>(kWidth, kHeight);
};

TEST_F(PreviewTest, TouchesOperateTheLayoutAsTestModeDoesAndEditsShowInTheBrowser)
{
    const json controls = json::parse(R"([
      {"at": [100, 100, 200, 40], "type": "fader", "color": 1, "range": [0, 100], "command": "/a"},
      {"at": [400, 100, 40, 200], "type": "fader", "color": 1, "range": [0, 100], "command": "/b"},
      {"at": [500, 100, 40, 200], "type": "fader", "color": 1, "range": [0, 100], "command": "/c"},
      {"at": [100, 300, 60, 40], "type": "toggle", "color": 1, "range": [0, 1], "command": "/mute"},
      {"at": [200, 300, 60, 40], "type": "button", "range": [10, 20], "command": "/tap"},
      {"at": [300, 300, 100, 30], "type": "label", "name": "Title", "command": "/t"}])");
    const QString address = Serve(WriteLayout("Touch.VornOsc", controls));

    // With the key, the page under a rebinding site's name is refused, and
    // a page of another origin, localhost's, cannot open 127.0.0.1's WebSocket.
    QUrl elsewhere(address);
    elsewhere.setHost(u"rebound.example"_s);
    browser->Open(elsewhere.toString());
    EXPECT_TRUE(browser->WaitUntil(
        u"performance.getEntriesByType('navigation')[0]?.responseStatus === 403"_s));
    elsewhere.setHost(u"localhost"_s);
    browser->Open(elsewhere.toString());
    EXPECT_TRUE(Drawn(u"location.hostname === 'localhost'"_s));
    EXPECT_TRUE(browser->WaitUntil(
        uR"((window.socket ??= new WebSocket('%1')).readyState === WebSocket.CLOSED)"_s.arg(
            SocketUrl().toString())));

    browser->Open(address);
    ASSERT_TRUE(Drawn(QStringLiteral(
        "location.hostname === '127.0.0.1' && vornoscPreview.layout.controls[0]?.length === 6")));

    // Taps, a drag, and two faders moved at once by two fingers, each value
    // at the control's own address, in order.
    Tap(130, 320);
    Tap(230, 320);
    Tap(350, 315);
    browser->Touches("touchStart", {{150, 120, 1}});
    browser->Touches("touchMove", {{200, 120, 1}});
    browser->Touches("touchMove", {{250, 120, 1}});
    browser->Touches("touchMove", {{350, 120, 1}});  // past the fader's end: full
    browser->Touches("touchEnd", {});                // released there: full
    browser->Touches("touchStart", {{420, 250, 1}, {520, 250, 2}});
    browser->Touches("touchMove", {{420, 200, 1}, {520, 150, 2}});
    browser->Touches("touchEnd", {});
    // Two fingers moved at once are told in an order of the browser's own.
    std::vector<std::string> received = Received(14);
    std::stable_partition(received.begin() + 8, received.end(),
                          [](const std::string& message) { return message[1] == 'b'; });
    EXPECT_EQ(received, (std::vector<std::string>{"/mute 1", "/tap 20", "/tap 10", "/a 25", "/a 50",
                                                  "/a 75", "/a 100", "/a 100", "/b 25", "/b 50",
                                                  "/b 50", "/c 25", "/c 75", "/c 75"}));
    EXPECT_EQ(window->Monitor().Count(), 14);
    // The canvas shows the values; every browser too, the toggle lit.
    LayoutSnapshot shown;
    Frame().LayoutState(&shown, nullptr);
    std::vector<int> values;
    for (const OSCControl& control : shown.pages[0].controls)
        values.push_back(control.value);
    EXPECT_EQ(values, (std::vector<int>{100, 50, 75, 1, 0, 0}));
    EXPECT_TRUE(Drawn(QStringLiteral(
        "vornoscPreview.layout.controls[0].map(c => c.value).join() === '100,50,75,1,0,0'")));
    EXPECT_EQ(PixelAt(130, 320), "#00ff00");  // the toggle lit, in its full colour
    EXPECT_EQ(PixelAt(420, 250), "#00ff00");  // fader b's level, half way up
    EXPECT_EQ(PixelAt(420, 150), "#001f00");  // and its frame above

    // Edits in the editor: the label dragged on the canvas, step by step,
    // shows at each new place in the browser's next frame.
    const double ahead = BrowserClockAhead();
    std::vector<double> edits;
    for (int step = 0; step < 10; ++step) {
        const QPoint from(310 + 30 * step, 310 + 20 * step);
        const double started = Now();
        Drag(from, from + QPoint(30, 20));
        ASSERT_TRUE(Drawn(u"vornoscPreview.layout.controls[0][5].x === %1"_s.arg(330 + 30 * step)));
        edits.push_back(
            browser->Evaluate(u"performance.timeOrigin + vornoscPreview.stats.drawnAt"_s)
                .toDouble() -
            ahead - started);
    }
    std::printf("edit in the editor to the browser's frame: median %.1f ms of %zu\n", Median(edits),
                edits.size());
    // The page may show its next frame a moment after it drew it.
    const bool redrawn = QTest::qWaitFor(
        [&] { return PixelAt(605, 525) == "#3f0000" && PixelAt(305, 325) == "#000000"; }, 3000);
    EXPECT_TRUE(redrawn);
    EXPECT_EQ(PixelAt(605, 525), "#3f0000");  // the label's fill: red at a quarter
    EXPECT_EQ(PixelAt(305, 325), "#000000");  // where it was

    // At most eight browsers: seven more come, the ninth is turned away, saying why.
    std::vector<std::unique_ptr<QWebSocket>> others;
    for (int i = 0; i < PreviewServer::kMostBrowsers + 2; ++i)
        others.push_back(std::make_unique<QWebSocket>(Origin()));
    for (int i = 0; i < PreviewServer::kMostBrowsers; ++i)
        others[i]->open(SocketUrl());
    const auto count = [&](QAbstractSocket::SocketState state) {
        return std::count_if(others.begin(), others.end(),
                             [&](const auto& socket) { return socket->state() == state; });
    };
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return count(QAbstractSocket::ConnectedState) == 7 &&
               count(QAbstractSocket::UnconnectedState) == 3;
    }));
    EXPECT_EQ(window->Services().Preview().Browsers().size(), 8u);
    EXPECT_EQ(PanelBrowsers().size(), 8u);
    std::vector<QWebSocket*> connected;
    for (int i = 0; i < PreviewServer::kMostBrowsers; ++i) {
        if (others[i]->state() == QAbstractSocket::ConnectedState) {
            connected.push_back(others[i].get());
            continue;
        }
        EXPECT_EQ(others[i]->closeCode(), QWebSocketProtocol::CloseCodePolicyViolated);
        EXPECT_EQ(others[i]->closeReason().toStdString(),
                  "VornOSC shows its preview on 8 browsers at most; close it on another one "
                  "first.");
    }

    // A browser that goes while holding the push button lets go of it; one
    // that sends more than a message may hold is shut out.
    connected[0]->sendTextMessage(PointerMessage("down", 1, 230, 320));
    ASSERT_EQ(Received(15).back(), "/tap 20");
    connected[0]->close();
    EXPECT_EQ(Received(16).back(), "/tap 10");
    connected[1]->sendTextMessage(QString(PreviewServer::kLargestMessage + 1, u' '));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return connected[1]->state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(connected[1]->closeCode(), QWebSocketProtocol::CloseCodeTooMuchData);

    // Messages within the limit may add up to more than any request.
    const QString padded = QStringLiteral(
        R"({"kind": "pointer", "pointer": 1, "phase": "%1", "page": 0, "x": 230, "y": 320, )"
        R"("padding": "%2"})");
    const QString padding(PreviewServer::kLargestMessage / 2, u'p');
    connected[2]->sendTextMessage(padded.arg(QStringLiteral("down"), padding));
    for (qint64 sent = 0; sent <= BoundedTcpServer::kLargestRequest; sent += padding.size())
        connected[2]->sendTextMessage(padded.arg(QStringLiteral("move"), padding));
    connected[2]->sendTextMessage(padded.arg(QStringLiteral("up"), padding));
    const std::vector<std::string> lastTaps = Received(18);
    EXPECT_EQ(std::vector(lastTaps.end() - 2, lastTaps.end()),
              (std::vector<std::string>{"/tap 20", "/tap 10"}));

    // Moves of a finger that come together count as its last one.
    connected[3]->sendTextMessage(PointerMessage("down", 1, 150, 120));
    for (int x = 151; x <= 200; ++x)
        connected[3]->sendTextMessage(PointerMessage("move", 1, x, 120));
    connected[3]->sendTextMessage(PointerMessage("up", 1, 200, 120));
    const std::vector<std::string> coalesced = Received(21);
    EXPECT_EQ(std::vector(coalesced.begin() + 18, coalesced.end()),
              (std::vector<std::string>{"/a 25", "/a 50", "/a 50"}));
    EXPECT_EQ(receiver.WaitFor(22, 300ms).size(), 21u);

    // A thousand messages in a second are taken; the next are dropped, and
    // the panel counts them.
    for (int i : {8, 9})
        others[i]->open(SocketUrl());
    ASSERT_TRUE(QTest::qWaitFor([&] { return count(QAbstractSocket::ConnectedState) == 7; }));
    for (int i = 0; i < PreviewServer::kMostMessagesPerSecond + 1; ++i) {
        others[8]->sendTextMessage(PointerMessage("up", 1, 0, 0));
        others[9]->sendTextMessage(PointerMessage("up", 1, 0, 0));
    }
    others[8]->sendTextMessage(PointerMessage("up", 1, 0, 0));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const std::vector<std::string> shown = PanelBrowsers();
        return std::vector(shown.end() - 2, shown.end()) ==
               std::vector<std::string>{"127.0.0.1; 2 messages dropped (over 1,000 a second)",
                                        "127.0.0.1; 1 message dropped (over 1,000 a second)"};
    }));

    // Values received as OSC show on the phones while the editor is out of sight.
    Pick(ID_OSCTESTMODE);
    QString error;
    ASSERT_TRUE(window->Services().ListenFor({true, "127.0.0.1", 0}, error)) << error.toStdString();
    window->hide();
    const lo_address to =
        lo_address_new("127.0.0.1", std::to_string(window->Services().Listener().Port()).c_str());
    lo_send(to, "/c", "i", 30);
    lo_address_free(to);
    EXPECT_TRUE(Drawn(QStringLiteral("vornoscPreview.layout.controls[0][2].value === 30")));
}

TEST_F(PreviewTest, APageOfFiveHundredControlsIsDrawnFastKeepsUpWithAFloodAndFollowsTheEditor)
{
    json controls = json::array();
    for (int i = 0; i < 500; ++i) {
        static const char* const types[] = {"label", "fader", "knob", "toggle", "button"};
        controls.push_back({{"at", {(i % 25) * 40, 40 + (i / 25) * 36, 38, 34}},
                            {"type", types[i % 5]},
                            {"color", i % 9},
                            {"value", 60},
                            {"name", "Control " + std::to_string(i)},
                            {"command", "/c" + std::to_string(i)}});
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

    // A tap on toggle 3, quiet and while another browser floods a fader with
    // moves: the figures side by side, the flooded one as a ratio of the quiet.
    const double ahead = BrowserClockAhead();
    const double quiet = TouchToOsc(139, 57, "/c3", ahead);
    double flooded = 0;
    {
        const Flood flood(SocketUrl(), Origin());
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->Services().Preview().Browsers().size() == 2; }));
        QTest::qWait(500);
        flooded = TouchToOsc(139, 57, "/c3", ahead);
    }
    std::printf(
        "touch to OSC on a page of 500 controls: median %.2f ms quiet, %.2f ms while another "
        "browser sends 20,000 moves a second (%.1f times)\n",
        quiet, flooded, flooded / quiet);
    const std::vector<std::string> shown = PanelBrowsers();
    ASSERT_EQ(shown.size(), 2u);
    std::printf("the flood in the Preview panel: %s\n", shown[1].c_str());
    EXPECT_NE(shown[1].find(" messages dropped (over 1,000 a second)"), std::string::npos);
    EXPECT_EQ(shown[0].find("dropped"), std::string::npos);

    // A new page in the editor becomes the page shown, as its tab.
    Pick(ID_OSCEDITOR_ADDPAGE);
    EXPECT_TRUE(Drawn(QStringLiteral(
        "vornoscPreview.layout.pages.length === 2 && vornoscPreview.shownPage() === 1")));
    EXPECT_EQ(PixelAt(520, 20), "#7f0000");  // the tab of the page shown
    EXPECT_EQ(PixelAt(20, 20), "#262626");
}

TEST_F(PreviewTest, APhoneShowsTheLayoutAtItsLargestEitherWayAndAnEarlierKeysPageGoesQuiet)
{
    // Toggles at two corners of an iPad layout held sideways, 1024 by 768.
    browser->Resize(390, 844);
    const QString first = Serve(WriteLayout("Corners.VornOsc", json::parse(R"([
      {"at": [100, 100, 60, 40], "type": "toggle", "color": 1, "range": [0, 1], "command": "/near"},
      {"at": [800, 600, 60, 40], "type": "toggle", "color": 1, "range": [0, 1], "command": "/far"}
    ])")));
    browser->Open(first);
    ASSERT_TRUE(Drawn(QStringLiteral("vornoscPreview.layout.controls[0]?.length === 2")));

    // Upright, the layout is turned a quarter clockwise, its top along the
    // screen's right edge, at 390 / 768 of its size, not 390 / 1024. Held
    // sideways, it stands as it is, at 390 / 768 too.
    const double scale = 390.0 / 768, margin = (844 - 1024 * scale) / 2;
    const auto upright = [&](double x, double y) {
        return QPointF(scale * (768 - y), margin + scale * x);
    };
    const auto sideways = [&](double x, double y) {
        return QPointF(margin + scale * x, scale * y);
    };
    for (const bool held : {true, false}) {
        SCOPED_TRACE(held ? "upright" : "sideways");
        const auto at = [&](double x, double y) { return held ? upright(x, y) : sideways(x, y); };
        browser->Resize(held ? 390 : 844, held ? 844 : 390);
        const std::size_t before = receiver.WaitFor(0, 0ms).size();
        for (const QPointF point : {at(130, 120), at(830, 620)}) {
            EXPECT_TRUE(
                QTest::qWaitFor([&] { return PixelAt(point.x(), point.y()) != "#000000"; }));
            Tap(point.x(), point.y());
        }
        const std::vector<std::string> taps = Received(before + 2);
        const std::string value = held ? " 1" : " 0";
        EXPECT_EQ(std::vector(taps.begin() + before, taps.end()),
                  (std::vector<std::string>{"/near" + value, "/far" + value}));
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return PixelAt(at(130, 120).x(), at(130, 120).y()) == (held ? "#00ff00" : "#001f00");
        }));
    }
    // The full screen button, at the right end of the title strip, turned too.
    browser->Resize(390, 844);
    const QPointF button = upright(1004, 20);
    EXPECT_TRUE(QTest::qWaitFor([&] { return PixelAt(button.x(), button.y()) != "#000000"; }));
    Tap(button.x(), button.y());
    EXPECT_TRUE(browser->WaitUntil(QStringLiteral("document.fullscreenElement !== null")));

    // Settings > Phone Preview > New Key: a new address on the same port, in
    // the panel; the page of the old one greys and says why.
    const auto gaveUp = [&] {
        return browser->WaitUntil(QStringLiteral("vornoscPreview.refused()"), 10s) &&
               browser->Evaluate(QStringLiteral("document.getElementById('notice').textContent"))
                       .toString() ==
                   u"VornOSC was restarted or made a new key: scan the new code in its Phone "
                   u"Preview panel."_s;
    };
    for (QAction* action : window->findChildren<QAction*>()) {
        if (action->text() == u"&New Key"_s)
            action->trigger();
    }
    const QString second = window->Services().Preview().Address();
    const int port = QUrl(first).port();
    EXPECT_NE(second, first);
    EXPECT_EQ(QUrl(second).port(), port);
    EXPECT_TRUE(window->findChild<QLabel*>(QStringLiteral("address"))->text().endsWith(second));
    EXPECT_TRUE(gaveUp());
    EXPECT_TRUE(QTest::qWaitFor([&] {  // the toggle's green gone, and darker
        const QColor greyed(
            QString::fromStdString(PixelAt(upright(105, 105).x(), upright(105, 105).y())));
        return greyed.red() == greyed.green() && greyed.green() == greyed.blue() &&
               greyed.green() < 128;
    }));

    // The new address works; after a restart, a server of another key on the
    // same port, its page gives up as well, and asks nothing more of the port.
    browser->Open(second);
    ASSERT_TRUE(Drawn(QStringLiteral("vornoscPreview.layout.controls[0]?.length === 2")));
    QString error;
    ASSERT_TRUE(window->Services().ServePreview({}, error));
    PhonePreview restarted([](LayoutSnapshot*, const ControlValue*) { return false; },
                           window->Sender(), window->Monitor());
    ASSERT_TRUE(restarted.Serve({true, "127.0.0.1", port}, error)) << error.toStdString();
    EXPECT_TRUE(gaveUp());
    ASSERT_TRUE(restarted.Serve({}, error));
    QTcpServer listening;
    ASSERT_TRUE(listening.listen(QHostAddress::LocalHost, port));
    Tap(button.x(), 300);
    QTest::qWait(3000);
    EXPECT_FALSE(listening.hasPendingConnections());
}

TEST_F(PreviewTest, IdleConnectionsAreCutAndNeverLockTheBrowserOut)
{
    const QString address = Serve(WriteLayout(
        "Idle.VornOsc", json::array({{{"at", {100, 100, 60, 40}}, {"type", "toggle"}}})));
    const int port = QUrl(address).port();
    const int before = OpenFiles();
    {
        // 150 connections that say nothing, with room for 100 more files:
        // 64 are held, no more, and the browser is served.
        QElapsedTimer since;
        since.start();
        const IdleConnections idle(port, 150, before + 100);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return HeldConnections(port) >= BoundedTcpServer::kMostWaiting; }));
        QTest::qWait(500);
        EXPECT_EQ(HeldConnections(port), BoundedTcpServer::kMostWaiting);
        browser->Open(address);
        EXPECT_TRUE(Drawn(QStringLiteral("vornoscPreview.layout.controls[0]?.length === 1")));
        // Most are held still eight seconds after they came; ten seconds
        // after, all are cut but the browser's WebSocket.
        QTest::qWait(std::max(0, static_cast<int>(8000 - since.elapsed())));
        EXPECT_GT(HeldConnections(port), BoundedTcpServer::kMostWaiting / 2);
        EXPECT_TRUE(QTest::qWaitFor([&] { return HeldConnections(port) == 1; }, 6000))
            << HeldConnections(port);
        EXPECT_EQ(window->Services().Preview().Browsers().size(), 1u);
    }
    // Out of files before 64 are held, the server takes connections again
    // once files are free.
    {
        const IdleConnections idle(port, 100, OpenFiles() + 20);
        QTest::qWait(500);
    }
    browser->Open(address);
    EXPECT_TRUE(Drawn(QStringLiteral("vornoscPreview.layout.controls[0]?.length === 1")));
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

// The server's answer to a request, up to the end of its headers and as much
// more as came with them, or nothing when the connection ends first.
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

std::string Headers(const std::string& answer)
{
    return answer.substr(0, answer.find("\r\n\r\n") + 4);
}

TEST_F(AppTest, NobodyWithoutTheKeyOrFromAnotherSiteSeesAnythingAndTheCodeShowsTheAddress)
{
    QImage red(16, 16, QImage::Format_RGB32);
    red.fill(Qt::red);
    QApplication::setWindowIcon(QIcon(QPixmap::fromImage(red)));
    QString error;
    ASSERT_TRUE(window->Services().ServePreview({true, "127.0.0.1", 0}, error));
    const QUrl address(window->Services().Preview().Address());
    const QByteArray key = QUrlQuery(address).queryItemValue(QStringLiteral("key")).toLatin1();
    EXPECT_EQ(key.size(), 32);  // 128 bits
    const QByteArray port = QByteArray::number(address.port());
    const QByteArray host = "Host: 127.0.0.1:" + port + "\r\n";
    QByteArray nearly = key;
    nearly[31] = nearly[31] == '0' ? '1' : '0';
    const QByteArray upgradeAsked =
        "Connection: Upgrade\r\nUpgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
        "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n";
    const QByteArray upgrade = upgradeAsked + "Origin: http://127.0.0.1:" + port + "\r\n";
    const std::string forbidden =
        "HTTP/1.1 403 Forbidden\r\nContent-Type: application/x-empty\r\nContent-Length: 0\r\n\r\n";
    for (const char* const path :
         {"/", "/preview.js", "/preview.css", "/socket", "/../../etc/passwd", "/socket/"}) {
        for (const QByteArray& query : {QByteArray(), "?key=" + nearly, QByteArray("?key="),
                                        "?KEY=" + key, "?key=" + key + "0"}) {
            for (const QByteArray& headers : {QByteArray(), upgrade}) {
                SCOPED_TRACE(
                    (path + query + (headers.isEmpty() ? "" : " (WebSocket)")).toStdString());
                EXPECT_EQ(Answer(address.port(), "GET " + QByteArray(path) + query +
                                                     " HTTP/1.1\r\n" + host + headers + "\r\n"),
                          forbidden);
            }
        }
    }
    // With the key, addressed to this computer by one of its addresses or
    // names: the page, its files, and the WebSocket from the page's own
    // origin; nothing else. The icon goes to anyone who addresses it so.
    const json requests = Cases(DATA_DIR "/osc.json", "preview")["requests"];
    for (const auto& c : requests) {
        SCOPED_TRACE(c.dump());
        QByteArray request = QByteArray::fromStdString(c[0].get<std::string>() + " HTTP/1.1\r\n" +
                                                       c[1].get<std::string>() + "\r\n");
        request.replace("UPGRADE", upgradeAsked)
            .replace("KEY", key)
            .replace("PORT", port)
            .replace("THIS", QHostInfo::localHostName().toLatin1());
        EXPECT_EQ(Answer(address.port(), request).substr(0, c[2].get<std::string>().size()), c[2]);
    }
    // The icon is the application's.
    const std::string icon =
        Answer(address.port(), "GET /favicon.ico HTTP/1.1\r\n" + host + "\r\n");
    EXPECT_NE(Headers(icon).find("Content-Type: image/png\r\n"), std::string::npos);
    const QByteArray png = QByteArray::fromStdString(icon.substr(Headers(icon).size()));
    EXPECT_EQ(QImage::fromData(png).pixelColor(0, 0), QColor(Qt::red));

    // A request larger than any of the page's is cut off unanswered, key or
    // not; requests one after another on a connection each count alone, HEAD
    // answered as GET without the body.
    const QByteArray body(BoundedTcpServer::kLargestRequest * 4, 'x');
    for (const QByteArray& query : {QByteArray(), "?key=" + key}) {
        SCOPED_TRACE(query.toStdString());
        QTcpSocket large;
        large.connectToHost(QHostAddress::LocalHost, address.port());
        EXPECT_EQ(Answer(large, "POST /" + query + " HTTP/1.1\r\n" + host + "Content-Length: " +
                                    QByteArray::number(body.size()) + "\r\n\r\n" + body),
                  "");
        EXPECT_EQ(large.error(), QAbstractSocket::RemoteHostClosedError);
    }
    const std::string page =
        Headers(Answer(address.port(), "GET /?key=" + key + " HTTP/1.1\r\n" + host + "\r\n"));
    QTcpSocket kept;
    kept.connectToHost(QHostAddress::LocalHost, address.port());
    const QByteArray padding(BoundedTcpServer::kLargestRequest / 2, 'p');
    for (int request = 0; request < 3; ++request) {
        EXPECT_EQ(Answer(kept, "HEAD /?key=" + key + " HTTP/1.1\r\n" + host +
                                   "X-Padding: " + padding + "\r\n\r\n"),
                  page)
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
