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
