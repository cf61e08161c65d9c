#include "OscReceiver.h"

#include <lo/lo.h>

#include <stdexcept>

OscReceiver::OscReceiver() : server_(lo_server_thread_new(nullptr, nullptr))
{
    if (server_ == nullptr)
        throw std::runtime_error("cannot open a UDP port for the OSC receiver");
    // Runs on liblo's thread.
    const auto keep = [](const char* path, const char* types, lo_arg** argv, int argc, lo_message,
                         void* self) {
        auto& receiver = *static_cast<OscReceiver*>(self);
        const std::int32_t value = argc > 0 && types[0] == LO_INT32 ? argv[0]->i : 0;
        {
            const std::lock_guard lock(receiver.mutex_);
            receiver.messages_.push_back({path, types, value});
        }
        receiver.arrived_.notify_all();
        return 0;
    };
    lo_server_thread_add_method(server_, nullptr, nullptr, keep, this);
    if (lo_server_thread_start(server_) != 0) {
        lo_server_thread_free(server_);
        throw std::runtime_error("cannot start the OSC receiver's thread");
    }
}

OscReceiver::~OscReceiver()
{
    lo_server_thread_free(server_);
}

int OscReceiver::Port() const
{
    return lo_server_thread_get_port(server_);
}

std::vector<OscReceiver::Message> OscReceiver::WaitFor(std::size_t count,
                                                       std::chrono::milliseconds timeout)
{
    std::unique_lock lock(mutex_);
    arrived_.wait_for(lock, timeout, [&] { return messages_.size() >= count; });
    return messages_;
}
