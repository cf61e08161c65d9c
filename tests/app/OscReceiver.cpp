#include "OscReceiver.h"

#include <lo/lo.h>

#include <stdexcept>

OscReceiver::OscReceiver() : server_(lo_server_new(nullptr, nullptr))
{
    if (server_ == nullptr)
        throw std::runtime_error("cannot open a UDP port for the OSC receiver");
    const auto keep = [](const char* path, const char* types, lo_arg** argv, int, lo_message,
                         void* self) {
        const std::string arguments = std::string_view(types) == "i"
                                          ? std::to_string(argv[0]->i)
                                          : '(' + std::string(types) + ')';
        static_cast<OscReceiver*>(self)->messages_.push_back(path + (' ' + arguments));
        return 0;
    };
    lo_server_add_method(server_, nullptr, nullptr, keep, this);
}

OscReceiver::~OscReceiver()
{
    lo_server_free(server_);
}

int OscReceiver::Port() const
{
    return lo_server_get_port(server_);
}

std::vector<std::string> OscReceiver::WaitFor(std::size_t count, std::chrono::milliseconds timeout)
{
    const auto end = std::chrono::steady_clock::now() + timeout;
    while (messages_.size() < count && std::chrono::steady_clock::now() < end)
        lo_server_recv_noblock(server_, 10);
    // And whatever else has come, so that a stray message shows.
    while (lo_server_recv_noblock(server_, 0) > 0) {
    }
    return messages_;
}
