#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// One argument of a received OSC message, as far as a control's value cares.
struct OscArgument {
    enum Kind { kNumber, kTrue, kFalse, kOther };
    Kind kind = kOther;
    double number = 0;  // for kNumber: an int32, float32, double or int64
};

struct OscMessageIn {
    std::string address;
    std::vector<OscArgument> arguments;
};

// Reads one UDP datagram: a message, or a bundle of messages and bundles
// (time tags are ignored). A packet that is malformed anywhere (an odd size,
// a string without its end, an unknown type tag, an element past the end,
// bundles nested too deep) gives nothing at all: a half-read packet is no
// better than a lost one.
std::optional<std::vector<OscMessageIn>> ReadOscPacket(const std::uint8_t* data, std::size_t size);
