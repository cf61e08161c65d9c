#include "app/osc/OscSender.h"
#include "tests/osc/OscReceiver.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Sent = std::vector<std::pair<std::string, std::int32_t>>;

OscTarget Loopback(const OscReceiver& receiver)
{
    return {"127.0.0.1", receiver.Port()};
}

void SendAll(OscSender& sender, const Sent& messages)
{
    for (const auto& [address, value] : messages) {
        std::string error;
        EXPECT_TRUE(sender.Send(address, value, error)) << error;
    }
}

void ExpectReceived(const std::vector<OscReceiver::Message>& received, const Sent& sent)
{
    ASSERT_EQ(received.size(), sent.size());
    for (std::size_t i = 0; i < sent.size(); ++i) {
        SCOPED_TRACE(sent[i].first);
        EXPECT_EQ(received[i].address, sent[i].first);
        EXPECT_EQ(received[i].types, "i");
        EXPECT_EQ(received[i].value, sent[i].second);
    }
}

TEST(OscSender, SendsEachValueAsOneInt32InOrder)
{
    OscReceiver receiver;
    OscSender sender(Loopback(receiver));
    const Sent sent = {{"/TRVX/ID3/SetVal/Ctl7", 0},
                       {"/TRVX/ID1/SetVal/Ctl1", std::numeric_limits<std::int32_t>::min()},
                       {"/TRVX/", std::numeric_limits<std::int32_t>::max()},
                       {"/TRVX/ID3/SetVal/Ctl7", -1}};
    SendAll(sender, sent);
    ExpectReceived(receiver.WaitFor(sent.size()), sent);
}

TEST(OscSender, SetTargetRedirectsTheFollowingMessages)
{
    OscReceiver first;
    OscReceiver second;
    OscSender sender(Loopback(first));
    SendAll(sender, {{"/TRVX/a", 1}});
    sender.SetTarget(Loopback(second));
    EXPECT_EQ(sender.Target().port, second.Port());
    SendAll(sender, {{"/TRVX/b", 2}});
    ExpectReceived(second.WaitFor(1), {{"/TRVX/b", 2}});
    // A stray second message would have come by now, the second receiver's having arrived.
    ExpectReceived(first.WaitFor(2, std::chrono::milliseconds(100)), {{"/TRVX/a", 1}});
}

TEST(OscSender, UnresolvableHostFailsNamingTheTarget)
{
    OscSender sender({"no-such-host.invalid", 9000});
    std::string error;
    EXPECT_FALSE(sender.Send("/TRVX/a", 1, error));
    EXPECT_NE(error.find("no-such-host.invalid:9000"), std::string::npos) << error;
}

}  // namespace
