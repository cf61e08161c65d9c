#pragma once

#include <QHostAddress>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QSettings;
class QString;

// Whether and where the application serves the phone preview: on or off, an
// interface's address (empty: all of them) and a port.
struct PreviewPlace {
    bool on = false;
    std::string host;
    int port = 8080;

    bool operator==(const PreviewPlace&) const = default;
};

// Reads "[HOST:]PORT" as --preview gives it ("8080", "192.168.1.5:8080",
// "[::1]:8080", "localhost:8080"), turned on. On failure, error says what to
// type instead, naming a HOST that is not this computer's.
std::optional<PreviewPlace> ParsePreviewPlace(std::string_view text, std::string& error);

// The addresses to listen on for host: every interface's for an empty host,
// both loopback addresses for "localhost", else host itself when it is an
// address of this computer; none when it is not.
std::vector<QHostAddress> PreviewAddresses(const std::string& host);

// The place kept between runs, under "preview/...".
PreviewPlace LoadPreviewPlace(QSettings& settings);
void SavePreviewPlace(QSettings& settings, const PreviewPlace& place);

// The address a browser opens: http://HOST:PORT/?key=KEY, HOST the address
// listened on, or lanAddress when listening on all of them.
QString PreviewUrl(const PreviewPlace& place, int port, const QString& key,
                   const QString& lanAddress);

// The machine's first address on a network, for a phone to reach it: the
// first IPv4 address of an interface that is up and not the loopback, or
// 127.0.0.1 when there is none.
QString FirstLanAddress();
