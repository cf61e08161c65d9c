#include "app/osc/OscAddress.h"
#include "app/osc/OscTarget.h"

#include <gtest/gtest.h>

namespace {

const std::string kNotHostPort = "is not HOST:PORT, for example 127.0.0.1:9000";
const std::string kPortRange = "the port must be 1 to 65535, for example 127.0.0.1:9000";

TEST(OscTarget, ReadsHostPortOrTellsWhatToType)
{
    const std::pair<std::string, std::string> cases[] = {
        {"127.0.0.1:9000", ""},
        {"a:1", ""},
        {"a:0", kPortRange},
        {"a:65535", ""},
        {"a:65536", kPortRange},
        {"a:99999999999999999999", kPortRange},
        {"[::1]:9000", ""},
        {"::1:9000", kNotHostPort},
        {"[]:9000", kNotHostPort},
        {"[::1]9000", kNotHostPort},
        {"[[::1]]:9000", kNotHostPort},
        {"a]:9000", kNotHostPort},
        {"a9000", kNotHostPort},
        {":9000", kNotHostPort},
        {"a:", kNotHostPort},
        {"a:9x", kNotHostPort},
        {"a:+9", kNotHostPort},
        {"my host:9000", kNotHostPort},
    };
    for (const auto& [text, expected] : cases) {
        SCOPED_TRACE(text);
        std::string error;
        const std::optional<OscTarget> target = ParseOscTarget(text, error);
        if (expected.empty()) {  // reads, and writes back the same text
            ASSERT_TRUE(target) << error;
            EXPECT_EQ(ToString(*target), text);
        } else {
            EXPECT_FALSE(target);
            EXPECT_NE(error.find("OSC target \"" + text + "\" "), std::string::npos) << error;
            EXPECT_NE(error.find(expected), std::string::npos) << error;
        }
    }
}

TEST(OscAddress, JoinsTheComponentsUnderTheRoot)
{
    EXPECT_EQ(OscAddressOf({}), "/TRVX/");
    EXPECT_EQ(OscAddressOf({"ID3", "SetVal", "Ctl7"}), "/TRVX/ID3/SetVal/Ctl7");
}

}  // namespace
