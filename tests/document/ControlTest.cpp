#include "FakeHost.h"
#include "FakeToolkit.h"
#include "document/ControlTables.h"
#include "document/OSCControl.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

namespace {

_OSCParms Record(const char* name, int device, int control, int x, int y)
{
    _OSCParms record{};
    std::strcpy(record.name, name);
    record.deviceNumber = static_cast<std::int16_t>(device);
    record.controlNumber = static_cast<std::int16_t>(control);
    record.x = static_cast<std::int16_t>(x);
    record.y = static_cast<std::int16_t>(y);
    record.width = 40;
    record.height = 120;
    record.minValue = -10;
    record.maxValue = 90;
    record.type = kFader;
    record.flags = 7;
    return record;
}

// Sets the value of a control by one pointer event and returns what was posted.
struct Poster {
    FakeHost host;
    int window = 0;
    Poster()
    {
        Toolkit().Reset();
        host.hostWindow = &window;
    }
};

}  // namespace

TEST(Control, NewControlIsA32UnitLabelAtTheOrigin)
{
    const OSCControl control;
    EXPECT_STREQ(control.name, "");
    EXPECT_STREQ(control.command, "");
    EXPECT_EQ(control.Rect(), (CRect{0, 0, 32, 32}));
    EXPECT_EQ(control.minValue, 0);
    EXPECT_EQ(control.maxValue, 127);
    EXPECT_EQ(control.type, kLabel);
    EXPECT_EQ(control.color, 0);
    EXPECT_EQ(control.selected, 0);
    EXPECT_EQ(control.GetSize(), 41);
}

TEST(Control, MadeFromHostRecordIsGrayWithTheHostAddressAndNoNegativeCorner)
{
    OSCControl control;
    const _OSCParms record = Record("Vol", 3, 12, -5, 10);
    control.SetOSCParms(&record);
    EXPECT_STREQ(control.name, "Vol");
    EXPECT_STREQ(control.command, "/TRVX/ID3/SetVal/Ctl12");
    EXPECT_EQ(control.deviceId, 3);
    EXPECT_EQ(control.controlNumber, 12);
    EXPECT_EQ(control.Rect(), (CRect{0, 10, 40, 130}));
    EXPECT_EQ(control.minValue, -10);
    EXPECT_EQ(control.maxValue, 90);
    EXPECT_EQ(control.type, kFader);
    EXPECT_EQ(control.flags, 7);
    EXPECT_EQ(control.color, kGray);
    EXPECT_EQ(control.reserved1 | control.reserved2 | control.reserved3 | control.reserved4, 0);
}

TEST(Control, HostRecordNameWithoutTerminatorIsCutToTheField)
{
    _OSCParms record = Record("", 1, 1, 0, 0);
    std::memset(record.name, 'n', sizeof record.name);
    OSCControl control;
    control.SetOSCParms(&record);
    EXPECT_EQ(std::string(control.name), std::string(255, 'n'));
    EXPECT_EQ(control.GetSize(), 255 + 21 + 41);
}

TEST(Control, SizeCountsBothTexts)
{
    OSCControl control;
    std::strcpy(control.name, "Vol");
    std::strcpy(control.command, "/a");
    EXPECT_EQ(control.GetSize(), 46);
}

TEST(SetVal, HorizontalFaderClampsNearBothEnds)
{
    Poster poster;
    OSCControl fader;
    fader.type = kFader;
    fader.x = 100;
    fader.width = 50;
    fader.height = 20;
    const std::pair<int, int> cases[] = {{101, 0}, {147, 119}, {148, 127}, {125, 63}, {0, 0}};
    for (auto [px, expected] : cases) {
        fader.SetVal(&poster.host, px, 5, kPointerMove);
        EXPECT_EQ(fader.value, expected) << "px " << px;
    }
    EXPECT_EQ(Toolkit().posts.size(), 5u);
}

TEST(SetVal, KnobAndTallFaderHaveTheirMaximumOnTop)
{
    Poster poster;
    OSCControl knob;
    knob.type = kKnob;
    knob.width = 80;  // a knob counts as vertical whatever its shape
    knob.height = 40;
    knob.maxValue = 100;
    const std::pair<int, int> cases[] = {{1, 100}, {38, 0}, {20, 50}};
    for (auto [py, expected] : cases) {
        knob.SetVal(&poster.host, 5, py, kPointerDown);
        EXPECT_EQ(knob.value, expected) << "py " << py;
    }

    OSCControl fader = knob;
    fader.type = kFader;
    fader.width = 39;
    fader.SetVal(&poster.host, 5, 20, kPointerUp);
    EXPECT_EQ(fader.value, 50);
}

TEST(SetVal, SquareFaderCountsAsHorizontal)
{
    Poster poster;
    OSCControl fader;
    fader.type = kFader;
    fader.width = fader.height = 40;
    fader.SetVal(&poster.host, 1, 38, kPointerMove);
    EXPECT_EQ(fader.value, 0);  // left edge: minimum, though the bottom would give it too
    fader.SetVal(&poster.host, 38, 1, kPointerMove);
    EXPECT_EQ(fader.value, 127);
}

TEST(SetVal, ToggleFlipsOnPressOnly)
{
    Poster poster;
    OSCControl toggle;
    toggle.type = kToggle;
    toggle.SetVal(&poster.host, 0, 0, kPointerDown);
    EXPECT_EQ(toggle.value, 127);
    toggle.SetVal(&poster.host, 0, 0, kPointerMove);
    toggle.SetVal(&poster.host, 0, 0, kPointerUp);
    EXPECT_EQ(toggle.value, 127);
    toggle.SetVal(&poster.host, 0, 0, kPointerDown);
    EXPECT_EQ(toggle.value, 0);
    ASSERT_EQ(Toolkit().posts.size(), 2u);
    EXPECT_EQ(Toolkit().posts[0].wParam, 127);
    EXPECT_EQ(Toolkit().posts[1].wParam, 0);
}

TEST(SetVal, PushButtonSendsItsValueOnReleaseOnly)
{
    Poster poster;
    OSCControl button;
    button.type = kPushButton;
    button.value = 42;
    button.SetVal(&poster.host, 0, 0, kPointerDown);
    button.SetVal(&poster.host, 0, 0, kPointerMove);
    EXPECT_TRUE(Toolkit().posts.empty());
    button.SetVal(&poster.host, 0, 0, kPointerUp);
    ASSERT_EQ(Toolkit().posts.size(), 1u);
    EXPECT_EQ(Toolkit().posts[0].wParam, 42);
    EXPECT_EQ(button.value, 42);
}

TEST(SetVal, LabelsSendNothingAndUnknownTypesSendTheirValue)
{
    Poster poster;
    OSCControl label;
    label.SetVal(&poster.host, 10, 10, kPointerDown);
    EXPECT_TRUE(Toolkit().posts.empty());

    OSCControl odd;
    odd.type = 9;
    odd.value = 5;
    odd.SetVal(&poster.host, 10, 10, kPointerMove);
    ASSERT_EQ(Toolkit().posts.size(), 1u);
    EXPECT_EQ(Toolkit().posts[0].wParam, 5);
}

TEST(SetVal, PostsAddressComponentsAfterTheSixCharacterPrefix)
{
    Poster poster;
    OSCControl toggle;
    toggle.type = kToggle;
    const std::pair<const char*, AddressComponents> cases[] = {
        {"/TRVX/ID3/SetVal/Ctl7", {"ID3", "SetVal", "Ctl7"}},
        {"/TRVX/a//b/", {"a", "", "b"}},
        {"/XYZW/", {}},
        {"/ab", {}},
        {"123456x", {"x"}},
    };
    for (const auto& [command, expected] : cases) {
        Toolkit().posts.clear();
        std::strcpy(toggle.command, command);
        toggle.SetVal(&poster.host, 0, 0, kPointerDown);
        ASSERT_EQ(Toolkit().posts.size(), 1u) << command;
        const PostedMessage& post = Toolkit().posts[0];
        EXPECT_EQ(post.window, &poster.window);
        EXPECT_EQ(post.message, WM_OSC_TESTVALUE);
        EXPECT_EQ(post.components, expected) << command;
    }
}

TEST(SetVal, NothingIsSentWithoutAHostWindowAndARefusedPostLeaksNothing)
{
    Poster poster;
    OSCControl toggle;
    toggle.type = kToggle;
    poster.host.hostWindow = nullptr;
    toggle.SetVal(&poster.host, 0, 0, kPointerDown);
    EXPECT_EQ(toggle.value, 127);
    EXPECT_TRUE(Toolkit().posts.empty());

    poster.host.hostWindow = &poster.window;
    Toolkit().refusePosts = true;
    toggle.SetVal(&poster.host, 0, 0, kPointerDown);  // the sanitizer build checks for a leak
    EXPECT_TRUE(Toolkit().posts.empty());
}

TEST(SetVal, WideRangesWrapInsteadOfOverflowing)
{
    Poster poster;
    OSCControl fader;
    fader.type = kFader;
    fader.width = 1000;
    fader.height = 10;
    fader.minValue = INT_MIN;
    fader.maxValue = INT_MAX;
    fader.SetVal(&poster.host, 500, 0, kPointerMove);  // the sanitizer build catches overflow
    fader.minValue = 0;
    fader.maxValue = 1'000'000;
    fader.SetVal(&poster.host, 500, 0, kPointerMove);
    EXPECT_EQ(fader.value, 500'000);
}

TEST(SearchAndReplace, ReplacesTheFirstCaseSensitiveOccurrenceInEachChosenField)
{
    OSCControl control;
    std::strcpy(control.command, "/TRVX/ID1/SetVal/Ctl1");
    std::strcpy(control.name, "aXaX");

    control.SearchAndReplace("ctl", "Cc", true, true);
    EXPECT_STREQ(control.command, "/TRVX/ID1/SetVal/Ctl1");
    control.SearchAndReplace("Ctl", "Cc", true, true);
    EXPECT_STREQ(control.command, "/TRVX/ID1/SetVal/Cc1");
    control.SearchAndReplace("X", "Y", true, false);
    EXPECT_STREQ(control.name, "aYaX");
    control.SearchAndReplace("a", "b", false, false);
    EXPECT_STREQ(control.name, "aYaX");
}

TEST(SearchAndReplace, ResultLongerThanTheFieldIsCut)
{
    OSCControl control;
    std::memset(control.name, 'x', 200);
    control.name[200] = '\0';
    control.SearchAndReplace("x", std::string(100, 'y'), true, false);
    EXPECT_EQ(std::strlen(control.name), 255u);
    EXPECT_EQ(std::string(control.name, 100), std::string(100, 'y'));
}
