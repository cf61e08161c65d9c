#include "NetworkServices.h"

#include "ServiceBrowser.h"
#include "SyncDocument.h"
#include "app/osc/ListenPlace.h"
#include "app/osc/OscMonitor.h"
#include "document/LayoutChange.h"
#include "host/Messages.h"

#include <QNetworkInterface>
#include <QSysInfo>
#include <QTime>

#include <cstdio>

namespace {

constexpr char kOscType[] = "_osc._udp";
constexpr char kSyncType[] = "_touchosceditor._tcp";
// What DNS-SD allows a service's name.
constexpr qsizetype kLongestName = 63;

// The index of the interface that has host's address, 0 for every interface:
// a service that listens on one address is announced only where it is heard.
int InterfaceOf(const std::string& host)
{
    if (host.empty())
        return 0;
    const QHostAddress address(QString::fromStdString(host));
    for (const QNetworkInterface& interface : QNetworkInterface::allInterfaces()) {
        for (const QNetworkAddressEntry& entry : interface.addressEntries()) {
            if (entry.ip().isEqual(address, QHostAddress::TolerantConversion))
                return interface.index();
        }
    }
    return 0;
}

// For whoever started the application from a terminal.
void PrintPreviewAddress(const QString& address)
{
    std::printf("Phone preview: %s\n", address.toUtf8().constData());
    std::fflush(stdout);
}

}  // namespace

NetworkServices::NetworkServices(Layouts layouts, OscSender& sender, OscMonitor& monitor,
                                 QObject* parent)
    : QObject(parent),
      layouts_(std::move(layouts)),
      monitor_(monitor),
      preview_(layouts_.read, sender, monitor),
      oscAnnouncement_(avahi_, kOscType),
      syncAnnouncement_(avahi_, kSyncType)
{
    listener_.onMessage = [this](const OscMessageIn& message) { TakeReceived(message); };
    listener_.onMalformed = [this] {
        monitor_.ShowIgnored(ignoredMessages_, listener_.Malformed());
    };
    connect(&oscAnnouncement_, &ServiceAnnouncement::changed, this, &NetworkServices::changed);
    connect(&syncAnnouncement_, &ServiceAnnouncement::changed, this, &NetworkServices::changed);
}

NetworkServices::~NetworkServices() = default;

QString NetworkServices::AnnouncedName()
{
    QString name = QStringLiteral("VornOSC on ") + QSysInfo::machineHostName();
    while (name.toUtf8().size() > kLongestName)
        name.chop(1);
    return name;
}

bool NetworkServices::ListenFor(const OscInput& input, QString& error)
{
    const bool listening = listener_.Apply(input, error);
    if (listener_.IsListening())
        oscAnnouncement_.Announce(AnnouncedName(), listener_.Port(), InterfaceOf(input.host));
    else
        oscAnnouncement_.Withdraw();
    return listening;
}

bool NetworkServices::ServePreview(const PreviewPlace& place, QString& error)
{
    const QString before = preview_.Address();
    if (!preview_.Serve(place, error))
        return false;
    if (preview_.IsServing() && preview_.Address() != before)
        PrintPreviewAddress(preview_.Address());
    return true;
}

bool NetworkServices::RenewPreviewKey(QString& error)
{
    if (!preview_.RenewKey(error))
        return false;
    PrintPreviewAddress(preview_.Address());
    return true;
}

bool NetworkServices::ServeSync(const SyncPlace& place, QString& error)
{
    if (sync_ && place == syncPlace_)
        return true;
    sync_.reset();
    syncAnnouncement_.Withdraw();
    Q_EMIT changed();
    if (!place.on)
        return true;
    const QHostAddress address = ListenAddress(place.host);
    if (address.isNull()) {
        error = tr("Layout sync cannot listen on \u201c%1\u201d: it is not an address of this "
                   "computer; choose \u201call\u201d or one of its addresses.")
                    .arg(QString::fromStdString(place.host));
        return false;
    }
    auto server = std::make_unique<LayoutSyncServer>([this] { return ActiveDocument(); });
    QString why;
    if (!server->Listen(address, place.port, why)) {
        error = tr("Layout sync cannot listen on port %1: %2. Choose another port under "
                   "Settings > Layout Sync.")
                    .arg(place.port)
                    .arg(why);
        return false;
    }
    connect(server.get(), &LayoutSyncServer::sent, this,
            [this](const QString& peer, const QString& file) {
                monitor_.AddSynced(peer, file, QTime::currentTime());
            });
    sync_ = std::move(server);
    syncPlace_ = place;
    syncAnnouncement_.Announce(AnnouncedName(), sync_->Port(), InterfaceOf(place.host));
    Q_EMIT changed();
    return true;
}

QString NetworkServices::SyncState() const
{
    if (!sync_)
        return QString();
    const QString host =
        syncPlace_.host.empty() ? FirstLanAddress() : QString::fromStdString(syncPlace_.host);
    return tr("Layout sync on at %1:%2").arg(host).arg(sync_->Port());
}

QString NetworkServices::AnnouncementProblem() const
{
    const QString problem = oscAnnouncement_.Problem();
    return problem.isEmpty() ? syncAnnouncement_.Problem() : problem;
}

std::unique_ptr<ServiceBrowser> NetworkServices::BrowseOscReceivers()
{
    return std::make_unique<ServiceBrowser>(avahi_, kOscType);
}

std::optional<SyncDocument> NetworkServices::ActiveDocument() const
{
    LayoutSnapshot layout;
    if (!layouts_.read(&layout, nullptr))
        return std::nullopt;
    return SyncDocumentOf(layout, layouts_.name());
}

void NetworkServices::TakeReceived(const OscMessageIn& message)
{
    const QString address = QString::fromUtf8(message.address);
    const OscArgument argument =
        message.arguments.empty() ? OscArgument{} : message.arguments.front();
    if (argument.kind == OscArgument::kOther) {
        monitor_.ShowIgnored(++ignoredMessages_, listener_.Malformed());
        return;
    }
    const ReceivedValue value{argument.kind == OscArgument::kTrue    ? ReceivedValue::kOn
                              : argument.kind == OscArgument::kFalse ? ReceivedValue::kOff
                                                                     : ReceivedValue::kNumber,
                              argument.number};
    const int controls = layouts_.setValues(message.address.c_str(), value);
    QString shown = argument.kind == OscArgument::kTrue    ? QStringLiteral("true")
                    : argument.kind == OscArgument::kFalse ? QStringLiteral("false")
                                                           : QString::number(argument.number);
    if (controls != 1)
        shown += controls == 0 ? QStringLiteral(" (no control)")
                               : QStringLiteral(" (%1 controls)").arg(controls);
    monitor_.AddReceived(address, shown, QTime::currentTime());
    // The editor may be out of sight; the phones show the values all the same.
    preview_.Refresh();
}
