#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

// A liblo server thread on a free UDP port that keeps every message it receives. liblo 0.31
// listens on every interface; senders reach it at 127.0.0.1:Port().
class OscReceiver {
public:
    struct Message {
        std::string address;
        std::string types;
        std::int32_t value;  // the first argument when it is an int32, else 0
    };

    // Starts listening; throws std::runtime_error when no port can be opened.
    OscReceiver();
    ~OscReceiver();
    OscReceiver(const OscReceiver&) = delete;
    OscReceiver& operator=(const OscReceiver&) = delete;

    int Port() const;

    // Waits until count messages arrived or timeout passed; returns all received so far, in order.
    std::vector<Message> WaitFor(std::size_t count,
                                 std::chrono::milliseconds timeout = std::chrono::seconds(5));

private:
    void* server_;  // liblo's lo_server_thread
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::vector<Message> messages_;
};
