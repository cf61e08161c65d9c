#include "TestControls.h"
#include "TestFiles.h"
#include "document/TextField.h"
#include "formats/json/LayoutJson.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;

// Each layout is read into an iPhone project held upright with one page
// "Kept": a good one is written back as the case says, whatever the project
// held; a bad one is refused with one line that says what is wrong and where,
// and the project stays as it was.
TEST(LayoutJson, GoodLayoutsAreWrittenBackInFullAndBadOnesAreRefusedWithTheirPlace)
{
    json cases = Cases(DATA_DIR "/layout-json.json", "layouts");
    const json crowded = {{"pages", {{{"controls", json(65536, json::object())}}}}};
    cases.push_back(
        {{"text", crowded.dump()},
         {"error",
          "pages[0].controls: 65536 controls do not fit; a layout file holds at most 65535"}});
    for (const json& c : cases) {
        SCOPED_TRACE(c.value("what", c.value("error", "")));
        OSCProject project;
        std::string error;
        ASSERT_TRUE(ReadLayoutJson(
            R"({"device": 0, "orientation": 0, "pages": [{"name": "Kept"}]})", project, error));
        const std::string before = WriteLayoutJson(project);
        const bool read = ReadLayoutJson(c["text"].get<std::string>(), project, error);
        EXPECT_EQ(read, !c.contains("error"));
        EXPECT_EQ(error, c.value("error", ""));
        if (read)
            EXPECT_EQ(json::parse(WriteLayoutJson(project)), c["written"]);
        else
            EXPECT_EQ(WriteLayoutJson(project), before);
    }
}

// A lone continuation byte, a cut three-byte sequence, an overlong form, a
// surrogate, and after them good characters, among them the first and last of
// each length and those just inside the surrogates and the end of Unicode.
TEST(LayoutJson, InvalidUtf8IsWrittenAsOneReplacementCharacterPerByte)
{
    OSCProject project;
    OSCControl& control = AddControl(*project.pages[0], {{"at", {0, 0, 1, 1}}});
    const std::string good =
        "\xC3\xA9\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEF\xBF\xBF"
        "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    CopyTextField(control.command, "a\x80z\xE2\x82q\xC0\xAF\xED\xA0\x80" + good);
    CopyTextField(project.pages[0]->name, "\xFF");
    const json page = json::parse(WriteLayoutJson(project))["pages"][0];
    const std::string r = "\xEF\xBF\xBD";
    EXPECT_EQ(page["controls"][0]["command"],
              "a" + r + "z" + r + r + "q" + r + r + r + r + r + good);
    EXPECT_EQ(page["name"], r);
}

}  // namespace
