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
    const auto control = [](const std::string& fields) {
        return R"({"pages": [{"controls": [{}, )" + fields + "]}]}";
    };
    std::string crowded = R"({"pages": [{"controls": [{})";
    for (int i = 1; i < 65536; ++i)
        crowded += ",{}";
    const std::string at = "pages[0].controls[1].";
    const std::pair<std::string, std::string> cases[] = {
        {control(R"({"x": 32768})"),
         at + "x: 32768 does not fit; use a whole number from -32768 to 32767"},
        {control(R"({"minValue": -2147483649})"),
         at + "minValue: -2147483649 does not fit; use a whole number from -2147483648 to "
              "2147483647"},
        {control(R"({"flags": 256})"),
         at + "flags: 256 does not fit; use a whole number from 0 to 255"},
        {control(R"({"color": -1})"),
         at + "color: -1 does not fit; use a whole number from 0 to 255"},
        {control(R"({"y": 1.5})"),
         at + "y: 1.5 is not a whole number; use a whole number from -32768 to 32767"},
        {control(R"({"type": "Slider"})"),
         at + "type: unknown type \"Slider\"; use \"Label\", \"Fader\", \"Knob\", \"Toggle\", "
              "\"Push Button\", or a number from 0 to 255"},
        {control(R"({"colour": 1})"), at + "colour: unknown field \"colour\""},
        {control(R"({"name": 7})"), at + "name: expected a text in double quotes, found 7"},
        {control(R"({"command": "a\u0000b"})"),
         at + "command: a text cannot hold the character \\u0000"},
        {R"({"pages": [{"name": ")" + std::string(256, 'n') + "\"}]}",
         "pages[0].name: the text is 256 bytes long; at most 255 bytes fit"},
        {crowded + "]}]}",
         "pages[0].controls: 65536 controls do not fit; a layout file holds at most 65535"},
        {R"({"pages": []})", "pages: the list is empty; a layout has at least one page"},
        {R"({"device": "iPad"})", "layout: \"pages\" is missing; a layout has at least one page"},
        {R"({"pages": [{}], "device": "Android"})",
         "device: unknown device \"Android\"; use \"iPhone/iPod Touch\", \"iPad\", or a number "
         "from 0 to 255"},
        {R"([1, 2])", "layout: expected an object with \"device\", \"orientation\" and \"pages\""},
        {R"({"pages": {"name": "A very long name that is cut short"}})",
         "pages: expected a list of pages, found {\"name\":\"A very long name that is cut..."},
        {R"({"pages": [{"controls": {}}]})",
         "pages[0].controls: expected a list of controls, found {}"},
        {"{\"pages\": [{}]\n",
         "parse error at line 2, column 1: syntax error while parsing object - unexpected end "
         "of input; expected '}'"},
        {R"({"device": "iPhone/iPod Touch", "pages": [{"name": "New"}, {"controls": [{"x": 1e9}]}]})",
         "pages[1].controls[0].x: 1000000000.0 is not a whole number; use a whole number from "
         "-32768 to 32767"},
    };
    for (const auto& [text, expected] : cases) {
        SCOPED_TRACE(expected);
        OSCProject project;
        CopyTextField(project.pages[0]->name, "Kept");
        const std::string before = WriteLayoutJson(project);
        std::string error;
        EXPECT_FALSE(ReadLayoutJson(text, project, error));
        EXPECT_EQ(error, expected);
        EXPECT_EQ(WriteLayoutJson(project), before);
    }
}

}  // namespace
