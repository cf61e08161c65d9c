#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TempFolder.h"
#include "TestFiles.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "formats/ImportReport.h"
#include "formats/json/LayoutJson.h"
#include "formats/touchosc/TouchOSCExport.h"
#include "formats/touchosc/TouchOSCImport.h"

#include <gtest/gtest.h>

#include <random>

using nlohmann::json;

namespace {

const char kCases[] = DATA_DIR "/touchosc-import.json";
const char kSamples[] = DATA_DIR "/touchosc-samples.json";

// Every key of expected has the same value in actual.
void ExpectFields(const json& actual, const json& expected)
{
    for (const auto& [key, value] : expected.items())
        EXPECT_EQ(actual[key], value) << key;
}

// The project as JSON, the report as its lines.
std::pair<json, std::vector<std::string>> Imported(std::string xml, const ImportLimits& limits = {})
{
    OSCProject project;
    ImportReport report;
    std::string error;
    EXPECT_TRUE(ReadTouchOSCXml(xml, project, report, error, limits)) << error;
    return {json::parse(WriteLayoutJson(project)), report.Lines()};
}

// Names of one to four bytes a character, of every length modulo 3, so that
// their base64 needs no padding, one or two characters of it.
std::string RandomText(std::mt19937& random, int maxCharacters)
{
    static const char* const kCharacters[] = {"a", "Z", "0",  " ",  "/",    "\"",   "&", "<",
                                              "é", "ß", "日", "ノ", "🎛", "🎚", "+", "="};
    std::string text;
    const int count = std::uniform_int_distribution(0, maxCharacters)(random);
    for (int i = 0; i < count; ++i)
        text += kCharacters[std::uniform_int_distribution(0, 15)(random)];
    return text;
}

// Addresses stay within what the export writes as well-formed XML: it does not
// escape them. Some name the host's device and control numbers.
void RandomAddress(std::mt19937& random, OSCControl& control)
{
    std::string address = "/";
    if (std::uniform_int_distribution(0, 2)(random) == 0) {
        control.deviceId =
            static_cast<std::int16_t>(std::uniform_int_distribution(-5, 999)(random));
        control.controlNumber =
            static_cast<std::int16_t>(std::uniform_int_distribution(0, 32767)(random));
        address = "/TRVX/ID" + std::to_string(control.deviceId) + "/SetVal/Ctl" +
                  std::to_string(control.controlNumber);
    } else {
        for (int i = std::uniform_int_distribution(0, 30)(random); i > 0; --i)
            address += static_cast<char>('a' + std::uniform_int_distribution(0, 25)(random));
    }
    CopyTextField(control.command, address);
}

// A layout holding what the TouchOSC format carries: ranges of the types
// without an inverted mark come back in order, and the export keeps whole
// numbers as floats only up to 2^24.
OSCProject RandomLayout(std::mt19937& random, int device, int orientation)
{
    OSCProject project;
    project.device = static_cast<std::uint8_t>(device);
    project.orientation = static_cast<std::uint8_t>(orientation);
    project.pages.clear();
    const auto number = [&](int low, int high) {
        return std::uniform_int_distribution(low, high)(random);
    };
    for (int p = number(1, 3); p > 0; --p) {
        auto& page = *project.pages.emplace_back(std::make_unique<OSCPage>());
        CopyTextField(page.name, RandomText(random, 12));
        for (int c = number(0, 12); c > 0; --c) {
            auto& control = *page.controls.emplace_back(std::make_unique<OSCControl>());
            CopyTextField(control.name, RandomText(random, 40));
            RandomAddress(random, control);
            control.type = static_cast<std::uint8_t>(number(0, kControlTypeCount - 1));
            control.color = static_cast<std::uint8_t>(number(0, kNamedColorCount - 1));
            control.x = static_cast<std::int16_t>(number(-500, 2000));
            control.y = static_cast<std::int16_t>(number(-500, 2000));
            control.width = static_cast<std::int16_t>(number(0, 1000));
            control.height = static_cast<std::int16_t>(number(0, 1000));
            control.minValue = number(-(1 << 24), 1 << 24);
            control.maxValue = number(-(1 << 24), 1 << 24);
            if (control.type != kFader && control.type != kKnob &&
                control.maxValue < control.minValue)
                std::swap(control.minValue, control.maxValue);
        }
    }
    return project;
}

TEST(TouchOSCImport, RandomLayoutsExportedByTheEditorComeBackTheSameOnEveryScreen)
{
    std::mt19937 random(20261125);
    for (int device = 0; device < kDeviceCount; ++device) {
        for (int orientation = 0; orientation < kOrientationCount; ++orientation) {
            for (int round = 0; round < 25; ++round) {
                SCOPED_TRACE(testing::Message() << device << orientation << " round " << round);
                const OSCProject layout = RandomLayout(random, device, orientation);
                const std::string xml =
                    Captured([&](std::FILE* out) { WriteTouchOSCXml(out, layout); });
                const auto [project, report] = Imported(xml);
                EXPECT_EQ(project, json::parse(WriteLayoutJson(layout))) << xml;
                EXPECT_TRUE(report.empty());
            }
        }
    }
}

// The archive the export writes, read back whole.
TEST(TouchOSCImport, TheEditorsOwnArchiveIsReadBack)
{
    std::mt19937 random(7);
    Toolkit().Reset();
    TempFolder temp;
    FakeHost host;
    host.dataFolder = temp.path().string();
    OSCProject layout = RandomLayout(random, kIPhone, kHorizontal);
    const std::string path = temp / "layout.touchosc";
    layout.ExportTouchOSCFile(&host, path.c_str());

    OSCProject project;
    ImportReport report;
    std::string error;
    ASSERT_TRUE(ReadTouchOSCFile(ReadWholeFile(path).value_or(""), project, report, error))
        << error;
    EXPECT_EQ(WriteLayoutJson(project), WriteLayoutJson(layout));
}

TEST(TouchOSCImport, EachRuleGivesTheLayoutAndReportItsCaseSays)
{
    for (const json& c : Cases(kCases, "rules")) {
        SCOPED_TRACE(c["rule"].get<std::string>());
        const auto [project, report] = Imported(c["xml"]);
        EXPECT_EQ(project["device"], c.value("device", "iPhone/iPod Touch"));
        EXPECT_EQ(project["orientation"], c.value("orientation", "Vertical"));
        ASSERT_EQ(project["pages"].size(), c["pages"].size());
        for (std::size_t p = 0; p < c["pages"].size(); ++p) {
            const json& page = project["pages"][p];
            const json& expected = c["pages"][p];
            EXPECT_EQ(page["name"], expected["name"]);
            ASSERT_EQ(page["controls"].size(), expected["controls"].size());
            for (std::size_t i = 0; i < expected["controls"].size(); ++i) {
                SCOPED_TRACE(i);
                ExpectFields(page["controls"][i], expected["controls"][i]);
            }
        }
        EXPECT_EQ(report, c.value("report", std::vector<std::string>()));
    }
}

// Each limit in pairs, the last value read and the first refused.
TEST(TouchOSCImport, AFileBeyondALimitIsRefusedSayingWhichAndTheProjectIsKept)
{
    for (const json& c : Cases(kCases, "refused")) {
        std::string xml = c["xml"];
        SCOPED_TRACE(xml);
        ImportLimits limits;
        const json given = c.value("limits", json::object());
        limits.maxCount = given.value("maxCount", limits.maxCount);
        limits.maxDepth = given.value("maxDepth", limits.maxDepth);
        OSCProject project;
        CopyTextField(project.pages[0]->name, "kept");
        ImportReport report;
        std::string error;
        EXPECT_EQ(ReadTouchOSCXml(xml, project, report, error, limits), !c.contains("error"));
        EXPECT_EQ(error, c.value("error", ""));
        if (c.contains("error")) {
            EXPECT_EQ(TextOf(project.pages[0]->name), "kept");
        }
    }
}

// The size of index.xml is checked before it is inflated, to the byte.
TEST(TouchOSCImport, AnIndexLargerThanTheLimitIsRefusedBeforeItIsParsed)
{
    TempFolder temp;
    const std::string xml = "<layout><tabpage/></layout>";
    WriteZip(temp / "a.touchosc", {{"index.xml", xml}});
    const std::string bytes = ReadWholeFile(temp / "a.touchosc").value_or("");
    for (const std::size_t limit : {xml.size(), xml.size() - 1}) {
        OSCProject project;
        ImportReport report;
        std::string error;
        ImportLimits limits;
        limits.maxXmlBytes = limit;
        EXPECT_EQ(ReadTouchOSCFile(bytes, project, report, error, limits), limit == xml.size());
        EXPECT_EQ(error, limit == xml.size() ? "" : "index.xml is larger than 26 bytes");
    }
}

TEST(TouchOSCImport, EachSampleGivesThePagesControlsAndReportWrittenFromTheFile)
{
    for (const json& c : Cases(kSamples, "samples")) {
        SCOPED_TRACE(c["file"].get<std::string>());
        OSCProject read;
        ImportReport report;
        std::string error;
        const auto bytes = ReadWholeFile(SAMPLES_DIR "/" + c["file"].get<std::string>());
        ASSERT_TRUE(bytes);
        ASSERT_TRUE(ReadTouchOSCFile(*bytes, read, report, error)) << error;
        const json project = json::parse(WriteLayoutJson(read));
        EXPECT_EQ(project["device"], c["device"]);
        EXPECT_EQ(project["orientation"], c["orientation"]);
        ASSERT_EQ(project["pages"].size(), c["pages"].size());
        for (std::size_t p = 0; p < c["pages"].size(); ++p) {
            const json& page = project["pages"][p];
            EXPECT_EQ(page["name"], c["pages"][p]["name"]);
            EXPECT_EQ(page["controls"].size(), c["pages"][p]["count"]);
            for (const auto& [index, expected] : c["pages"][p]["controls"].items()) {
                SCOPED_TRACE("page " + std::to_string(p) + " control " + index);
                ExpectFields(page["controls"][std::stoul(index)], expected);
            }
        }
        EXPECT_EQ(report.Lines(), c["report"].get<std::vector<std::string>>());
    }
}

}  // namespace
