#include "PhonePreview.h"

#include "PreviewKey.h"
#include "app/osc/ListenPlace.h"
#include "app/osc/TestModeOutput.h"

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
    refresh_.setInterval(kRefreshMilliseconds);
    connect(&refresh_, &QTimer::timeout, this, &PhonePreview::Refresh);
}

PhonePreview::~PhonePreview() = default;

bool PhonePreview::Serve(const PreviewPlace& place, QString& error)
{
    if (server_ && place == place_)
        return true;
    refresh_.stop();
    server_.reset();
    address_.clear();
    feed_ = {};
    pointers_ = {};
    Q_EMIT changed();
    if (!place.on)
        return true;
    const QHostAddress address = ListenAddress(place.host);
    if (address.isNull()) {
        error = tr("The phone preview cannot listen on \u201c%1\u201d: it is not an address of "
                   "this computer; choose \u201call\u201d or one of its addresses.")
                    .arg(QString::fromStdString(place.host));
        return false;
    }
    auto server = std::make_unique<PreviewServer>(key_);
    QString why;
    if (!server->Listen(address, place.port, why)) {
        error = tr("The phone preview cannot listen on port %1: %2. Choose another port under "
                   "Settings > Phone Preview.")
                    .arg(place.port)
                    .arg(why);
        return false;
    }
    server_ = std::move(server);
    place_ = place;
    connect(server_.get(), &PreviewServer::browserCame, this, &PhonePreview::Welcome);
    connect(server_.get(), &PreviewServer::browserLeft, this, &PhonePreview::Goodbye);
    connect(server_.get(), &PreviewServer::messageFrom, this, &PhonePreview::Take);
    address_ = PreviewUrl(place, server_->Port(), key_, FirstLanAddress());
    Q_EMIT changed();
    return true;
}

std::vector<PreviewServer::Browser> PhonePreview::Browsers() const
{
    return server_ ? server_->Browsers() : std::vector<PreviewServer::Browser>{};
}

void PhonePreview::Refresh()
{
    Tell(nullptr);
}

void PhonePreview::Tell(const ControlValue* value)
{
    if (!server_)
        return;
    LayoutSnapshot snapshot;
    const bool open = reader_(&snapshot, value);
    for (const std::string& message :
         feed_.Update(open ? std::optional(std::move(snapshot)) : std::nullopt))
        server_->SendAll(QString::fromStdString(message));
}

void PhonePreview::Welcome(int browser)
{
    Refresh();
    for (const std::string& message : feed_.Everything())
        server_->Send(browser, QString::fromStdString(message));
    refresh_.start();
    Q_EMIT changed();
}

void PhonePreview::Goodbye(int browser)
{
    if (feed_.Told()) {
        for (const PointerOperation& ended : pointers_.Forget(browser, *feed_.Told()))
            Operate(ended);
    }
    if (server_->Browsers().empty())
        refresh_.stop();
    Q_EMIT changed();
}

void PhonePreview::Take(int browser, const QString& text)
{
    const std::optional<BrowserPointer> pointer = ReadPointer(text);
    if (!pointer || !feed_.Told())
        return;
    if (const std::optional<PointerOperation> operation =
            pointers_.Take(browser, *pointer, *feed_.Told()))
        Operate(*operation);
}

void PhonePreview::Operate(const PointerOperation& operation)
{
    const OSCControl& control = operation.control;
    SendOperated({control.name, control.command, control.type, control.minValue, control.maxValue,
                  control.value, operation.phase},
                 sender_, monitor_);
    // The canvas and every browser show the new value at once.
    if (operation.valueChanged) {
        const ControlValue value{operation.page, operation.index, control.value};
        Tell(&value);
    }
}
