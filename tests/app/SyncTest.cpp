// Layout sync and the network announcements: a real HTTP client takes the
// layout as the TouchOSC export writes it, a real Avahi daemon announces the
// services, avahi-browse sees them come and go, and the OSC Target dialog
// lists a receiver avahi-publish announces.
#include "AppFixture.h"
#include "app/network/LayoutSyncServer.h"
#include "app/network/LimitedTcpServer.h"
#include "app/network/ServiceBrowser.h"
#include "app/osc/OscMonitor.h"
#include "app/osc/OscSettingsDialog.h"
#include "editor/CommandIds.h"
#include "formats/touchosc/TouchOSCArchive.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenuBar>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QStatusBar>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTreeWidget>

#include <set>
#include <sstream>

namespace {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using nlohmann::json;

struct Download {
    int status = 0;
    std::string type, disposition, body;
};

Download Fetch(int port, const QByteArray& verb = "GET", const QString& path = u"/"_s)
{
    QNetworkAccessManager manager;
    QNetworkRequest request(QUrl(u"http://127.0.0.1:%1%2"_s.arg(port).arg(path)));
    const std::unique_ptr<QNetworkReply> reply(manager.sendCustomRequest(request, verb));
    EXPECT_TRUE(QTest::qWaitFor([&] { return reply->isFinished(); }));
    return {reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(),
            reply->rawHeader("Content-Type").toStdString(),
            reply->rawHeader("Content-Disposition").toStdString(), reply->readAll().toStdString()};
}

// Whether the server closes a connection that sent request without a byte
// of answer, within seconds.
bool ClosedUnanswered(QTcpSocket& socket, const QByteArray& request, int seconds = 5)
{
    socket.write(request);
    QByteArray answer;
    const bool closed = QTest::qWaitFor(
        [&] {
            answer += socket.readAll();
            return socket.state() == QAbstractSocket::UnconnectedState;
        },
        seconds * 1000);
    return closed && answer.isEmpty();
}

// The services of type avahi-browse sees, one "NAME;ADDRESS;PORT" each.
std::set<std::string> Browsed(const std::string& type)
{
    const CommandResult run = RunCommand(
        "timeout 5 avahi-browse --resolve --terminate "
        "--parsable --no-db-lookup " +
        type);
    std::set<std::string> services;
    std::istringstream lines(run.output);
    for (std::string line; std::getline(lines, line);) {
        std::vector<std::string> fields;
        std::istringstream parts(line);
        for (std::string field; std::getline(parts, field, ';');)
            fields.push_back(field);
        if (fields.size() >= 9 && fields[0] == "=")
            services.insert(fields[3] + ';' + fields[7] + ';' + fields[8]);
    }
    return services;
}

// Waits until avahi-browse sees services of type that make seen true.
bool Browses(const std::string& type, const std::function<bool(const std::set<std::string>&)>& seen)
{
    QElapsedTimer timer;
    timer.start();
    while (!seen(Browsed(type))) {
        if (timer.elapsed() > 15000)
            return false;
        QTest::qWait(200);
    }
    return true;
}

bool Sees(const std::string& type, const std::string& service, bool seen = true)
{
    return Browses(type, [&](const std::set<std::string>& all) {
        return all.count(service) == (seen ? 1u : 0u);
    });
}

// As avahi-browse writes a name: a space as \032, "#" as \035.
std::string Escaped(const QString& name)
{
    std::string escaped;
    for (const char c : name.toStdString()) {
        if (std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_')
            escaped += c;
        else if (c == '.' || c == '\\')
            escaped += std::string("\\") + c;
        else
            escaped += QString::asprintf("\\%03d", static_cast<unsigned char>(c)).toStdString();
    }
    return escaped;
}

class SyncTest : public AppTest {
protected:
    // The index.xml of the layout as File > Export As TouchOSC writes it.
    std::string Exported()
    {
        const std::string file = "export-" + std::to_string(++exports) + ".touchosc";
        answers.push_back(file);
        Pick(ID_OSCEDITOR_EXPORTASTOUCHOSCFILE);
        std::string xml, error;
        EXPECT_TRUE(ReadTouchOSCArchive(ReadWholeFile(folder / file).value_or(""), xml, {}, error))
            << error;
        return xml;
    }

    QString Shown(const char* label) const
    {
        return window->statusBar()->findChild<QLabel*>(QLatin1String(label))->text();
    }

    int Serve(const SyncPlace& place)
    {
        QString error;
        EXPECT_TRUE(window->Services().ServeSync(place, error)) << error.toStdString();
        return window->Services().SyncState().section(u':', -1).toInt();
    }

    int exports = 0;
};

TEST_F(SyncTest, ATouchAppTakesTheLayoutAsTheExportWritesItUnsavedEditsIncluded)
{
    ASSERT_TRUE(
        Open(WriteLayout("Stage \"B\".VornOsc", json::array({{{"at", {100, 100, 40, 200}},
                                                              {"type", "fader"},
                                                              {"name", "Level & <more>"},
                                                              {"command", "/mix/\"level\""}}}))));
    EXPECT_EQ(Shown("syncState"), QString());
    const int port = Serve({true, "127.0.0.1", 0});
    EXPECT_EQ(Shown("syncState"), u"Layout sync on at 127.0.0.1:%1"_s.arg(port));

    const Download first = Fetch(port);
    EXPECT_EQ(first.status, 200);
    EXPECT_EQ(first.type, "application/touchosc");
    EXPECT_EQ(first.disposition, "attachment; filename=\"Stage _B_.touchosc\"");
    EXPECT_EQ(first.body, Exported());
    EXPECT_EQ(window->Monitor().DirectionAt(0).toStdString() + ' ' +
                  window->Monitor().AddressAt(0).toStdString() + ' ' +
                  window->Monitor().ValueAt(0).toStdString(),
              "sync 127.0.0.1 Stage _B_.touchosc");

    // Moved and not saved: the next download has it.
    Drag({120, 200}, {170, 260});
    ASSERT_TRUE(Frame().IsModified());
    const Download second = Fetch(port);
    EXPECT_NE(second.body, first.body);
    EXPECT_EQ(second.body, Exported());
    EXPECT_EQ(window->Monitor().Count(), 2);

    // With no layout open there is nothing to take.
    answers.push_back("Discard");
    Frame().close();
    EXPECT_EQ(Fetch(port).status, 404);
}

TEST(LayoutSyncServer, AnswersOnlyAGetOfItsOneDocumentWithinItsLimits)
{
    std::optional<SyncDocument> document = SyncDocument{u"Show"_s, "<layout/>"};
    constexpr auto kIdle = 1000ms;
    LayoutSyncServer server([&] { return document; }, kIdle);
    QString error;
    ASSERT_TRUE(server.Listen(QHostAddress::LocalHost, 0, error)) << error.toStdString();
    const int port = server.Port();
    for (const auto& [verb, path, status] : std::vector<std::tuple<QByteArray, QString, int>>{
             {"GET", u"/"_s, 200},
             {"HEAD", u"/"_s, 404},
             {"POST", u"/"_s, 404},
             {"PUT", u"/"_s, 404},
             {"DELETE", u"/"_s, 404},
             {"OPTIONS", u"/"_s, 404},
             {"GET", u"/index.xml"_s, 404},
             {"GET", u"/Show.touchosc"_s, 404},
         }) {
        SCOPED_TRACE((verb + ' ' + path.toUtf8()).toStdString());
        EXPECT_EQ(Fetch(port, verb, path).status, status);
    }
    document.reset();
    EXPECT_EQ(Fetch(port).status, 404);
    document = SyncDocument{u"Show"_s, "<layout/>"};

    // A request larger than any touch app's is cut off unanswered.
    QTcpSocket large;
    large.connectToHost(QHostAddress::LocalHost, port);
    EXPECT_TRUE(ClosedUnanswered(large, "GET / HTTP/1.1\r\nX-Padding: " +
                                            QByteArray(BoundedTcpServer::kLargestRequest, 'x') +
                                            "\r\n\r\n"));

    // A connection left quiet, or with a request that never ends, is closed
    // after the idle time; one past the most connections at once, at once.
    QElapsedTimer timer;
    timer.start();
    std::vector<std::unique_ptr<QTcpSocket>> held;
    for (int i = 0; i < LimitedTcpServer::kMostConnections; ++i) {
        held.push_back(std::make_unique<QTcpSocket>());
        held.back()->connectToHost(QHostAddress::LocalHost, port);
        ASSERT_TRUE(held.back()->waitForConnected());
    }
    held.back()->write("GET / HTTP/1.1\r\n");
    QTest::qWait(100);
    QTcpSocket oneTooMany;
    oneTooMany.connectToHost(QHostAddress::LocalHost, port);
    EXPECT_TRUE(ClosedUnanswered(oneTooMany, "GET / HTTP/1.1\r\n\r\n", 1));
    EXPECT_LT(timer.elapsed(), kIdle.count());
    for (const auto& quiet : held)
        EXPECT_TRUE(ClosedUnanswered(*quiet, ""));
    // Qt's timers may come a twentieth early.
    EXPECT_GE(timer.elapsed(), kIdle.count() * 19 / 20);
    EXPECT_EQ(Fetch(port).status, 200);
}

TEST_F(SyncTest, SyncAndOscInputAreAnnouncedWhileOnAndWithdrawnWhenOffOrOnQuitting)
{
    ASSERT_TRUE(Open(CopyOfExample("Show.VornOsc")));
    const QString name = NetworkServices::AnnouncedName();
    // Another copy of the application announces its sync first, once a test before has
    // withdrawn its own: this one takes the next name.
    ASSERT_TRUE(Browses("_touchosceditor._tcp", [&](const std::set<std::string>& all) {
        return std::none_of(all.begin(), all.end(), [&](const std::string& service) {
            return service.starts_with(Escaped(name) + ';');
        });
    }));
    QProcess other;
    other.start(u"avahi-publish"_s, {u"-s"_s, name, u"_touchosceditor._tcp"_s, u"9658"_s});
    ASSERT_TRUE(Sees("_touchosceditor._tcp", Escaped(name) + ";127.0.0.1;9658"));
    QString error;
    ASSERT_TRUE(window->Services().ListenFor({true, "127.0.0.1", 0}, error));
    const std::string input =
        Escaped(name) + ";127.0.0.1;" + std::to_string(window->Services().Listener().Port());
    const std::string sync =
        Escaped(name + u" #2"_s) + ";127.0.0.1;" + std::to_string(Serve({true, "", 0}));
    EXPECT_TRUE(Sees("_osc._udp", input));
    EXPECT_TRUE(Sees("_touchosceditor._tcp", sync));
    EXPECT_EQ(Shown("announcements"), QString());

    Serve({});
    EXPECT_TRUE(Sees("_touchosceditor._tcp", sync, false));
    EXPECT_EQ(Shown("syncState"), QString());
    EXPECT_EQ(Browsed("_osc._udp").count(input), 1u);
    window.reset();
    EXPECT_TRUE(Sees("_osc._udp", input, false));
    other.terminate();
    other.waitForFinished();
}

TEST_F(SyncTest, TheOscTargetDialogListsTheReceiversOnTheNetworkAsTheyComeAndGo)
{
    QProcess publisher;
    publisher.start(u"avahi-publish"_s, {u"-s"_s, u"Mixing desk"_s, u"_osc._udp"_s, u"9123"_s});
    const std::unique_ptr<ServiceBrowser> receivers = window->Services().BrowseOscReceivers();
    OscSettingsDialog dialog({"127.0.0.1", 9000}, window.get(), receivers.get());
    dialog.show();
    auto* list = dialog.findChild<QTreeWidget*>(u"receivers"_s);
    const auto desk = [&] {
        const QList<QTreeWidgetItem*> found = list->findItems(u"Mixing desk"_s, Qt::MatchExactly);
        return found.isEmpty() ? nullptr : found.front();
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return desk() != nullptr; }, 15000));
    QTreeWidgetItem* item = desk();
    EXPECT_EQ(item->text(2), u"9123"_s);

    // Picked with the mouse, it fills the target in; the host can be typed over.
    list->scrollToItem(item);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
    EXPECT_EQ(dialog.Target().host, item->text(1).toStdString());
    EXPECT_EQ(dialog.Target().port, 9123);
    Retype(dialog.findChild<QWidget*>(u"host"_s), u"desk.local"_s);

    // It goes as its announcement goes, and what was typed stays.
    publisher.terminate();
    publisher.waitForFinished();
    EXPECT_TRUE(QTest::qWaitFor([&] { return desk() == nullptr; }, 15000));
    EXPECT_EQ(ToString(dialog.Target()), "desk.local:9123");
}

TEST_F(SyncTest, WithoutAvahiSyncAndInputWorkAndTheStatusBarSaysWhyNothingIsAnnounced)
{
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    ASSERT_TRUE(Open(CopyOfExample("Show.VornOsc")));

    // Turned on as a user does: Settings > Layout Sync, the box ticked, a free port typed.
    QTcpServer free;
    free.listen(QHostAddress::LocalHost);
    const int port = free.serverPort();
    free.close();
    QTimer::singleShot(0, [port] {
        auto* dialog = QApplication::activeModalWidget();
        QTest::keyClick(dialog->findChild<QCheckBox*>(u"on"_s), Qt::Key_Space);
        Retype(dialog->findChild<QSpinBox*>(u"port"_s), QString::number(port));
        dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    });
    for (QAction* top : window->menuBar()->actions()) {
        for (QAction* item : top->menu()->actions()) {
            if (item->text() == u"&Layout Sync..."_s)
                item->trigger();
        }
    }
    EXPECT_EQ(Shown("syncState").section(u':', -1).toInt(), port);
    EXPECT_EQ(Fetch(port).status, 200);
    QSettings settings;
    EXPECT_EQ(LoadSyncPlace(settings), (SyncPlace{true, "", port}));
    EXPECT_EQ(Shown("announcements"),
              u"Network announcements unavailable: Avahi says \u201cDaemon not running\u201d; "
              "start avahi-daemon for phones to find this computer."_s);

    // Nothing to announce, nothing to say.
    QString error;
    Serve({});
    EXPECT_EQ(Shown("announcements"), QString());
    ASSERT_TRUE(window->Services().ListenFor({true, "127.0.0.1", 0}, error));
    EXPECT_NE(Shown("announcements"), QString());
}

}  // namespace
