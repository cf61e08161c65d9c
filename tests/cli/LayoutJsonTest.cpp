#include "TestFiles.h"
#include "app/LayoutJson.h"
#include "document/TextField.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;

TEST(LayoutJson, MissingFieldsTakeTheValuesOfANewLayout)
{
    OSCProject project;
    project.device = 0;
    project.orientation = 0;
    std::string error;
    ASSERT_TRUE(ReadLayoutJson(R"({"pages": [{}, {"controls": [{}]}]})", project, error)) << error;
    OSCProject expected;
    expected.pages.push_back(std::make_unique<OSCPage>());
    expected.pages[1]->controls.push_back(std::make_unique<OSCControl>());
    EXPECT_EQ(WriteLayoutJson(project), WriteLayoutJson(expected));
}

TEST(LayoutJson, NamesAreReadInAnyCaseAndNumbersWithoutANameStayNumbers)
{
    OSCProject project;
    std::string error;
    ASSERT_TRUE(ReadLayoutJson(R"({"device": "IPHONE/ipod touch", "orientation": "vertical",
        "pages": [{"controls": [{"type": "push button", "color": "PINK"},
                                {"type": 9, "color": 255}, {"type": 2, "color": 9}]}]})",
                               project, error))
        << error;
    EXPECT_EQ(project.pages[0]->controls[0]->type, 4);
    EXPECT_EQ(project.pages[0]->controls[0]->color, 8);
    const json written = json::parse(WriteLayoutJson(project));
    EXPECT_EQ(written["device"], "iPhone/iPod Touch");
    EXPECT_EQ(written["orientation"], "Vertical");
    const json& list = written["pages"][0]["controls"];
    const std::pair<json, json> typesAndColours[] = {
        {"Push Button", "pink"}, {9, 255}, {"Knob", 9}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(list[i]["type"], typesAndColours[i].first) << i;
        EXPECT_EQ(list[i]["color"], typesAndColours[i].second) << i;
    }
}

// A lone continuation byte, a cut three-byte sequence, an overlong form, a
// surrogate, and good text between them.
TEST(LayoutJson, InvalidUtf8IsWrittenAsOneReplacementCharacterPerByte)
{
    OSCProject project;
    auto control = std::make_unique<OSCControl>();
    CopyTextField(control->name, "a\x80z\xE2\x82q\xC0\xAF\xED\xA0\x80\xC3\xA9");
    CopyTextField(control->command, "\xFF");
    CopyTextField(project.pages[0]->name, "\xF0\x9F\x8E\x9A ok");
    project.pages[0]->controls.push_back(std::move(control));

    const json written = json::parse(WriteLayoutJson(project));
    const std::string r = "\xEF\xBF\xBD";
    EXPECT_EQ(written["pages"][0]["controls"][0]["name"],
              "a" + r + "z" + r + r + "q" + r + r + r + r + r + "\xC3\xA9");
    EXPECT_EQ(written["pages"][0]["controls"][0]["command"], r);
    EXPECT_EQ(written["pages"][0]["name"], "\xF0\x9F\x8E\x9A ok");
}

// One line says what is wrong and where; the project stays as it was.
TEST(LayoutJson, BadValuesAreRefusedWithTheirPlace)
{
    json cases = Cases(DATA_DIR "/layout-json.json", "badLayouts");
    std::string crowded = R"({"pages": [{"controls": [{})";
    for (int i = 1; i < 65536; ++i)
        crowded += ",{}";
    cases.push_back({{"text", crowded + "]}]}"},
                     {"error",
                      "pages[0].controls: 65536 controls do not fit; a layout file "
                      "holds at most 65535"}});
    for (const json& c : cases) {
        const std::string expected = c["error"];
        SCOPED_TRACE(expected);
        OSCProject project;
        CopyTextField(project.pages[0]->name, "Kept");
        const std::string before = WriteLayoutJson(project);
        std::string error;
        EXPECT_FALSE(ReadLayoutJson(c["text"].get<std::string>(), project, error));
        EXPECT_EQ(error, expected);
        EXPECT_EQ(WriteLayoutJson(project), before);
    }
}

}  // namespace
