#include "app/LayoutJson.h"
#include "document/TextField.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;

std::string ReadError(const std::string& text)
{
    OSCProject project;
    std::string error;
    EXPECT_FALSE(ReadLayoutJson(text, project, error)) << text;
    return error;
}

std::string OneControl(const std::string& fields)
{
    return R"({"pages": [{"controls": [{}, )" + fields + "]}]}";
}

TEST(LayoutJson, MissingFieldsTakeTheDefaultsOfANewLayout)
{
    OSCProject project;
    project.device = 0;
    project.orientation = 0;
    std::string error;
    ASSERT_TRUE(ReadLayoutJson(R"({"pages": [{}, {"controls": [{}]}]})", project, error)) << error;
    EXPECT_EQ(project.device, 1);
    EXPECT_EQ(project.orientation, 1);
    ASSERT_EQ(project.pages.size(), 2u);
    EXPECT_EQ(TextOf(project.pages[0]->name), "Page 1");
    EXPECT_TRUE(project.pages[0]->controls.empty());
    // Every control field as a new control has it.
    OSCProject expected;
    expected.pages.push_back(std::make_unique<OSCPage>());
    expected.pages[1]->controls.push_back(std::make_unique<OSCControl>());
    EXPECT_EQ(WriteLayoutJson(project), WriteLayoutJson(expected));
}

TEST(LayoutJson, NamesAreReadInAnyCaseAndNumbersOutsideTheTablesStayNumbers)
{
    OSCProject project;
    std::string error;
    ASSERT_TRUE(ReadLayoutJson(R"({"device": "IPHONE/ipod touch", "orientation": "vertical",
        "pages": [{"controls": [{"type": "push button", "color": "PINK"},
                                {"type": 9, "color": 255}, {"type": 2, "color": 9}]}]})",
                               project, error))
        << error;
    EXPECT_EQ(project.device, 0);
    EXPECT_EQ(project.orientation, 0);
    const auto& controls = project.pages[0]->controls;
    EXPECT_EQ(controls[0]->type, 4);
    EXPECT_EQ(controls[0]->color, 8);
    EXPECT_EQ(controls[1]->type, 9);
    EXPECT_EQ(controls[1]->color, 255);

    const json written = json::parse(WriteLayoutJson(project));
    EXPECT_EQ(written["device"], "iPhone/iPod Touch");
    EXPECT_EQ(written["orientation"], "Vertical");
    const json& list = written["pages"][0]["controls"];
    EXPECT_EQ(list[0]["type"], "Push Button");
    EXPECT_EQ(list[0]["color"], "pink");
    EXPECT_EQ(list[1]["type"], 9);
    EXPECT_EQ(list[1]["color"], 255);
    EXPECT_EQ(list[2]["type"], "Knob");
    EXPECT_EQ(list[2]["color"], 9);
}

TEST(LayoutJson, InvalidUtf8IsWrittenAsOneReplacementCharacterPerByte)
{
    OSCProject project;
    auto control = std::make_unique<OSCControl>();
    // A lone continuation byte, a cut three-byte sequence, an overlong form, a
    // surrogate, and good text between them.
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

TEST(LayoutJson, BadValuesAreRefusedWithTheirPlace)
{
    EXPECT_EQ(ReadError(OneControl(R"({"x": 32768})")),
              "pages[0].controls[1].x: 32768 does not fit; use a whole number from -32768 to "
              "32767");
    EXPECT_EQ(ReadError(OneControl(R"({"minValue": -2147483649})")),
              "pages[0].controls[1].minValue: -2147483649 does not fit; use a whole number from "
              "-2147483648 to 2147483647");
    EXPECT_EQ(ReadError(OneControl(R"({"flags": 256})")),
              "pages[0].controls[1].flags: 256 does not fit; use a whole number from 0 to 255");
    EXPECT_EQ(ReadError(OneControl(R"({"color": -1})")),
              "pages[0].controls[1].color: -1 does not fit; use a whole number from 0 to 255");
    EXPECT_EQ(ReadError(OneControl(R"({"y": 1.5})")),
              "pages[0].controls[1].y: 1.5 is not a whole number; use a whole number from "
              "-32768 to 32767");
    EXPECT_EQ(ReadError(OneControl(R"({"type": "Slider"})")),
              "pages[0].controls[1].type: unknown type \"Slider\"; use \"Label\", \"Fader\", "
              "\"Knob\", \"Toggle\", \"Push Button\", or a number from 0 to 255");
    EXPECT_EQ(ReadError(OneControl(R"({"colour": 1})")),
              "pages[0].controls[1].colour: unknown field \"colour\"");
    EXPECT_EQ(ReadError(OneControl(R"({"name": 7})")),
              "pages[0].controls[1].name: expected a text in double quotes, found 7");
    EXPECT_EQ(ReadError(OneControl(R"({"command": "a\u0000b"})")),
              "pages[0].controls[1].command: a text cannot hold the character \\u0000");
    EXPECT_EQ(ReadError(R"({"pages": [{"name": ")" + std::string(256, 'n') + "\"}]}"),
              "pages[0].name: the text is 256 bytes long; at most 255 bytes fit");
    // Limits count bytes: 128 two-byte characters do not fit.
    std::string accents;
    for (int i = 0; i < 128; ++i)
        accents += "\xC3\xA9";
    EXPECT_EQ(ReadError(R"({"pages": [{"name": ")" + accents + "\"}]}"),
              "pages[0].name: the text is 256 bytes long; at most 255 bytes fit");
    std::string crowded = R"({"pages": [{"controls": [{})";
    for (int i = 1; i < 65536; ++i)
        crowded += ",{}";
    EXPECT_EQ(ReadError(crowded + "]}]}"),
              "pages[0].controls: 65536 controls do not fit; a layout file holds at most 65535");
    EXPECT_EQ(ReadError(R"({"pages": []})"),
              "pages: the list is empty; a layout has at least one page");
    EXPECT_EQ(ReadError(R"({"device": "iPad"})"),
              "layout: \"pages\" is missing; a layout has at least one page");
    EXPECT_EQ(ReadError(R"({"pages": [{}], "device": "Android"})"),
              "device: unknown device \"Android\"; use \"iPhone/iPod Touch\", \"iPad\", or a "
              "number from 0 to 255");
    EXPECT_EQ(ReadError(R"([1, 2])"),
              "layout: expected an object with \"device\", \"orientation\" and \"pages\"");
    EXPECT_EQ(ReadError(R"({"pages": {"name": "A very long name that is cut short"}})"),
              "pages: expected a list of pages, found {\"name\":\"A very long name that is cut...");
    EXPECT_EQ(ReadError(R"({"pages": [{"controls": {}}]})"),
              "pages[0].controls: expected a list of controls, found {}");
    EXPECT_EQ(ReadError("{\"pages\": [{}]\n"),
              "parse error at line 2, column 1: syntax error while parsing object - unexpected "
              "end of input; expected '}'");
}

TEST(LayoutJson, AFailedReadLeavesTheProjectAsItWas)
{
    OSCProject project;
    project.device = 0;
    CopyTextField(project.pages[0]->name, "Kept");
    std::string error;
    EXPECT_FALSE(ReadLayoutJson(
        R"({"device": "iPad", "pages": [{"name": "New"}, {"controls": [{"x": 1e9}]}]})", project,
        error));
    EXPECT_EQ(project.device, 0);
    ASSERT_EQ(project.pages.size(), 1u);
    EXPECT_EQ(TextOf(project.pages[0]->name), "Kept");
}

}  // namespace
