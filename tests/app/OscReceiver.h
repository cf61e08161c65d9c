#pragma once

#include <chrono>
#include <string>
#include <vector>

// A liblo server on a free UDP port that keeps every message it receives, read while a test
// waits for them. liblo 0.31 listens on every interface; senders reach it at 127.0.0.1:Port().
class OscReceiver {
public:
    // Throws std::runtime_error when no port can be opened.
    OscReceiver();
    ~OscReceiver();
    OscReceiver(const OscReceiver&) = delete;
    OscReceiver& operator=(const OscReceiver&) = delete;

    int Port() const;
    // Waits until count messages arrived or timeout passed; returns every one received, in
    // order: "ADDRESS VALUE" for a message of one int32, "ADDRESS (TYPES)" for any other.
    std::vector<std::string> WaitFor(std::size_t count,
                                     std::chrono::milliseconds timeout = std::chrono::seconds(5));

private:
    void* server_;  // liblo's lo_server
    std::vector<std::string> messages_;
};
