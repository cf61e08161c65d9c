#include "PhonePreview.h"

#include "PreviewKey.h"
#include "app/osc/TestModeOutput.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// A pointer as a browser tells of it:
// {"kind": "pointer", "pointer": ID, "phase": "down"|"move"|"up"|"cancel",
//  "page": N, "x": X, "y": Y}, in layout units.
std::optional<BrowserPointer> ReadPointer(const QString& text)
{
    const QJsonObject message = QJsonDocument::fromJson(text.toUtf8()).object();
    if (message.value(QStringLiteral("kind")).toString() != QStringLiteral("pointer"))
        return std::nullopt;
    static const QString phases[] = {QStringLiteral("down"), QStringLiteral("move"),
                                     QStringLiteral("up"), QStringLiteral("cancel")};
    const QString phase = message.value(QStringLiteral("phase")).toString();
    const auto found = std::find(std::begin(phases), std::end(phases), phase);
    if (found == std::end(phases))
        return std::nullopt;
    const auto number = [&](const char* name) {
        // Held to what a layout can hold, whatever a browser sends.
        const double value = message.value(QLatin1String(name)).toDouble();
        return static_cast<int>(std::clamp(value, -65536.0, 65536.0));
    };
    return BrowserPointer{number("pointer"),
                          static_cast<BrowserPointer::Phase>(found - std::begin(phases)),
                          number("page"), number("x"), number("y")};
}

}  // namespace

PhonePreview::PhonePreview(LayoutReader reader, OscSender& sender, OscMonitor& monitor,
                           QObject* parent)
    : QObject(parent),
      reader_(std::move(reader)),
      sender_(sender),
      monitor_(monitor),
      key_(NewPreviewKey())
{
    dropsShown_.setSingleShot(true);
    dropsShown_.setInterval(kDropsShownMilliseconds);
    connect(&dropsShown_, &QTimer::timeout, this, &PhonePreview::changed);
}

PhonePreview::~PhonePreview() = default;

bool PhonePreview::Serve(const PreviewPlace& place, QString& error)
{
    if (server_ && place == place_)
        return true;
    Stop();
    if (!place.on)
        return true;
    const std::vector<QHostAddress> addresses = PreviewAddresses(place.host);
    if (addresses.empty()) {
        error = tr("The phone preview cannot listen on \u201c%1\u201d: it is not an address of "
                   "this computer; choose \u201call\u201d or one of its addresses under Settings "
                   "> Phone Preview.")
                    .arg(QString::fromStdString(place.host));
        return false;
    }
    auto server = std::make_unique<PreviewServer>(key_);
    QString why;
    if (!server->Listen(addresses.front(), place.port, why)) {
        error = tr("The phone preview cannot listen on port %1: %2. Choose another port under "
                   "Settings > Phone Preview.")
                    .arg(place.port)
                    .arg(why);
        return false;
    }
    // The IPv6 loopback where the system has one.
    for (auto also = addresses.begin() + 1; also != addresses.end(); ++also)
        server->Listen(*also, server->Port(), why);
    server_ = std::move(server);
    place_ = place;
    connect(server_.get(), &PreviewServer::browserCame, this, &PhonePreview::Welcome);
    connect(server_.get(), &PreviewServer::browserLeft, this, &PhonePreview::Goodbye);
    connect(server_.get(), &PreviewServer::messageFrom, this, &PhonePreview::Take);
    connect(server_.get(), &PreviewServer::messageDropped, this, &PhonePreview::Dropped);
    address_ = PreviewUrl(place, server_->Port(), key_, FirstLanAddress());
    Q_EMIT changed();
    return true;
}

void PhonePreview::Stop()
{
    QCoreApplication::instance()->removeEventFilter(this);
    server_.reset();
    address_.clear();
    feed_ = {};
    pointerQueue_ = {};
    pointers_ = {};
    Q_EMIT changed();
}

bool PhonePreview::RenewKey(QString& error)
{
    key_ = NewPreviewKey();
    if (!server_)
        return true;
    // On the port the phones know, even one the system picked.
    PreviewPlace place = place_;
    place.port = server_->Port();
    Stop();
    return Serve(place, error);
}

std::vector<PreviewServer::Browser> PhonePreview::Browsers() const
{
    return server_ ? server_->Browsers() : std::vector<PreviewServer::Browser>{};
}

void PhonePreview::Refresh()
{
    if (updateAsked_)
        return;
    updateAsked_ = true;
    QMetaObject::invokeMethod(this, &PhonePreview::Update, Qt::QueuedConnection);
}

bool PhonePreview::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
        case QEvent::Paint:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Wheel:
            Refresh();
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

void PhonePreview::Update()
{
    updateAsked_ = false;
    if (!server_)
        return;
    LayoutSnapshot snapshot;
    std::optional<LayoutSnapshot> now;
    if (reader_(&snapshot, nullptr))
        now = std::move(snapshot);
    for (const PointerQueue::Told& told : pointerQueue_.TakeAll()) {
        if (!now)
            break;
        const std::optional<PointerOperation> operation =
            pointers_.Take(told.browser, told.pointer, *now);
        if (!operation)
            continue;
        Operate(*operation);
        now->pages[operation->page].controls[operation->index].value = operation->control.value;
    }
    for (const std::string& message : feed_.Update(now))
        server_->SendAll(QString::fromStdString(message));
}

void PhonePreview::Welcome(int browser)
{
    Update();
    for (const std::string& message : feed_.Everything())
        server_->Send(browser, QString::fromStdString(message));
    QCoreApplication::instance()->installEventFilter(this);
    Q_EMIT changed();
}

void PhonePreview::Goodbye(int browser)
{
    // What it told before it went counts first.
    Update();
    if (feed_.Told()) {
        for (const PointerOperation& ended : pointers_.Forget(browser, *feed_.Told()))
            Operate(ended);
    }
    if (server_->Browsers().empty())
        QCoreApplication::instance()->removeEventFilter(this);
    Q_EMIT changed();
}

void PhonePreview::Take(int browser, const QString& text)
{
    if (const std::optional<BrowserPointer> pointer = ReadPointer(text)) {
        pointerQueue_.Add(browser, *pointer);
        Refresh();
    }
}

void PhonePreview::Dropped()
{
    if (!dropsShown_.isActive())
        dropsShown_.start();
}

void PhonePreview::Operate(const PointerOperation& operation)
{
    const OSCControl& control = operation.control;
    SendOperated({control.name, control.command, control.type, control.minValue, control.maxValue,
                  control.value, operation.phase},
                 sender_, monitor_);
    // The canvas shows the new value at once; the browsers with the rest.
    if (operation.valueChanged) {
        const ControlValue value{operation.page, operation.index, control.value};
        reader_(nullptr, &value);
    }
}
