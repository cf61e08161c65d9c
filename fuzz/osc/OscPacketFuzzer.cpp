// Whatever bytes arrive on the listening port, the packet reader must neither
// crash, leak, hang nor read past them, and whatever it accepts is made of
// messages with an address.

#include "app/osc/OscPacket.h"

#include <cstddef>
#include <cstdint>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A copy of exactly size bytes, so that the sanitizer sees any read past them.
    const std::vector<std::uint8_t> packet(data, data + size);
    const auto messages = ReadOscPacket(packet.data(), packet.size());
    if (!messages)
        return 0;
    for (const OscMessageIn& message : *messages) {
        if (message.address.empty() || message.address.front() != '/')
            __builtin_trap();
    }
    return 0;
}
