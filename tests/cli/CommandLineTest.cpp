#include "TempFolder.h"
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

const std::string kDemo = ReadWholeFile(EXAMPLES_DIR "/Demo.VornOsc").value_or("");

// What one run of vornosc did.
struct VornoscRun {
    int status = -1;
    std::string out;
    std::string err;
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

// Runs in a fresh folder with TMPDIR pointing into it, as from a shell there.
class CommandLine : public testing::Test {
protected:
    void SetUp() override { fs::create_directory(tmp_); }

    // Starts one run per argument list, all at once, each after the shell
    // commands in setup, and waits for them.
    std::vector<VornoscRun> RunTogether(const std::vector<std::vector<std::string>>& runs,
                                        const std::string& setup = "")
    {
        std::string script =
            "cd " + ShellQuoted(folder_.path()) + " && export TMPDIR=" + ShellQuoted(tmp_) + "\n";
        for (std::size_t i = 0; i < runs.size(); ++i) {
            std::string command = ShellQuoted(VORNOSC_BINARY);
            for (const std::string& arg : runs[i])
                command += " " + ShellQuoted(arg);
            const std::string n = std::to_string(i);
            script += "(" + setup + command + " >.out" + n + " 2>.err" + n + "; echo $? >.rc" + n +
                      ") &\n";
        }
        RunCommand(script + "wait");
        std::vector<VornoscRun> results;
        for (std::size_t i = 0; i < runs.size(); ++i) {
            const std::string n = std::to_string(i);  // stoi throws when a run left no status
            results.push_back({std::stoi(Read(".rc" + n)), Read(".out" + n), Read(".err" + n)});
        }
        return results;
    }
    VornoscRun Vornosc(const std::vector<std::string>& args, const std::string& setup = "")
    {
        return RunTogether({args}, setup)[0];
    }

    void Write(const std::string& name, const std::string& bytes)
    {
        WriteWholeFile(folder_ / name, bytes);
    }
    std::string Read(const std::string& name) const
    {
        return ReadWholeFile(folder_ / name).value_or("(none)");
    }
    json ReadJson(const std::string& name) const { return json::parse(Read(name)); }

    // The names in the folder, besides the runs' TMPDIR, which must be empty,
    // and the hidden files that hold what the runs printed.
    std::set<std::string> Files() const
    {
        EXPECT_TRUE(fs::is_empty(tmp_));
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_.path())) {
            if (const std::string name = entry.path().filename(); name != "tmp" && name[0] != '.')
                names.insert(name);
        }
        return names;
    }

    TempFolder folder_;
    const std::string tmp_ = folder_ / "tmp";
};

json CommandLineCases(const char* rule)
{
    return Cases(DATA_DIR "/command-line.json", rule);
}

// Every field at its limits: the longest texts (in one- and three-byte
// characters), the int16 and int32 ends, bytes with and without names; and the
// demo, which must become the demo's layout file. The extensions match in any case.
TEST_F(CommandLine, ConversionsBothWaysKeepEveryFieldAtItsLimits)
{
    std::vector<std::pair<json, std::string>> layouts{
        {json::parse(ReadWholeFile(EXAMPLES_DIR "/Demo.json").value_or("")), kDemo}};
    for (const json& layout : CommandLineCases("limits"))
        layouts.emplace_back(layout, "");
    for (const auto& [layout, layoutFile] : layouts) {
        SCOPED_TRACE(layout["orientation"].dump());
        Write("in.JSON", layout.dump());
        ASSERT_EQ(Vornosc({"convert", "in.JSON", "a.VORNOSC"}).status, 0);
        if (!layoutFile.empty()) {
            EXPECT_EQ(Read("a.VORNOSC"), layoutFile);
        }
        const VornoscRun dump = Vornosc({"dump", "a.VORNOSC", "--device", layout["device"]});
        ASSERT_EQ(dump.status, 0) << dump.err;
        EXPECT_EQ(dump.err, "");
        EXPECT_EQ(json::parse(dump.out), layout);
        ASSERT_EQ(Vornosc({"convert", "a.VORNOSC", "b.Json"}).status, 0);
        ASSERT_EQ(Vornosc({"convert", "b.Json", "c.VornOsc"}).status, 0);
        EXPECT_EQ(Read("a.VORNOSC"), Read("c.VornOsc"));
    }
}

// A layout file does not keep the device: it reads as an iPad.
TEST_F(CommandLine, TheDeviceComesFromTheJsonOrIsAnIPadUnlessGiven)
{
    Write("phone.json", R"({"device": "iPhone/iPod Touch", "pages": [{}]})");
    ASSERT_EQ(Vornosc({"convert", "phone.json", "phone.VornOsc"}).status, 0);
    for (const json& c : CommandLineCases("device")) {
        SCOPED_TRACE(c["args"].dump());
        const VornoscRun run = Vornosc(c["args"]);
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(json::parse(run.out)["device"], c["device"]);
    }
    ASSERT_EQ(Vornosc({"convert", "phone.VornOsc", "pad.json", "--device", "iphone"}).status, 0);
    EXPECT_EQ(ReadJson("pad.json")["device"], "iPhone/iPod Touch");
}

// Damaged inputs come from the demo layout: a tag changed, or cut short. An
// output that cannot be replaced fails only the conversion to it. Old outputs
// of every format stay as they were, and a folder in the way stays empty.
TEST_F(CommandLine, AFileThatCannotBeReadOrWrittenFailsWithOneLineNamingItAndWritesNothing)
{
    const std::set<std::string> outputs{"old.VornOsc", "old.json", "old.touchosc", "old.jzml"};
    for (const std::string& out : outputs)
        Write(out, "old bytes");
    for (const json& c : CommandLineCases("failures")) {
        const std::string file = c["file"], failing = c.value("out", file);
        SCOPED_TRACE(failing);
        if (c.contains("text"))
            Write(file, c["text"]);
        if (c.contains("demoWith")) {
            const std::string from = c["demoWith"][0];
            Write(file,
                  std::string(kDemo).replace(kDemo.find(from), from.size(), c["demoWith"][1]));
        }
        if (c.contains("demoCutAt"))
            Write(file, kDemo.substr(0, c["demoCutAt"]));
        if (c.contains("folder"))
            fs::create_directory(folder_ / c["folder"]);
        std::vector<std::vector<std::string>> runs{{"convert", file, failing}};
        if (!c.contains("out")) {
            runs = {{"dump", file}};
            for (const std::string& out : outputs)
                runs.push_back({"convert", file, out});
        }
        for (const VornoscRun& run : RunTogether(runs))
            ExpectOneLineFailure(run, failing, c["error"]);
        fs::remove(folder_ / file);
        if (c.contains("folder"))
            fs::remove(folder_ / c["folder"]);  // throws unless empty
        EXPECT_EQ(Files(), outputs);
        for (const std::string& out : outputs)
            EXPECT_EQ(Read(out), "old bytes") << out;
    }
}

// The layout JSON is larger than the stream's buffer, so the write that runs
// into the limit goes straight to the file and closing the file succeeds.
TEST_F(CommandLine, AWriteCutShortFailsEvenWhenClosingTheFileSucceeds)
{
    const VornoscRun run =
        Vornosc({"convert", EXAMPLES_DIR "/Demo.json", "big.json"}, "trap '' XFSZ; ulimit -f 2; ");
    ExpectOneLineFailure(run, "big.json", "cannot write: File too large");
    EXPECT_EQ(Files(), std::set<std::string>{});
}

// Usage errors exit with 2 and the usage on stderr; help exits with 0 and
// prints on stdout.
TEST_F(CommandLine, UsageErrorsExitTwoAndHelpExitsZero)
{
    Write("in.json", R"({"pages": [{}]})");
    for (const json& c : CommandLineCases("usage")) {
        const std::string text = c["shows"];
        const int status = c["status"];
        SCOPED_TRACE(text);
        const VornoscRun run = Vornosc(c["args"]);
        EXPECT_EQ(run.status, status);
        EXPECT_EQ((status == 0 ? run.err : run.out), "");
        const std::string& shown = status == 0 ? run.out : run.err;
        EXPECT_TRUE(status == 0 ? shown.starts_with(text) : shown.find(text) != std::string::npos)
            << shown;
        EXPECT_NE(shown.find("Usage: vornosc"), std::string::npos) << shown;
    }
    EXPECT_EQ(Files(), std::set<std::string>{"in.json"});
}

// Side by side, as scripts run them: each run has a temporary index.xml of its
// own, so no archive gets another's layout, and the data folders go with them.
// Old outputs are replaced, and every output has the permissions of a plain new
// file. Stdin is closed, as some schedulers start scripts, so that a new file
// may be given descriptor 0.
TEST_F(CommandLine, ExportsRunTogetherWriteTheirOwnFilesAndNothingElse)
{
    Write("small.json", R"({"pages": [{"name": "Small", "controls": [{"type": "Fader"}]}]})");
    for (const char* old : {"Small.touchosc", "Small.JZML", "Small.Json", "Small.VornOsc"})
        Write(old, "old bytes");
    const std::string demo = EXAMPLES_DIR "/Demo.json";
    const std::vector<std::vector<std::string>> exports = {
        {"convert", demo, "Demo.touchosc"},        {"convert", "small.json", "Small.touchosc"},
        {"convert", demo, "Demo2.TouchOSC"},       {"convert", "small.json", "Small2.touchosc"},
        {"convert", "small.json", "Small.JZML"},   {"convert", "small.json", "Small.Json"},
        {"convert", "small.json", "Small.VornOsc"}};
    for (const VornoscRun& run : RunTogether(exports, "exec <&-; ")) {
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.err, "");
    }
    EXPECT_EQ(Files(), (std::set<std::string>{"small.json", "Demo.touchosc", "Small.touchosc",
                                              "Demo2.TouchOSC", "Small2.touchosc", "Small.JZML",
                                              "Small.Json", "Small.VornOsc"}));
    const auto xml = [&](const char* archive) {
        const auto entries = ReadZipEntries(folder_ / archive);
        return entries && entries->size() == 1 ? entries->front().bytes : "(unreadable)";
    };
    EXPECT_NE(xml("Demo.touchosc").find("<tabpage"), std::string::npos);
    EXPECT_NE(xml("Demo.touchosc"), xml("Small.touchosc"));
    EXPECT_EQ(xml("Demo2.TouchOSC"), xml("Demo.touchosc"));
    EXPECT_EQ(xml("Small2.touchosc"), xml("Small.touchosc"));
    EXPECT_EQ(Read("Small.JZML").rfind("<JZML>", 0), 0u);
    EXPECT_NE(Read("Small.JZML").find("text=\"Small\""), std::string::npos);
    EXPECT_EQ(ReadJson("Small.Json")["pages"][0]["name"], "Small");
    EXPECT_EQ(Read("Small.VornOsc").rfind("KLYF", 0), 0u);
    const fs::perms plain = fs::status(folder_ / "small.json").permissions();
    for (const std::string& name : Files())
        EXPECT_EQ(fs::status(folder_ / name).permissions(), plain)
            << name << " is not a plain file";
}

}  // namespace
