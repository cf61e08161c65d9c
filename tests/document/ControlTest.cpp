#include "FakeHost.h"
#include "FakeToolkit.h"
#include "document/ControlTables.h"
#include "document/OSCControl.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

namespace {

// A host with a window, so that test-mode values reach the fake toolkit.
struct TestMode : testing::Test {
    FakeHost host;
    int window = 0;
    void SetUp() override
    {
        Toolkit().Reset();
        host.hostWindow = &window;
    }
};

}  // namespace

TEST(Control, MadeFromAHostRecordIsGrayWithTheHostAddressAndNoNegativeCorner)
{
    const int corners[][4] = {{-1, 7, 0, 7}, {7, -1, 7, 0}};
    for (const auto& [x, y, expectedX, expectedY] : corners) {
        SCOPED_TRACE(testing::Message() << "corner " << x << "," << y);
        _OSCParms record{};
        std::memset(record.name, 'n', sizeof record.name);  // no terminator
        record.deviceNumber = 3;
        record.controlNumber = 12;
        record.x = static_cast<std::int16_t>(x);
        record.y = static_cast<std::int16_t>(y);
        record.width = 40;
        record.height = 120;
        record.minValue = -10;
        record.maxValue = 90;
        record.type = kFader;
        record.flags = 7;
        OSCControl control;
        control.SetOSCParms(&record);
        EXPECT_EQ(std::string(control.name), std::string(255, 'n'));
        EXPECT_STREQ(control.command, "/TRVX/ID3/SetVal/Ctl12");
        EXPECT_EQ(control.Rect(), (CRect{expectedX, expectedY, expectedX + 40, expectedY + 120}));
        EXPECT_EQ(std::tie(control.deviceId, control.controlNumber, control.minValue,
                           control.maxValue, control.type, control.flags, control.color),
                  std::make_tuple(3, 12, -10, 90, kFader, 7, kGray));
    }
}

// A control at (100, 200): faders and knobs clamp one unit inside the near
// edge and two inside the far one; toggles flip on a press, buttons send on a
// release, labels send nothing.
TEST_F(TestMode, EachTypeTurnsThePointerIntoItsValue)
{
    struct Case {
        const char* what;
        int type, width, height, minValue, maxValue, before, px, py, event, after;
        bool posted;
    };
    const Case cases[] = {
        {"wide fader, near edge", kFader, 50, 20, 10, 90, 0, 101, 0, kPointerMove, 10, true},
        {"wide fader, inside near", kFader, 50, 20, 10, 90, 0, 102, 0, kPointerMove, 13, true},
        {"wide fader, middle", kFader, 50, 20, 10, 90, 0, 125, 0, kPointerMove, 50, true},
        {"wide fader, inside far", kFader, 50, 20, 10, 90, 0, 147, 0, kPointerMove, 85, true},
        {"wide fader, far edge", kFader, 50, 20, 10, 90, 0, 148, 0, kPointerMove, 90, true},
        {"square fader is wide", kFader, 40, 40, 10, 90, 0, 101, 201, kPointerMove, 10, true},
        {"tall fader, middle", kFader, 39, 40, 10, 90, 0, 0, 220, kPointerUp, 50, true},
        {"knob, top edge", kKnob, 80, 40, 10, 90, 0, 0, 201, kPointerDown, 90, true},
        {"knob, inside top", kKnob, 80, 40, 10, 90, 0, 0, 202, kPointerDown, 86, true},
        {"knob, middle", kKnob, 80, 40, 10, 90, 0, 0, 220, kPointerDown, 50, true},
        {"knob, inside bottom", kKnob, 80, 40, 10, 90, 0, 0, 237, kPointerDown, 16, true},
        {"knob, bottom edge", kKnob, 80, 40, 10, 90, 0, 0, 238, kPointerDown, 10, true},
        {"full int range wraps", kFader, 1000, 10, INT_MIN, INT_MAX, 0, 600, 0, 1, INT_MIN, true},
        {"wide range", kFader, 1000, 10, 0, 1'000'000, 0, 600, 0, kPointerMove, 500'000, true},
        {"toggle pressed at min", kToggle, 9, 9, 10, 90, 10, 0, 0, kPointerDown, 90, true},
        {"toggle pressed at max", kToggle, 9, 9, 10, 90, 90, 0, 0, kPointerDown, 10, true},
        {"toggle moved", kToggle, 9, 9, 10, 90, 10, 0, 0, kPointerMove, 10, false},
        {"toggle released", kToggle, 9, 9, 10, 90, 10, 0, 0, kPointerUp, 10, false},
        {"button pressed", kPushButton, 9, 9, 10, 90, 42, 0, 0, kPointerDown, 42, false},
        {"button moved", kPushButton, 9, 9, 10, 90, 42, 0, 0, kPointerMove, 42, false},
        {"button released", kPushButton, 9, 9, 10, 90, 42, 0, 0, kPointerUp, 42, true},
        {"label", kLabel, 9, 9, 10, 90, 5, 0, 0, kPointerDown, 5, false},
        {"unknown type", 9, 9, 9, 10, 90, 5, 0, 0, kPointerMove, 5, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Toolkit().posts.clear();
        OSCControl control;
        std::tie(control.type, control.x, control.y, control.width, control.height) =
            std::make_tuple(c.type, 100, 200, c.width, c.height);
        std::tie(control.minValue, control.maxValue, control.value) =
            std::make_tuple(c.minValue, c.maxValue, c.before);
        control.SetVal(&host, c.px, c.py, c.event);
        EXPECT_EQ(control.value, c.after);
        ASSERT_EQ(Toolkit().posts.size(), c.posted ? 1u : 0u);
        if (c.posted) {
            EXPECT_EQ(Toolkit().posts[0].wParam, c.after);
            EXPECT_EQ(Toolkit().posts[0].window, &window);
            EXPECT_EQ(Toolkit().posts[0].message, WM_OSC_TESTVALUE);
        }
    }
}

TEST_F(TestMode, ValuesCarryTheAddressComponentsAfterTheSixCharacterPrefix)
{
    const std::pair<const char*, AddressComponents> cases[] = {
        {"/TRVX/ID3/SetVal/Ctl7", {"ID3", "SetVal", "Ctl7"}},
        {"/TRVX/a//b/", {"a", "", "b"}},
        {"/XYZW/", {}},
        {"/ab", {}},
        {"123456x", {"x"}},
    };
    for (const auto& [command, expected] : cases) {
        SCOPED_TRACE(command);
        Toolkit().posts.clear();
        OSCControl toggle;
        toggle.type = kToggle;
        std::strcpy(toggle.command, command);
        toggle.SetVal(&host, 0, 0, kPointerDown);
        ASSERT_EQ(Toolkit().posts.size(), 1u);
        EXPECT_EQ(Toolkit().posts[0].components, expected);
    }
}

TEST_F(TestMode, NothingIsSentWithoutAHostWindowAndARefusedPostLeaksNothing)
{
    OSCControl toggle;
    toggle.type = kToggle;
    host.hostWindow = nullptr;
    toggle.SetVal(&host, 0, 0, kPointerDown);
    EXPECT_EQ(toggle.value, 127);
    host.hostWindow = &window;
    Toolkit().refusePosts = true;
    toggle.SetVal(&host, 0, 0, kPointerDown);  // the sanitizer build checks for a leak
    EXPECT_EQ(toggle.value, 0);
    EXPECT_TRUE(Toolkit().posts.empty());
}
