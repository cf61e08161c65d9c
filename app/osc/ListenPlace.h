#pragma once

#include <QHostAddress>
#include <QSettings>
#include <QString>

#include <string>

// Where the application listens, for OSC input and the phone preview alike: a
// Place is a struct with on, host (an interface's address, empty for all of
// them) and port, whose defaults stand for what was never kept.

// The address to listen on: every interface for an empty host, else the
// host's own address, null when the host is none.
QHostAddress ListenAddress(const std::string& host);

// The place kept between runs under "GROUP/on", "GROUP/interface" and
// "GROUP/port"; a port no run could use is not kept.
template <class Place>
Place LoadListenPlace(QSettings& settings, const QString& group)
{
    Place place;
    place.on = settings.value(group + QStringLiteral("/on"), false).toBool();
    place.host = settings.value(group + QStringLiteral("/interface")).toString().toStdString();
    const int port = settings.value(group + QStringLiteral("/port"), place.port).toInt();
    if (port >= 1 && port <= 65535)
        place.port = port;
    return place;
}

template <class Place>
void SaveListenPlace(QSettings& settings, const QString& group, const Place& place)
{
    settings.setValue(group + QStringLiteral("/on"), place.on);
    settings.setValue(group + QStringLiteral("/interface"), QString::fromStdString(place.host));
    settings.setValue(group + QStringLiteral("/port"), place.port);
}
