#include "TempFolder.h"
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <tuple>

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

const char kCases[] = DATA_DIR "/command-line.json";
const std::string kDemo = ReadWholeFile(EXAMPLES_DIR "/Demo.VornOsc").value_or("");

// Writes a zip archive whose entries a case names, each {name: bytes}.
void WriteZipOfCase(const std::string& path, const json& entries)
{
    std::vector<ZipEntry> zip;
    for (const auto& [name, bytes] : entries.items())
        zip.push_back({name, CaseBytes(bytes)});
    WriteZip(path, zip);
}

// What one run of vornosc did.
struct VornoscRun {
    int status = -1;
    std::string out;
    std::string err;
};

// Runs in a fresh folder, as from a shell there, with TMPDIR and what the runs
// print in folders of their own.
class CommandLine : public testing::Test {
protected:
    // Starts one run per argument list, all at once, each after the shell
    // commands in setup, and waits for them.
    std::vector<VornoscRun> RunTogether(const std::vector<std::vector<std::string>>& runs,
                                        const std::string& setup = "")
    {
        std::string script = "cd " + ShellQuoted(folder_.path()) +
                             " && export TMPDIR=" + ShellQuoted(tmp_.path()) + "\n";
        for (std::size_t i = 0; i < runs.size(); ++i) {
            std::string command = ShellQuoted(VORNOSC_BINARY);
            for (const std::string& arg : runs[i])
                command += " " + ShellQuoted(arg);
            const std::string n = ShellQuoted(printed_ / std::to_string(i));
            script += "(" + setup + command + " >" + n + ".out 2>" + n + ".err; echo $? >" + n +
                      ".rc) &\n";
        }
        RunCommand(script + "wait");
        std::vector<VornoscRun> results;
        for (std::size_t i = 0; i < runs.size(); ++i) {
            const std::string n = printed_ / std::to_string(i);  // stoi throws on no status
            results.push_back({std::stoi(ReadWholeFile(n + ".rc").value_or("")),
                               ReadWholeFile(n + ".out").value_or(""),
                               ReadWholeFile(n + ".err").value_or("")});
        }
        return results;
    }

    // The names in the folder, with any hidden temporary files left behind; the
    // runs' TMPDIR must be empty.
    std::set<std::string> Files() const
    {
        EXPECT_TRUE(fs::is_empty(tmp_.path()));
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_.path()))
            names.insert(entry.path().filename());
        return names;
    }

    TempFolder folder_, tmp_, printed_;
};

// The runs follow each other in one folder, each after writing the layouts it
// names. Usage errors, a bad option value among them, exit with 2 and show the
// usage on stderr before any window opens; help exits with 0 and prints on
// stdout. A layout file does not keep the device: it reads as an iPad unless
// --device says otherwise. Every field at its limits (the longest texts in
// one- and three-byte characters, the int16 and int32 ends, bytes with
// and without names) converts both ways. The extensions match in any case.
TEST_F(CommandLine, EachRunExitsAndPrintsAsItsCaseSaysAndUsageErrorsWriteNothing)
{
    for (const json& c : Cases(kCases, "runs")) {
        SCOPED_TRACE(c["args"].dump());
        const json files = c.value("files", json::object());
        for (const auto& [name, layout] : files.items())
            WriteWholeFile(folder_ / name, layout.dump());
        const json zipped = c.value("zipped", json::object());
        for (const auto& [name, entries] : zipped.items())
            WriteZipOfCase(folder_ / name, entries);
        // A bad option that still opens the editor is stopped, failing its status.
        const VornoscRun run =
            RunTogether({c["args"].get<std::vector<std::string>>()}, "timeout 30 ")[0];
        EXPECT_EQ(run.status, c["status"].get<int>());
        EXPECT_TRUE(run.err.starts_with(c.value("err", "")) && run.err.empty() != c.contains("err"))
            << run.err;
        const json out = c.value("out", json(""));
        EXPECT_TRUE(out.is_object() ? json::parse(run.out) == out
                                    : run.out.starts_with(out.get<std::string>()) &&
                                          run.out.empty() != c.contains("out"))
            << run.out;
    }
    EXPECT_EQ(Files(), Cases(kCases, "filesAfterRuns").get<std::set<std::string>>());
}

// Damaged inputs are the demo layout with some bytes replaced: a tag changed,
// or the end cut off. An output that cannot be replaced fails only the
// conversion to it, and so does one whose write runs into the file-size limit
// (in the shell's blocks): that layout JSON is larger than the stream's buffer,
// so the write goes straight to the file and closing the file succeeds. Old
// outputs of every format stay as they were, and a folder in the way stays empty.
TEST_F(CommandLine, AFileThatCannotBeReadOrWrittenFailsWithOneLineNamingItAndWritesNothing)
{
    const std::set<std::string> outputs{"old.VornOsc", "old.json", "old.touchosc", "old.jzml"};
    for (const std::string& out : outputs)
        WriteWholeFile(folder_ / out, "old bytes");
    for (const json& c : Cases(kCases, "failures")) {
        const std::string file = c["file"], failing = c.value("out", file);
        SCOPED_TRACE(failing);
        if (c.contains("text"))
            WriteWholeFile(folder_ / file, c["text"]);
        if (c.contains("zipped"))
            WriteZipOfCase(folder_ / file, c["zipped"]);
        if (c.contains("demoReplaced")) {
            const auto [at, count, bytes] =
                c["demoReplaced"].get<std::tuple<std::size_t, std::size_t, std::string>>();
            WriteWholeFile(folder_ / file, std::string(kDemo).replace(at, count, bytes));
        }
        if (c.contains("folder"))
            fs::create_directory(folder_ / c["folder"]);
        std::vector<std::vector<std::string>> runs{{"convert", file, failing}};
        if (!c.contains("out"))
            runs = {{"dump", file}, {"convert", file, "old.touchosc"}};
        const std::string limit = c.contains("fileSizeLimit") ? "trap '' XFSZ; ulimit -f " +
                                                                    c["fileSizeLimit"].dump() + "; "
                                                              : "";
        const std::string line =
            "vornosc: " + failing + ": " + c["error"].get<std::string>() + "\n";
        for (const VornoscRun& run : RunTogether(runs, limit))
            EXPECT_EQ(std::tuple(run.status, run.out, run.err), std::tuple(1, std::string(), line));
        fs::remove(folder_ / file);
        if (c.contains("folder"))
            fs::remove(folder_ / c["folder"]);  // throws unless empty
        EXPECT_EQ(Files(), outputs);
        for (const std::string& out : outputs)
            EXPECT_EQ(ReadWholeFile(folder_ / out), "old bytes") << out;
    }
}

// Side by side, as scripts run them: each export has a temporary index.xml of
// its own, so every archive holds its own layout, and the data folders go with
// them. Old outputs keep their permissions, whatever a new file would get, and
// an output that is a symbolic link is written through, the link kept. Stdin is
// closed, as some schedulers start scripts, so that a new file may be given
// descriptor 0. The demo becomes the demo's layout file.
TEST_F(CommandLine, ExportsRunTogetherWriteTheirOwnFilesAndNothingElse)
{
    const std::vector<std::string> cases{"names", "value_ranges"};
    std::vector<std::vector<std::string>> runs{
        {"convert", EXAMPLES_DIR "/Demo.json", "Demo.VornOsc"}};
    for (const std::string& name : cases) {
        for (const char* extension : {".touchosc", ".JZML"})
            runs.push_back({"convert", GOLDEN_DIR "/" + name + "/input.json", name + extension});
    }
    for (const std::vector<std::string>& run : runs)
        WriteWholeFile(folder_ / run[2], "old bytes");
    fs::rename(folder_ / "names.touchosc", folder_ / "Linked.touchosc");
    fs::create_symlink("Linked.touchosc", folder_ / "names.touchosc");
    using enum fs::perms;
    fs::permissions(folder_ / "Demo.VornOsc", owner_read | owner_write | group_read | group_write);
    fs::permissions(folder_ / "Linked.touchosc", owner_read | owner_write);
    const std::set<std::string> outputs = Files();
    std::map<std::string, fs::perms> kept;
    for (const std::string& name : outputs)
        kept[name] = fs::status(folder_ / name).permissions();
    for (const VornoscRun& run : RunTogether(runs, "exec <&-; "))
        EXPECT_TRUE(run.status == 0 && run.err.empty()) << run.status << run.err;
    EXPECT_EQ(Files(), outputs);
    EXPECT_EQ(ReadWholeFile(folder_ / "Demo.VornOsc"), kDemo);
    for (const std::string& name : cases) {
        const std::string golden = GOLDEN_DIR "/" + name + "/expected";
        const auto entries = ReadZipEntries(folder_ / (name + ".touchosc"));
        ASSERT_TRUE(entries && entries->size() == 1) << name;
        EXPECT_EQ(entries->front().bytes, ReadWholeFile(golden + ".xml")) << name;
        EXPECT_EQ(ReadWholeFile(folder_ / (name + ".JZML")), ReadWholeFile(golden + ".jzml"))
            << name;
    }
    EXPECT_TRUE(fs::is_symlink(folder_ / "names.touchosc"));
    for (const std::string& name : outputs)
        EXPECT_EQ(fs::status(folder_ / name).permissions(), kept[name]) << name;
}

}  // namespace
