#pragma once

#include "PointerTracker.h"
#include "PreviewFeed.h"
#include "PreviewPlace.h"
#include "PreviewServer.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

class OscMonitor;
class OscSender;

// The phone preview: serves the active layout to the browsers that have the
// run's key, keeps them up to date with it, and operates its controls with
// their fingers as test mode does, sending each value as OSC.
class PhonePreview : public QObject {
    Q_OBJECT

public:
    // Reads the active layout into snapshot after setting value, either of
    // which may be null; false when no layout is open.
    using LayoutReader = std::function<bool(LayoutSnapshot* snapshot, const ControlValue* value)>;
    // How often the browsers are brought up to date while any is connected.
    static constexpr int kRefreshMilliseconds = 50;

    PhonePreview(LayoutReader reader, OscSender& sender, OscMonitor& monitor,
                 QObject* parent = nullptr);
    ~PhonePreview() override;

    // Serves where place says, or stops when it is off; where it serves
    // already, it goes on as it is. On failure it serves nowhere and error
    // says why, naming the port.
    bool Serve(const PreviewPlace& place, QString& error);
    bool IsServing() const { return server_ != nullptr; }
    // The address to open, with the key; empty while off.
    const QString& Address() const { return address_; }
    std::vector<PreviewServer::Browser> Browsers() const;
    // Tells the browsers what changed in the layout since they were last told.
    void Refresh();

Q_SIGNALS:
    // Started, stopped, or a browser came or went.
    void changed();

private:
    void Welcome(int browser);
    void Take(int browser, const QString& text);
    void Goodbye(int browser);
    void Operate(const PointerOperation& operation);
    void Tell(const ControlValue* value);

    LayoutReader reader_;
    OscSender& sender_;
    OscMonitor& monitor_;
    const QString key_;
    std::unique_ptr<PreviewServer> server_;
    PreviewPlace place_;  // where it serves, while it does
    QString address_;
    PreviewFeed feed_;
    PointerTracker pointers_;
    QTimer refresh_;
};
