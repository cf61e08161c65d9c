#pragma once

#include <optional>
#include <string>
#include <string_view>

// Where the test mode's OSC messages go.
struct OscTarget {
    std::string host = "127.0.0.1";
    int port = 9000;
};

// Reads "HOST:PORT", an IPv6 host in brackets ("[::1]:9000"). The host may not be empty nor
// hold spaces; the port is 1 to 65535. On failure, error tells the user what to type instead.
std::optional<OscTarget> ParseOscTarget(std::string_view text, std::string& error);

// The text ParseOscTarget reads back: "127.0.0.1:9000", "[::1]:9000".
std::string ToString(const OscTarget& target);

// Where the application listens for OSC in test mode: on or off, an interface's
// address (empty: all of them) and a port.
struct OscInput {
    bool on = false;
    std::string host;
    int port = 8000;
};

// Reads "[HOST:]PORT" as --osc-listen gives it ("8000", "127.0.0.1:8000",
// "[::1]:8000"), turned on. On failure, error says what to type instead.
std::optional<OscInput> ParseOscListen(std::string_view text, std::string& error);
