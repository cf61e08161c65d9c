// The sender against a real receiver on a loopback port.
#include "app/osc/OscSender.h"
#include "tests/osc/OscReceiver.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Sent = std::vector<std::pair<std::string, std::int32_t>>;

void SendAll(OscSender& sender, const Sent& messages)
{
    for (const auto& [address, value] : messages) {
        std::string error;
        EXPECT_TRUE(sender.Send(address, value, error)) << error;
    }
}

// What arrived, each checked to be one int32.
Sent Received(OscReceiver& receiver, std::size_t count,
              std::chrono::milliseconds timeout = std::chrono::seconds(5))
{
    Sent received;
    for (const OscReceiver::Message& m : receiver.WaitFor(count, timeout)) {
        EXPECT_EQ(m.types, "i") << m.address;
        received.emplace_back(m.address, m.value);
    }
    return received;
}

TEST(OscSender, SendsEachValueAsOneInt32InOrder)
{
    OscReceiver receiver;
    OscSender sender({"127.0.0.1", receiver.Port()});
    const Sent sent = {{"/TRVX/ID3/SetVal/Ctl7", 0},
                       {"/TRVX/ID1/SetVal/Ctl1", std::numeric_limits<std::int32_t>::min()},
                       {"/TRVX/", std::numeric_limits<std::int32_t>::max()},
                       {"/TRVX/ID3/SetVal/Ctl7", -1}};
    SendAll(sender, sent);
    EXPECT_EQ(Received(receiver, sent.size()), sent);
}

TEST(OscSender, ANewTargetTakesTheFollowingMessages)
{
    OscReceiver first, second;
    OscSender sender({"127.0.0.1", first.Port()});
    SendAll(sender, {{"/TRVX/a", 1}});
    sender.SetTarget({"127.0.0.1", second.Port()});
    EXPECT_EQ(sender.Target().port, second.Port());
    SendAll(sender, {{"/TRVX/b", 2}});
    EXPECT_EQ(Received(second, 1), (Sent{{"/TRVX/b", 2}}));
    // A stray second message would have come by now, the second receiver's having arrived.
    EXPECT_EQ(Received(first, 2, std::chrono::milliseconds(100)), (Sent{{"/TRVX/a", 1}}));
}

TEST(OscSender, AHostThatDoesNotResolveFailsNamingTheTarget)
{
    OscSender sender({"no-such-host.invalid", 9000});
    std::string error;
    EXPECT_FALSE(sender.Send("/TRVX/a", 1, error));
    EXPECT_NE(error.find("no-such-host.invalid:9000"), std::string::npos) << error;
}

}  // namespace
