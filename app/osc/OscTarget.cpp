#include "OscTarget.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr int kLastPort = 65535;

bool IsHost(std::string_view host)
{
    return !host.empty() && std::none_of(host.begin(), host.end(), [](char c) {
        return std::isspace(static_cast<unsigned char>(c)) || c == '[' || c == ']';
    });
}

// Digits only: no sign, no spaces. A number past the last port stops growing there, so that
// any length of digits reads without overflow and is reported as out of range.
std::optional<int> PortNumber(std::string_view digits)
{
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), [](char c) {
            return std::isdigit(static_cast<unsigned char>(c));
        }))
        return std::nullopt;
    int port = 0;
    for (char digit : digits)
        port = std::min(port * 10 + (digit - '0'), kLastPort + 1);
    return port;
}

std::string Quoted(std::string_view text)
{
    return "OSC target \"" + std::string(text) + "\"";
}

}  // namespace

std::optional<OscTarget> ParseOscTarget(std::string_view text, std::string& error)
{
    std::string_view host;
    std::string_view port;
    if (text.starts_with('[')) {
        const auto close = text.find("]:");
        if (close != std::string_view::npos) {
            host = text.substr(1, close - 1);
            port = text.substr(close + 2);
        }
    } else {
        const auto colon = text.rfind(':');
        // An IPv6 host without brackets cannot be told from its port.
        if (colon != std::string_view::npos &&
            text.substr(0, colon).find(':') == std::string_view::npos) {
            host = text.substr(0, colon);
            port = text.substr(colon + 1);
        }
    }
    const std::optional<int> number = PortNumber(port);
    if (!IsHost(host) || !number) {
        error =
            Quoted(text) + " is not HOST:PORT, for example 127.0.0.1:9000, or [::1]:9000 for IPv6.";
        return std::nullopt;
    }
    if (*number < 1 || *number > kLastPort) {
        error = Quoted(text) + " has port " + std::string(port) + ", but the port must be 1 to " +
                std::to_string(kLastPort) + ", for example 127.0.0.1:9000.";
        return std::nullopt;
    }
    return OscTarget{std::string(host), *number};
}

std::string ToString(const OscTarget& target)
{
    const bool ipv6 = target.host.find(':') != std::string::npos;
    const std::string host = ipv6 ? "[" + target.host + "]" : target.host;
    return host + ":" + std::to_string(target.port);
}

std::optional<OscInput> ParseOscListen(std::string_view text, std::string& error)
{
    const bool portOnly = text.find_first_of(":[") == std::string_view::npos;
    std::string ignored;
    const std::optional<OscTarget> target =
        ParseOscTarget(portOnly ? "all:" + std::string(text) : std::string(text), ignored);
    if (!target) {
        error = "OSC input \"" + std::string(text) +
                "\" is not [HOST:]PORT, for example 8000 or 127.0.0.1:8000, with a port from 1 "
                "to " +
                std::to_string(kLastPort) + ".";
        return std::nullopt;
    }
    return OscInput{true, portOnly ? std::string() : target->host, target->port};
}
