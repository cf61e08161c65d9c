#include "TestFiles.h"
#include "app/LayoutJson.h"
#include "document/TextField.h"

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
    json cases = Cases(DATA_DIR "/layout-json.json", "goodLayouts");
    for (const json& bad : Cases(DATA_DIR "/layout-json.json", "badLayouts"))
        cases.push_back(bad);
    std::string crowded = R"({"pages": [{"controls": [{})";
    for (int i = 1; i < 65536; ++i)
        crowded += ",{}";
    cases.push_back({{"text", crowded + "]}]}"},
                     {"error",
                      "pages[0].controls: 65536 controls do not fit; a layout file "
                      "holds at most 65535"}});
    for (const json& c : cases) {
        SCOPED_TRACE(c.value("what", c.value("error", "")));
        OSCProject project;
        project.device = 0;
        project.orientation = 0;
        CopyTextField(project.pages[0]->name, "Kept");
        const std::string before = WriteLayoutJson(project);
        std::string error;
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

}  // namespace
