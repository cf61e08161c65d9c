#include "VornoscRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

std::string ReadBytes(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

// The one entry of a TouchOSC archive, as unzip reads it; "" if unzip fails.
std::string IndexXml(const fs::path& archive)
{
    const std::string command = "unzip -p '" + archive.string() + "' index.xml";
    std::FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr)
        return {};
    std::string xml;
    char buffer[4096];
    std::size_t count = 0;
    while ((count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0)
        xml.append(buffer, count);
    return ::pclose(pipe) == 0 ? xml : std::string();
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

class CommandLine : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::string pattern = (fs::temp_directory_path() / "vornosc-cli-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
        runner_ = std::make_unique<VornoscRunner>(folder_);
    }

    void TearDown() override { fs::remove_all(folder_); }

    VornoscRun Run(const std::vector<std::string>& args) { return runner_->Run(args); }

    fs::path Path(const std::string& name) const { return folder_ / name; }
    void Write(const std::string& name, const std::string& bytes)
    {
        std::ofstream(Path(name), std::ios::binary) << bytes;
    }
    std::string Read(const std::string& name) const { return ReadBytes(Path(name)); }

    // The names in the folder, not counting the runs' TMPDIR.
    std::set<std::string> Files() const
    {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            if (entry.path() != runner_->TempFolder())
                names.insert(entry.path().filename().string());
        }
        return names;
    }

    bool TempFolderIsEmpty() const { return fs::is_empty(runner_->TempFolder()); }

    fs::path folder_;
    std::unique_ptr<VornoscRunner> runner_;
};

// A failed command says what went wrong in one line that names the file.
void ExpectOneLineFailure(const VornoscRun& run, const std::string& file, const std::string& what)
{
    EXPECT_EQ(run.status, 1) << run.err;
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
    EXPECT_EQ(run.err.rfind("vornosc: " + file + ": ", 0), 0u) << run.err;
    EXPECT_NE(run.err.find(what), std::string::npos) << run.err << " lacks " << what;
}

json Control(const std::string& name, const std::string& command, std::int64_t small,
             std::int64_t large, json type, json color, int flags)
{
    return {{"name", name},
            {"command", command},
            {"deviceId", small},
            {"controlNumber", -small - 1},
            {"x", small},
            {"y", -small - 1},
            {"width", 0},
            {"height", -1},
            {"minValue", large},
            {"maxValue", -large - 1},
            {"reserved1", -1},
            {"reserved2", large},
            {"reserved3", -large - 1},
            {"reserved4", 1},
            {"type", type},
            {"color", color},
            {"flags", flags}};
}

// Every field at its limits: the longest texts (in one- and three-byte
// characters), the int16 and int32 ends, bytes with and without names.
json ExtremeLayout(json orientation)
{
    std::string euros;
    for (int i = 0; i < 85; ++i)
        euros += "\xE2\x82\xAC";
    return {{"device", "iPhone/iPod Touch"},
            {"orientation", orientation},
            {"pages",
             {{{"name", std::string(255, 'p')},
               {"controls",
                {Control(std::string(255, 'n'), euros, -32768, -2147483648LL, 9, 255, 255),
                 Control("", "", 32767, 2147483647, 255, 9, 128),
                 Control("Push", "/TRVX/ID1/SetVal/Ctl1", 0, 0, "Push Button", "pink", 0)}}},
              {{"name", ""}, {"controls", json::array()}}}}};
}

TEST_F(CommandLine, RoundTripsKeepEveryFieldAtItsLimits)
{
    for (const json& orientation : {json("Vertical"), json(200)}) {
        const json layout = ExtremeLayout(orientation);
        Write("in.json", layout.dump());
        ASSERT_EQ(Run({"convert", "in.json", "a.VornOsc"}).status, 0);
        const VornoscRun dump = Run({"dump", "a.VornOsc", "--device", "iphone"});
        ASSERT_EQ(dump.status, 0) << dump.err;
        EXPECT_EQ(dump.err, "");
        EXPECT_EQ(json::parse(dump.out), layout);

        ASSERT_EQ(Run({"convert", "a.VornOsc", "b.json"}).status, 0);
        ASSERT_EQ(Run({"convert", "b.json", "c.VornOsc"}).status, 0);
        EXPECT_EQ(Read("a.VornOsc"), Read("c.VornOsc"));
    }
}

TEST_F(CommandLine, NamesThatAreNotUtf8StillDump)
{
    const std::string demo = ReadBytes(EXAMPLES_DIR "/Demo.VornOsc");
    Write("odd.VornOsc",
          Replaced(Replaced(demo, "Ch 1", "Ch\xFF\xC3"), "Transport", "Tr\xE9nsport"));
    const VornoscRun run = Run({"dump", "odd.VornOsc"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    const json layout = json::parse(run.out);
    EXPECT_EQ(layout["pages"][0]["controls"][0]["name"], "Ch\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(layout["pages"][1]["name"], "Tr\xEF\xBF\xBDnsport");
}

TEST_F(CommandLine, NamesAndExtensionsMatchInAnyCase)
{
    Write("IN.JSON", R"({"device": "IPAD", "orientation": "vertical", "pages": [{"controls": [
        {"type": "push BUTTON", "color": "Pink"}]}]})");
    ASSERT_EQ(Run({"convert", "IN.JSON", "OUT.VORNOSC"}).status, 0);
    ASSERT_EQ(Run({"convert", "OUT.VORNOSC", "back.Json"}).status, 0);
    const json layout = json::parse(Read("back.Json"));
    EXPECT_EQ(layout["device"], "iPad");
    EXPECT_EQ(layout["orientation"], "Vertical");
    EXPECT_EQ(layout["pages"][0]["controls"][0]["type"], "Push Button");
    EXPECT_EQ(layout["pages"][0]["controls"][0]["color"], "pink");
}

TEST_F(CommandLine, DeviceComesFromTheJsonOrIsIPadUnlessGiven)
{
    Write("phone.json", R"({"device": "iPhone/iPod Touch", "pages": [{}]})");
    ASSERT_EQ(Run({"convert", "phone.json", "phone.VornOsc"}).status, 0);
    const auto device = [&](const std::vector<std::string>& args) {
        const VornoscRun run = Run(args);
        EXPECT_EQ(run.status, 0) << run.err;
        return run.status == 0 ? json::parse(run.out)["device"] : json();
    };
    EXPECT_EQ(device({"dump", "phone.json"}), "iPhone/iPod Touch");
    EXPECT_EQ(device({"dump", "phone.json", "--device", "ipad"}), "iPad");
    // The layout file does not keep the device.
    EXPECT_EQ(device({"dump", "phone.VornOsc"}), "iPad");
    EXPECT_EQ(device({"dump", "--device=IPhone", "phone.VornOsc"}), "iPhone/iPod Touch");
    EXPECT_EQ(device({"dump", "phone.VornOsc", "--device", "iPhone/iPod Touch"}),
              "iPhone/iPod Touch");
    ASSERT_EQ(Run({"convert", "phone.VornOsc", "pad.json", "--device", "iphone"}).status, 0);
    EXPECT_EQ(json::parse(Read("pad.json"))["device"], "iPhone/iPod Touch");
}

struct BadInput {
    const char* file;
    std::string bytes;
    const char* what;
};

std::vector<BadInput> BadInputs()
{
    const std::string demo = ReadBytes(EXAMPLES_DIR "/Demo.VornOsc");
    const std::string control = R"({"pages": [{}, {"controls": [{}, {}, {}, {"x": 0}]}]})";
    return {
        {"notlayout.VornOsc", "hello, world", "not a layout file"},
        {"empty.VornOsc", "", "not a layout file"},
        {"badpage.VornOsc", Replaced(demo, "PAGE", "PAGX"),
         "Error reading Vorn OSC file (stopped at byte 16)"},
        {"badctrl.VornOsc", Replaced(demo, "CTRL", "CTRl"),
         "Error reading Vorn OSC file (stopped at byte "},
        {"truncated.VornOsc", demo.substr(0, demo.size() / 2), "Error reading Vorn OSC file"},
        {"syntax.json", "{\"pages\": [}", "parse error at line 1, column 12"},
        {"short.json", Replaced(control, "\"x\": 0", "\"x\": -32769"),
         "pages[1].controls[3].x: -32769 does not fit"},
        {"long.json", Replaced(control, "\"x\": 0", "\"name\": \"" + std::string(256, 'a') + "\""),
         "pages[1].controls[3].name: the text is 256 bytes long"},
        {"type.json", Replaced(control, "\"x\": 0", "\"type\": 256"),
         "pages[1].controls[3].type: 256 does not fit"},
        {"color.json", Replaced(control, "\"x\": 0", "\"color\": 1000"),
         "pages[1].controls[3].color: 1000 does not fit"},
        {"flags.json", Replaced(control, "\"x\": 0", "\"flags\": 256"),
         "pages[1].controls[3].flags: 256 does not fit"},
        {"name.json", Replaced(control, "\"x\": 0", "\"color\": \"white\""),
         "pages[1].controls[3].color: unknown colour \"white\""},
        {"nopages.json", R"({"pages": []})", "a layout has at least one page"},
    };
}

TEST_F(CommandLine, BadInputFailsWithOneLineAndWritesNothing)
{
    for (const BadInput& input : BadInputs()) {
        SCOPED_TRACE(input.file);
        Write(input.file, input.bytes);
        ExpectOneLineFailure(Run({"dump", input.file}), input.file, input.what);
        ExpectOneLineFailure(Run({"convert", input.file, "out.json"}), input.file, input.what);
        ExpectOneLineFailure(Run({"convert", input.file, "out.touchosc"}), input.file, input.what);
        EXPECT_EQ(Files(), std::set<std::string>{input.file});
        fs::remove(Path(input.file));
    }
    ExpectOneLineFailure(Run({"dump", "missing.json"}), "missing.json",
                         "cannot read: No such file or directory");
    fs::create_directory(Path("folder.json"));
    ExpectOneLineFailure(Run({"dump", "folder.json"}), "folder.json", "cannot read");
    EXPECT_TRUE(TempFolderIsEmpty());
}

TEST_F(CommandLine, AnExistingOutputIsLeftAsItWasOnFailure)
{
    Write("bad.json", R"({"pages": [{"controls": [{"y": 99999}]}]})");
    for (const char* out : {"old.VornOsc", "old.json", "old.touchosc", "old.jzml"}) {
        Write(out, "old bytes");
        ExpectOneLineFailure(Run({"convert", "bad.json", out}), "bad.json",
                             "pages[0].controls[0].y");
        EXPECT_EQ(Read(out), "old bytes");
    }
    EXPECT_EQ(Files().size(), 5u);
    // A good conversion replaces it.
    Write("good.json", R"({"pages": [{}]})");
    ASSERT_EQ(Run({"convert", "good.json", "old.json"}).status, 0);
    EXPECT_EQ(json::parse(Read("old.json"))["pages"][0]["name"], "Page 1");
    // A folder in the way is not replaced, and the finished file goes away.
    fs::create_directory(Path("folder.VornOsc"));
    ExpectOneLineFailure(Run({"convert", "good.json", "folder.VornOsc"}), "folder.VornOsc",
                         "cannot replace the file: Is a directory");
    EXPECT_TRUE(fs::is_empty(Path("folder.VornOsc")));
    EXPECT_EQ(Files().size(), 7u);
}

TEST_F(CommandLine, UsageErrorsExitTwoWithUsage)
{
    Write("in.json", R"({"pages": [{}]})");
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{}, "Usage: vornosc COMMAND"},
        {{"frobnicate"}, "unknown command \"frobnicate\""},
        {{"dump"}, "give one layout file"},
        {{"dump", "in.json", "in.json"}, "give one layout file"},
        {{"convert", "in.json"}, "give two files"},
        {{"dump", "in.json", "--verbose"}, "unknown option \"--verbose\""},
        {{"dump", "in.json", "--device"}, "--device needs a value"},
        {{"dump", "in.json", "--device", "android"}, "unknown device \"android\""},
        {{"dump", "in.txt"}, "a layout to read ends in .json or .VornOsc"},
        {{"convert", "in.touchosc", "out.json"}, "a layout to read ends in .json or .VornOsc"},
        {{"convert", "in.json", "out.xml"},
         "a file to write ends in .json, .VornOsc, .touchosc or .jzml"},
    };
    for (const auto& [args, what] : cases) {
        const VornoscRun run = Run(args);
        EXPECT_EQ(run.status, 2) << what;
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err.find(what), std::string::npos) << run.err;
        EXPECT_NE(run.err.find("Usage: vornosc"), std::string::npos) << run.err;
    }
    EXPECT_EQ(Files(), std::set<std::string>{"in.json"});
}

TEST_F(CommandLine, HelpGoesToStdoutOnEveryCommand)
{
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"--help"}, "Usage: vornosc COMMAND"},
        {{"-h"}, "Usage: vornosc COMMAND"},
        {{"dump", "--help"}, "Usage: vornosc dump LAYOUT"},
        {{"convert", "a.json", "-h"}, "Usage: vornosc convert IN OUT"},
    };
    for (const auto& [args, usage] : cases) {
        const VornoscRun run = Run(args);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.out.rfind(usage, 0), 0u) << run.out;
    }
    EXPECT_NE(Run({"convert", "--help"}).out.find(".touchosc or .jzml"), std::string::npos);
}

TEST_F(CommandLine, DemoFilesAgree)
{
    ASSERT_EQ(Run({"convert", EXAMPLES_DIR "/Demo.json", "Demo.VornOsc"}).status, 0);
    EXPECT_EQ(Read("Demo.VornOsc"), ReadBytes(EXAMPLES_DIR "/Demo.VornOsc"));
    const VornoscRun dump = Run({"dump", EXAMPLES_DIR "/Demo.VornOsc"});
    ASSERT_EQ(dump.status, 0) << dump.err;
    EXPECT_EQ(json::parse(dump.out), json::parse(ReadBytes(EXAMPLES_DIR "/Demo.json")));
}

TEST_F(CommandLine, ExportsWriteTheirFilesAndNothingElse)
{
    Write("small.json", R"({"pages": [{"name": "Small", "controls": [{"type": "Fader"}]}]})");
    const std::string demo = EXAMPLES_DIR "/Demo.json";
    // Side by side, as scripts run them: each run has a temporary index.xml of
    // its own, so no archive gets another's layout.
    const std::vector<std::vector<std::string>> exports = {
        {"convert", demo, "Demo.touchosc"},      {"convert", "small.json", "Small.touchosc"},
        {"convert", demo, "Demo2.TouchOSC"},     {"convert", "small.json", "Small2.touchosc"},
        {"convert", "small.json", "Small.JZML"},
    };
    for (const VornoscRun& run : runner_->RunTogether(exports)) {
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.err, "");
    }
    EXPECT_EQ(Files(), (std::set<std::string>{"small.json", "Demo.touchosc", "Small.touchosc",
                                              "Demo2.TouchOSC", "Small2.touchosc", "Small.JZML"}));
    const std::string demoXml = IndexXml(Path("Demo.touchosc"));
    const std::string smallXml = IndexXml(Path("Small.touchosc"));
    EXPECT_NE(demoXml.find("<layout"), std::string::npos);
    EXPECT_NE(demoXml, smallXml);
    EXPECT_EQ(IndexXml(Path("Demo2.TouchOSC")), demoXml);
    EXPECT_EQ(IndexXml(Path("Small2.touchosc")), smallXml);
    EXPECT_EQ(Read("Small.JZML").rfind("<JZML>", 0), 0u);
    EXPECT_NE(Read("Small.JZML").find("text=\"Small\""), std::string::npos);
    // The runs' data folders are gone with them.
    EXPECT_TRUE(TempFolderIsEmpty());
}

TEST_F(CommandLine, ExportIntoAMissingFolderFailsWithOneLine)
{
    for (const char* out : {"missing/Demo.touchosc", "missing/Demo.jzml", "missing/Demo.json"}) {
        ExpectOneLineFailure(Run({"convert", EXAMPLES_DIR "/Demo.json", out}), out,
                             "No such file or directory");
    }
    EXPECT_TRUE(Files().empty());
    EXPECT_TRUE(TempFolderIsEmpty());
}

}  // namespace
