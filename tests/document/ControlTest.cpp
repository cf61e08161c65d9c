#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TestControls.h"
#include "TestFiles.h"
#include "document/ControlTables.h"
#include "document/OSCControl.h"
#include "document/TextField.h"
#include "document/Utf8Text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>

TEST(Control, MadeFromAHostRecordIsGrayWithTheHostAddressAndNoNegativeCorner)
{
    using Corner = std::pair<std::int16_t, std::int16_t>;
    for (const auto& [x, y] : {Corner{-1, 7}, Corner{7, -1}}) {
        SCOPED_TRACE(testing::Message() << "corner " << x << "," << y);
        _OSCParms record{{}, 3, 12, x, y, 40, 120, -10, 90, kFader, 7};
        std::memset(record.name, 'n', sizeof record.name);  // no terminator
        OSCControl control;
        control.SetOSCParms(&record);
        EXPECT_EQ(std::string(control.name), std::string(255, 'n'));
        EXPECT_STREQ(control.command, "/TRVX/ID3/SetVal/Ctl12");
        const CPoint corner{std::max<int>(x, 0), std::max<int>(y, 0)};
        EXPECT_EQ(control.Rect(), (CRect{corner.x, corner.y, corner.x + 40, corner.y + 120}));
        EXPECT_EQ(std::tie(control.deviceId, control.controlNumber, control.minValue,
                           control.maxValue, control.type, control.flags, control.color),
                  std::make_tuple(3, 12, -10, 90, kFader, 7, kGray));
    }
}

// A control at (100, 200): faders and knobs clamp one unit inside the near
// edge and two inside the far one; toggles flip on a press, buttons send on a
// release, labels send nothing. A value goes to the host's window, if it has
// one, with the address's components after its six-character prefix; a
// refused post must not leak them, which the sanitizer build checks.
TEST(Control, InTestModeEachTypeTurnsThePointerIntoItsValueAndSendsItWithTheAddress)
{
    const std::map<std::string, int> events{
        {"down", kPointerDown}, {"move", kPointerMove}, {"up", kPointerUp}};
    int window = 0;
    for (const nlohmann::json& c : Cases(DATA_DIR "/control.json", "testModeValues")) {
        SCOPED_TRACE(c["what"].get<std::string>());
        Toolkit().Reset();
        Toolkit().refusePosts = c.value("refused", false);
        FakeHost host;
        host.hostWindow = c.value("window", true) ? &window : nullptr;
        OSCControl control;
        std::tie(control.type, control.x, control.y, control.width, control.height) =
            std::make_tuple(c["type"], 100, 200, c["size"][0], c["size"][1]);
        std::tie(control.minValue, control.maxValue, control.value) =
            std::make_tuple(c["range"][0], c["range"][1], c["before"]);
        CopyTextField(control.command, c.value("command", ""));
        const int after = c["after"];
        control.SetVal(&host, c["pointer"][0], c["pointer"][1], events.at(c["event"]));
        EXPECT_EQ(control.value, after);
        ASSERT_EQ(Toolkit().posts.size(), c["posted"] ? 1u : 0u);
        if (c["posted"]) {
            const PostedMessage& posted = Toolkit().posts[0];
            EXPECT_EQ(std::tie(posted.wParam, posted.window, posted.message),
                      std::make_tuple(after, &window, WM_OSC_TESTVALUE));
            EXPECT_EQ(posted.components, c.value("components", AddressComponents()));
        }
    }
}

// A text too long for its field is cut between two characters when it is
// UTF-8 throughout, and at the field's end when it is not: "abcé" and what
// follows it, in a field of four bytes, keeps "abc" or "abc" and é's lead byte.
TEST(Control, ATextFieldCutsUtf8BetweenCharactersAndAnyOtherTextAtItsEnd)
{
    for (const nlohmann::json& c : Cases(DATA_DIR "/control.json", "textCuts")) {
        SCOPED_TRACE(c["what"].get<std::string>());
        char field[5];
        CopyTextField(field, "abc\xC3\xA9" + BytesOf(c["after"].get<std::string>()));
        EXPECT_EQ(std::string(field), c["valid"] ? "abc" : "abc\xC3");
    }
    EXPECT_FALSE(IsValidUtf8(std::string_view("\xE2\x82\xAC", 2)))
        << "nothing is read past the end";
}
