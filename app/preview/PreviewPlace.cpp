#include "PreviewPlace.h"

#include "app/osc/ListenPlace.h"
#include "app/osc/OscTarget.h"

#include <QNetworkInterface>
#include <QUrl>

std::optional<PreviewPlace> ParsePreviewPlace(std::string_view text, std::string& error)
{
    // The same form as the OSC input's, told in the preview's words.
    std::string ignored;
    const std::optional<OscInput> place = ParseOscListen(text, ignored);
    if (!place) {
        error = "phone preview \"" + std::string(text) +
                "\" is not [HOST:]PORT, for example 8080 or 192.168.1.5:8080, with a port from 1 "
                "to 65535.";
        return std::nullopt;
    }
    if (PreviewAddresses(place->host).empty()) {
        error = "phone preview \"" + std::string(text) + "\": " + place->host +
                " is not an address of this computer; give one of its addresses or localhost, "
                "or the port alone to serve on all of them.";
        return std::nullopt;
    }
    return PreviewPlace{true, place->host, place->port};
}

std::vector<QHostAddress> PreviewAddresses(const std::string& host)
{
    if (host.empty())
        return {QHostAddress(QHostAddress::Any)};
    if (QString::fromStdString(host).compare(QStringLiteral("localhost"), Qt::CaseInsensitive) == 0)
        return {QHostAddress(QHostAddress::LocalHost), QHostAddress(QHostAddress::LocalHostIPv6)};
    const QHostAddress address = ListenAddress(host);
    if (address.isNull() || !QNetworkInterface::allAddresses().contains(address))
        return {};
    return {address};
}

PreviewPlace LoadPreviewPlace(QSettings& settings)
{
    return LoadListenPlace<PreviewPlace>(settings, QStringLiteral("preview"));
}

void SavePreviewPlace(QSettings& settings, const PreviewPlace& place)
{
    SaveListenPlace(settings, QStringLiteral("preview"), place);
}

QString PreviewUrl(const PreviewPlace& place, int port, const QString& key,
                   const QString& lanAddress)
{
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(place.host.empty() ? lanAddress : QString::fromStdString(place.host));
    url.setPort(port);
    url.setPath(QStringLiteral("/"));
    url.setQuery(QStringLiteral("key=") + key);
    return url.toString();
}

QString FirstLanAddress()
{
    for (const QNetworkInterface& interface : QNetworkInterface::allInterfaces()) {
        const auto flags = interface.flags();
        if (!flags.testFlag(QNetworkInterface::IsUp) ||
            !flags.testFlag(QNetworkInterface::IsRunning) ||
            flags.testFlag(QNetworkInterface::IsLoopBack))
            continue;
        for (const QNetworkAddressEntry& entry : interface.addressEntries()) {
            if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol)
                return entry.ip().toString();
        }
    }
    return QStringLiteral("127.0.0.1");
}
