#include "FakeHost.h"
#include "TestFiles.h"
#include "document/ControlTables.h"
#include "document/LayoutFile.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <tuple>

using namespace std::string_literals;

namespace {

const std::string kDemo = ReadWholeFile(EXAMPLES_DIR "/Demo.VornOsc").value_or("");

std::string Golden(const std::string& name)
{
    return ReadWholeFile(GOLDEN_DIR "/" + name).value_or("(missing " + name + ")");
}

// An upright page "P" with count controls named "ab", addressed "/c", every
// number distinct and one negative.
OSCProject ProjectOfControls(int count)
{
    OSCProject project;
    project.orientation = kVertical;
    project.SetPageName("P");
    for (int i = 0; i < count; ++i) {
        OSCControl& c = *project.pages[0]->controls.emplace_back(std::make_unique<OSCControl>());
        std::strcpy(c.name, "ab");
        std::strcpy(c.command, "/c");
        std::tie(c.deviceId, c.controlNumber, c.x, c.y, c.width, c.height) =
            std::make_tuple(1, 2, 3, 4, 5, 6);
        std::tie(c.minValue, c.maxValue, c.reserved1, c.reserved2, c.reserved3, c.reserved4) =
            std::make_tuple(-7, 8, 9, 10, 11, 12);
        std::tie(c.type, c.color, c.flags) = std::make_tuple(kKnob, 3, 13);
    }
    return project;
}

struct GoldenFile {
    std::string name;
    std::string bytes;
    bool bigEndian = false;
    std::optional<OSCProject> writtenFrom;  // the project that writes exactly these bytes
    std::string readsAs;                    // what the project read writes; empty: bytes
};

}  // namespace

// The big-endian file has every number reversed. Controls from later versions
// carry extra bytes, which are skipped; a short or absurd control length is
// ignored. A file without pages keeps the pages there were. The device is not
// in the file: reading keeps the project's own.
TEST(LayoutFile, EachGoldenFileIsWrittenByteForByteAndReadToItsEndWithEveryField)
{
    GoldenFile files[] = {
        {"one empty page", Golden("one-empty-page.VornOsc"), false, OSCProject(), ""},
        {"four controls", Golden("four-controls.VornOsc"), false, ProjectOfControls(4), ""},
        {"big-endian", Golden("four-controls.big-endian.VornOsc"), true, ProjectOfControls(4), ""},
        {"other lengths", Golden("controls-of-other-lengths.VornOsc"), false, std::nullopt,
         Golden("four-controls.VornOsc")},
        {"demo", kDemo, false, std::nullopt, ""},
        {"no pages", "KLYF\x04\0\0\0\x04\0\0\0"s, false, std::nullopt,
         Golden("one-empty-upright-page.VornOsc")}};
    for (GoldenFile& file : files) {
        SCOPED_TRACE(file.name);
        BigEndianHost bigEndian;
        FakeHost littleEndian;
        FakeHost* host = file.bigEndian ? &bigEndian : &littleEndian;
        if (file.writtenFrom) {
            EXPECT_EQ(WriteLayoutFile(*file.writtenFrom, host), file.bytes);
            EXPECT_EQ(WriteLayoutFile(*file.writtenFrom, host), file.bytes) << "written twice";
        }
        OSCProject read;
        read.device = kIPhone;
        std::size_t stoppedAt = 0;
        ASSERT_EQ(ReadLayoutFile(file.bytes, read, host, &stoppedAt), 0);
        EXPECT_EQ(stoppedAt, file.bytes.size());
        EXPECT_TRUE(host->errors.empty());
        EXPECT_EQ(read.device, kIPhone);
        EXPECT_EQ(WriteLayoutFile(read, host), file.readsAs.empty() ? file.bytes : file.readsAs);
    }
}

// Without the magic nothing is read and nothing shown. A damaged file is the
// demo cut anywhere, with a damaged chunk tag, or with counts far beyond the
// bytes there are; it is told once.
TEST(LayoutFile, AFileThatCannotBeReadLeavesTheProjectExactlyAsItWas)
{
    std::vector<std::pair<std::string, std::string>> damaged{
        {"huge counts",
         "KLYF\xFF\xFF\xFF\xFF\xFF\0\xFF\xFFPAGE\xFF\xFF\xFF\x7F\xFF\xFF\0CTRL\xFF\xFF\xFF\x7F"s}};
    for (std::size_t length = 4; length < kDemo.size(); ++length)
        damaged.emplace_back("cut at " + std::to_string(length), kDemo.substr(0, length));
    for (const char* tag : {"PAGE", "CTRL"}) {
        for (std::size_t at = kDemo.find(tag); at != std::string::npos;
             at = kDemo.find(tag, at + 1)) {
            damaged.emplace_back(tag + (" at " + std::to_string(at)), kDemo);
            damaged.back().second[at + 3] = 'X';
        }
    }
    const std::string notLayoutFiles[] = {""s, "KLY"s, "KLYX\x15\0\0\0"s, "PAGE"s};
    for (const std::string& bytes : notLayoutFiles)
        damaged.emplace_back("not a layout file: " + bytes, bytes);
    for (const auto& [what, file] : damaged) {
        SCOPED_TRACE(what);
        const bool isLayoutFile = file.starts_with("KLYF");
        OSCProject project;
        project.device = kIPhone;
        project.SetPageName("Before");
        FakeHost host;
        const std::string before = WriteLayoutFile(project, &host);
        std::size_t stoppedAt = 0;
        EXPECT_EQ(ReadLayoutFile(file, project, &host, &stoppedAt),
                  isLayoutFile ? 1 : kNotLayoutFile);
        EXPECT_EQ(host.errors,
                  std::vector<std::string>(isLayoutFile ? 1 : 0, "Error reading Vorn OSC file"));
        EXPECT_EQ(WriteLayoutFile(project, &host), before);
        EXPECT_EQ(project.device, kIPhone);
        EXPECT_LE(stoppedAt, file.size());
    }
}
