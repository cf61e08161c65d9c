#pragma once

#include "OscTarget.h"

#include <cstdint>
#include <memory>
#include <string>

// Sends OSC messages of one int32 over UDP to a target. liblo stays inside the .cpp.
// liblo's version, as About shows it.
std::string OscLibraryVersion();

class OscSender {
public:
    explicit OscSender(const OscTarget& target = {});
    ~OscSender();
    OscSender(const OscSender&) = delete;
    OscSender& operator=(const OscSender&) = delete;

    void SetTarget(const OscTarget& target);
    const OscTarget& Target() const;

    // False, with error naming the target and liblo's reason, when the host does not resolve
    // or the message could not be sent.
    bool Send(const std::string& address, std::int32_t value, std::string& error);

private:
    // liblo's lo_address, which is a void*.
    struct AddressFree {
        void operator()(void* address) const;
    };

    OscTarget target_;
    std::unique_ptr<void, AddressFree> address_;
};
