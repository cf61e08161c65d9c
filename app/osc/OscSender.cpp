#include "OscSender.h"

#include <lo/lo.h>

#include <new>

std::string OscLibraryVersion()
{
    char version[32] = "";
    lo_version(version, sizeof version, nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr);
    return version;
}

void OscSender::AddressFree::operator()(void* address) const
{
    lo_address_free(static_cast<lo_address>(address));
}

OscSender::OscSender(const OscTarget& target)
{
    SetTarget(target);
}

OscSender::~OscSender() = default;

void OscSender::SetTarget(const OscTarget& target)
{
    // liblo resolves the host on the first send, and again on each send until it resolves.
    target_ = target;
    address_.reset(lo_address_new(target.host.c_str(), std::to_string(target.port).c_str()));
    if (!address_)
        throw std::bad_alloc();
}

const OscTarget& OscSender::Target() const
{
    return target_;
}

bool OscSender::Send(const std::string& address, std::int32_t value, std::string& error)
{
    const std::unique_ptr<void, void (*)(lo_message)> message(lo_message_new(), lo_message_free);
    lo_message_add_int32(message.get(), value);
    if (lo_send_message(address_.get(), address.c_str(), message.get()) >= 0)
        return true;
    error = "Could not send " + address + " to OSC target " + ToString(target_) + ": " +
            lo_address_errstr(address_.get()) + ".";
    return false;
}
