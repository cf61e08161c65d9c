#pragma once

#include "AvahiConnection.h"
#include "LayoutSyncServer.h"
#include "ServiceAnnouncement.h"
#include "SyncPlace.h"
#include "app/osc/OscListener.h"
#include "app/preview/PhonePreview.h"

#include <QObject>

#include <functional>
#include <memory>

class OscMonitor;
class OscSender;
class ServiceBrowser;
struct ReceivedValue;

// The application's services on the network: OSC input, the phone preview
// and layout sync, and their announcements through Avahi. OSC input is
// announced as "_osc._udp" while it listens, layout sync as
// "_touchosceditor._tcp" while it serves, both under "VornOSC on HOSTNAME".
// Without Avahi the services work all the same; AnnouncementProblem() says
// why they are not announced. The window starts and stops the services and
// hears of them through changed().
class NetworkServices : public QObject {
    Q_OBJECT

public:
    // What the services need of the open layouts.
    struct Layouts {
        // Reads the active layout, as the phone preview does.
        PhonePreview::LayoutReader read;
        // The active layout's name, as its title shows it.
        std::function<QString()> name;
        // Sets the test-mode value of the controls at address in every open
        // layout; answers how many.
        std::function<int(const char* address, const ReceivedValue& value)> setValues;
    };

    NetworkServices(Layouts layouts, OscSender& sender, OscMonitor& monitor,
                    QObject* parent = nullptr);
    ~NetworkServices() override;

    // Listens for OSC as input says, or stops; on failure it listens nowhere
    // and error says why.
    bool ListenFor(const OscInput& input, QString& error);
    const OscListener& Listener() const { return listener_; }
    // Serves the phone preview as place says, or stops it; on failure it
    // serves nowhere and error says why. Each start prints the address to
    // open on stdout.
    bool ServePreview(const PreviewPlace& place, QString& error);
    // A new key: the browsers go, and the new address is printed.
    bool RenewPreviewKey(QString& error);
    PhonePreview& Preview() { return preview_; }
    // Serves layout sync as place says, or stops it; on failure it serves
    // nowhere and error says why.
    bool ServeSync(const SyncPlace& place, QString& error);
    // "Layout sync on at HOST:PORT" while it serves; empty otherwise.
    QString SyncState() const;
    // Why a service that should be announced is not, in one line; empty
    // when all are, or none should be.
    QString AnnouncementProblem() const;
    // Finds the OSC receivers on the network while it lives.
    std::unique_ptr<ServiceBrowser> BrowseOscReceivers();
    // The name the services are announced under: "VornOSC on HOSTNAME".
    static QString AnnouncedName();

Q_SIGNALS:
    // Layout sync started or stopped, or an announcement came, went or failed.
    void changed();

private:
    // A received message sets the value of the controls at its address in
    // every open layout; one without a value is counted and ignored.
    void TakeReceived(const OscMessageIn& message);
    std::optional<SyncDocument> ActiveDocument() const;

    Layouts layouts_;
    OscMonitor& monitor_;
    int ignoredMessages_ = 0;
    // Goes after the announcements and browsers made on it.
    AvahiConnection avahi_;
    OscListener listener_;
    PhonePreview preview_;
    std::unique_ptr<LayoutSyncServer> sync_;
    SyncPlace syncPlace_;  // where it serves, while it does
    ServiceAnnouncement oscAnnouncement_;
    ServiceAnnouncement syncAnnouncement_;
};
