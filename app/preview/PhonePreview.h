#pragma once

#include "PointerQueue.h"
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
// key, keeps them up to date with it, and operates its controls with their
// fingers as test mode does, sending each value as OSC. What the browsers
// tell and what changes in the application are taken in the next turn of the
// event loop, all at once.
class PhonePreview : public QObject {
    Q_OBJECT

public:
    // Reads the active layout into snapshot after setting value, either of
    // which may be null; false when no layout is open.
    using LayoutReader = std::function<bool(LayoutSnapshot* snapshot, const ControlValue* value)>;
    static constexpr int kDropsShownMilliseconds = 250;

    PhonePreview(LayoutReader reader, OscSender& sender, OscMonitor& monitor,
                 QObject* parent = nullptr);
    ~PhonePreview() override;

    // Serves where place says, or stops when it is off; where it serves
    // already, it goes on as it is. On failure it serves nowhere and error
    // says why, naming the address or the port.
    bool Serve(const PreviewPlace& place, QString& error);
    bool IsServing() const { return server_ != nullptr; }
    // Makes a new key: the browsers showing the preview are let go, and only
    // the new address opens it. On failure it serves nowhere and error says why.
    bool RenewKey(QString& error);
    // The address to open, with the key; empty while off.
    const QString& Address() const { return address_; }
    std::vector<PreviewServer::Browser> Browsers() const;
    // Tells the browsers what changed in the layout, in the next turn of the
    // event loop.
    void Refresh();

Q_SIGNALS:
    // Started, stopped, or a browser came, went or had messages dropped.
    void changed();

protected:
    // Whatever may change the active layout, input or painting, is a reason
    // to look at it again while browsers show it.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Stop();
    void Welcome(int browser);
    void Take(int browser, const QString& text);
    void Dropped();
    void Goodbye(int browser);
    // Applies what the browsers told and tells them what changed.
    void Update();
    void Operate(const PointerOperation& operation);

    LayoutReader reader_;
    OscSender& sender_;
    OscMonitor& monitor_;
    QString key_;
    std::unique_ptr<PreviewServer> server_;
    PreviewPlace place_;  // where it serves, while it does
    QString address_;
    PreviewFeed feed_;
    PointerQueue pointerQueue_;
    PointerTracker pointers_;
    bool updateAsked_ = false;
    // A flood's dropped messages are counted in the panel now and then, not
    // at each one.
    QTimer dropsShown_;
};
