#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TempFolder.h"
#include "TestFiles.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "formats/FormatHost.h"
#include "formats/ImportReport.h"
#include "formats/ImportedFields.h"
#include "formats/LayoutFormats.h"
#include "formats/json/LayoutJson.h"
#include "formats/lemur/LemurExport.h"
#include "formats/lemur/LemurImport.h"
#include "formats/tosc/ToscImport.h"
#include "formats/touchosc/TouchOSCExport.h"
#include "formats/touchosc/TouchOSCImport.h"

#include <gtest/gtest.h>

#include <zlib.h>
#include <filesystem>
#include <random>

using nlohmann::json;

namespace {

const char kCases[] = DATA_DIR "/imports.json";
const char kSamples[] = DATA_DIR "/samples.json";

// Every key of expected has the same value in actual.
void ExpectFields(const json& actual, const json& expected)
{
    for (const auto& [key, value] : expected.items())
        EXPECT_EQ(actual[key], value) << key;
}

// Reads text as a file of format: a classic TouchOSC archive (".touchosc"),
// the index.xml inside one, a Lemur file (".jzml") or a current TouchOSC one
// (".tosc").
bool Read(const std::string& format, std::string text, OSCProject& project, ImportReport& report,
          std::string& error, const ImportLimits& limits = {})
{
    if (format == ".jzml")
        return ReadLemurFile(text, project, report, error, limits);
    if (format == ".tosc")
        return ReadToscFile(text, project, report, error, limits);
    if (format == "index.xml")
        return ReadTouchOSCXml(text, project, report, error, limits);
    return ReadTouchOSCFile(text, project, report, error, limits);
}

// The project as JSON, the report as its lines.
std::pair<json, std::vector<std::string>> Imported(const std::string& format, std::string text)
{
    OSCProject project;
    ImportReport report;
    std::string error;
    EXPECT_TRUE(Read(format, std::move(text), project, report, error)) << error;
    return {json::parse(WriteLayoutJson(project)), report.Lines()};
}

// The project has the device, orientation and pages of expected, each page
// its name and its controls: all of them in a list, or some by their index
// with the count of all.
void ExpectLayout(const json& project, const json& expected)
{
    EXPECT_EQ(project["device"], expected.value("device", "iPhone/iPod Touch"));
    EXPECT_EQ(project["orientation"], expected.value("orientation", "Vertical"));
    ASSERT_EQ(project["pages"].size(), expected["pages"].size());
    for (std::size_t p = 0; p < expected["pages"].size(); ++p) {
        const json& page = project["pages"][p];
        const json& wanted = expected["pages"][p];
        EXPECT_EQ(page["name"], wanted["name"]);
        const json& controls = wanted["controls"];
        EXPECT_EQ(page["controls"].size(), wanted.value("count", controls.size()));
        for (const auto& [index, control] : controls.items()) {
            SCOPED_TRACE("page " + std::to_string(p) + " control " + index);
            const std::size_t at = std::stoul(index);
            if (at < page["controls"].size())
                ExpectFields(page["controls"][at], control);
        }
    }
}

// Texts of one to four bytes a character, of every length modulo 3, so that
// their base64 needs no padding, one or two characters of it, and of the four
// characters XML writes as entities.
std::string RandomText(std::mt19937& random, int maxCharacters)
{
    static const char* const kCharacters[] = {"a",  "Z",    "0",    " ", "/", "&",  "é", "ß", "日",
                                              "ノ", "🎛", "🎚", "+", "=", "\"", "<", ">"};
    std::string text;
    const int count = std::uniform_int_distribution(0, maxCharacters)(random);
    for (int i = 0; i < count; ++i)
        text += kCharacters[std::uniform_int_distribution(0, 16)(random)];
    return text;
}

// Some addresses name the host's device and control numbers.
void RandomAddress(std::mt19937& random, OSCControl& control)
{
    std::string address = "/" + RandomText(random, 3);
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
// numbers as floats only up to 2^24. Controls overlap often.
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
                const auto [project, report] = Imported("index.xml", xml);
                EXPECT_EQ(project, json::parse(WriteLayoutJson(layout))) << xml;
                EXPECT_TRUE(report.empty());
            }
        }
    }
}

// Lemur keeps no orientation: its screens are landscape. A text sends
// nothing, and keeps no range; unnamed controls get names on the way out.
TEST(LemurImport, RandomLayoutsExportedByTheEditorComeBackTheSameInEveryFieldLemurKeeps)
{
    std::mt19937 random(1125);
    for (int device = 0; device < kDeviceCount; ++device) {
        for (int round = 0; round < 50; ++round) {
            SCOPED_TRACE(testing::Message() << device << " round " << round);
            OSCProject layout = RandomLayout(random, device, kHorizontal);
            const std::string jzml = Captured([&](std::FILE* out) { WriteLemurJzml(out, layout); });
            const auto [project, report] = Imported(".jzml", jzml);
            json expected = json::parse(WriteLayoutJson(layout));
            for (json& page : expected["pages"]) {
                for (json& control : page["controls"]) {
                    if (control["type"] == "Label") {
                        control["command"] = "";
                        control["deviceId"] = control["controlNumber"] = 0;
                        control["minValue"] = 0;
                        control["maxValue"] = 127;
                    }
                }
            }
            EXPECT_EQ(project, expected) << jzml;
            EXPECT_TRUE(report.empty());
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

TEST(Import, EachRuleGivesTheLayoutAndReportItsCaseSays)
{
    for (const json& c : Cases(kCases, "rules")) {
        SCOPED_TRACE(c["rule"].get<std::string>());
        const auto [project, report] = Imported(c["format"], c["text"]);
        ExpectLayout(project, c);
        EXPECT_EQ(report, c.value("report", std::vector<std::string>()));
    }
}

// Each hue band and the bounds of gray and brown in pairs, the last value of
// one colour and the first of the next.
TEST(Import, EachColourGivenAsNumbersGoesToTheNamedColourOfItsHue)
{
    for (const json& c : Cases(kCases, "colours")) {
        SCOPED_TRACE(c.dump());
        const std::uint8_t color = ColorByHue(c["rgb"][0], c["rgb"][1], c["rgb"][2]);
        EXPECT_EQ(ColorTypes[color], c["color"]);
    }
}

// A host the readers of layout files never need to talk to.
class SilentHost : public FormatHost {
public:
    void ShowError(const char*) override {}
    int GetSizeLimitMode(int) override { return 0; }
    std::string GetDataFolder() override { return {}; }
    int AskSaveChanges(void*, const char*) override { return 0; }
    int QueryTitle(int) override { return 0; }
    std::string TakeFailures() override { return {}; }
};

// Refused from its size alone: a file of any format one byte over the limit,
// and one far over it that is never read (a sparse file takes no room).
TEST(Import, AFileLargerThanTheLimitIsRefusedBeforeItIsRead)
{
    TempFolder temp;
    const std::string jzml = "<JZML><WINDOW class=\"JAZZINTERFACE\"/></JZML>";
    for (const LayoutFormat& format : LayoutFormats()) {
        if (format.read == nullptr)
            continue;
        SCOPED_TRACE(format.extension);
        const std::string path = temp / (std::string("big") + format.extension);
        WriteWholeFile(path, jzml);
        SilentHost host;
        OSCProject project;
        ImportReport report;
        std::string error;
        EXPECT_FALSE(ReadLayoutAt(format, path, project, host, report, error, jzml.size() - 1));
        EXPECT_EQ(error, "the file is larger than " + std::to_string(jzml.size() - 1) + " bytes");
        std::filesystem::resize_file(path, std::uintmax_t{300} << 20);
        EXPECT_FALSE(ReadLayoutAt(format, path, project, host, report, error));
        EXPECT_EQ(error, "the file is larger than 256 MB");
    }
    const std::string path = temp / "small.jzml";
    WriteWholeFile(path, jzml);
    SilentHost host;
    OSCProject project;
    ImportReport report;
    std::string error;
    EXPECT_TRUE(
        ReadLayoutAt(*FindLayoutFormat(path), path, project, host, report, error, jzml.size()))
        << error;
}

// Each limit in pairs, the last value read and the first refused.
TEST(Import, AFileBeyondALimitIsRefusedSayingWhichAndTheProjectIsKept)
{
    for (const json& c : Cases(kCases, "refused")) {
        SCOPED_TRACE(c["text"].get<std::string>());
        ImportLimits limits;
        const json given = c.value("limits", json::object());
        limits.maxCount = given.value("maxCount", limits.maxCount);
        limits.maxDepth = given.value("maxDepth", limits.maxDepth);
        OSCProject project;
        CopyTextField(project.pages[0]->name, "kept");
        ImportReport report;
        std::string error;
        limits.maxXmlBytes = given.value("maxXmlBytes", limits.maxXmlBytes);
        EXPECT_EQ(Read(c["format"], c["text"], project, report, error, limits),
                  !c.contains("error"));
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
    // An archive that understates the size is still not inflated past the limit.
    std::string understated = bytes;
    const std::size_t central = understated.find("PK\1\2");
    for (const std::size_t at : {std::size_t{22}, central + 24})
        understated.replace(at, 4, std::string("\1\0\0\0", 4));
    OSCProject project;
    ImportReport report;
    std::string error;
    ImportLimits limits;
    limits.maxXmlBytes = xml.size() - 1;
    EXPECT_FALSE(ReadTouchOSCFile(understated, project, report, error, limits));
    EXPECT_EQ(error, "index.xml is larger than 26 bytes");
}

// zlib keeps no size ahead of its data: inflating stops at the limit, to the byte.
TEST(ToscImport, CompressedXmlIsInflatedUpToTheLimitAndACutStreamIsDamaged)
{
    std::string xml = "<lexml version=\"3\"><node type=\"GROUP\"/></lexml>";
    std::string bytes(compressBound(xml.size()), '\0');
    uLongf size = bytes.size();
    ASSERT_EQ(compress(reinterpret_cast<Bytef*>(bytes.data()), &size,
                       reinterpret_cast<const Bytef*>(xml.data()), xml.size()),
              Z_OK);
    bytes.resize(size);
    const auto refusal = [&](std::string_view file, std::size_t limit) {
        OSCProject project;
        ImportReport report;
        std::string error;
        ImportLimits limits;
        limits.maxXmlBytes = limit;
        ReadToscFile(file, project, report, error, limits);
        return error;
    };
    EXPECT_EQ(refusal(bytes, xml.size()), "");
    EXPECT_EQ(refusal(bytes, xml.size() - 1), "the TouchOSC file holds more than " +
                                                  std::to_string(xml.size() - 1) + " bytes of XML");
    EXPECT_EQ(refusal(std::string_view(bytes).substr(0, bytes.size() - 6), xml.size()),
              "the TouchOSC file is damaged: its zlib data ends too soon");
    bytes[bytes.size() / 2] ^= 0x55;
    EXPECT_EQ(refusal(bytes, xml.size()).substr(0, 29), "the TouchOSC file is damaged:");
}

TEST(Import, EachSampleGivesThePagesControlsAndReportWrittenFromTheFile)
{
    for (const json& c : Cases(kSamples, "samples")) {
        const std::string file = c["file"];
        SCOPED_TRACE(file);
        const auto bytes = ReadWholeFile(SAMPLES_DIR "/" + file);
        ASSERT_TRUE(bytes);
        const auto [project, report] = Imported(file.substr(file.rfind('.')), *bytes);
        ExpectLayout(project, c);
        EXPECT_EQ(report, c["report"].get<std::vector<std::string>>());
    }
}

}  // namespace
