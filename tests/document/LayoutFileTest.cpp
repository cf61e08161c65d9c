#include "FakeHost.h"
#include "TestControls.h"
#include "TestFiles.h"
#include "document/ControlTables.h"
#include "document/LayoutFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using namespace std::string_literals;

namespace {

// Every field a layout file stores for a control.
auto Stored(const OSCControl& c)
{
    return std::make_tuple(std::string(c.name), std::string(c.command), c.deviceId, c.controlNumber,
                           c.x, c.y, c.width, c.height, c.minValue, c.maxValue, c.reserved1,
                           c.reserved2, c.reserved3, c.reserved4, c.type, c.color, c.flags);
}

void ExpectSameControls(const OSCPage& a, const OSCPage& b)
{
    ASSERT_EQ(a.controls.size(), b.controls.size());
    for (std::size_t i = 0; i < a.controls.size(); ++i)
        EXPECT_EQ(Stored(*a.controls[i]), Stored(*b.controls[i])) << "control " << i;
}

std::string Write(OSCProject& project)
{
    FakeHost host;
    return WriteLayoutFile(project, &host);
}

// Name "ab", command "/c", every number distinct: the chunk below.
OSCControl ChunkControl()
{
    OSCControl c;
    std::strcpy(c.name, "ab");
    std::strcpy(c.command, "/c");
    std::tie(c.deviceId, c.controlNumber, c.x, c.y, c.width, c.height) =
        std::make_tuple(1, 2, 3, 4, 5, 6);
    std::tie(c.minValue, c.maxValue, c.reserved1, c.reserved2, c.reserved3, c.reserved4) =
        std::make_tuple(-7, 8, 9, 10, 11, 12);
    std::tie(c.type, c.color, c.flags) = std::make_tuple(kKnob, 3, 13);
    return c;
}
const std::string kControlChunk =
    "CTRL\x2D\0\0\0\x02"
    "ab\x02/c\x01\0\x02\0\x03\0\x04\0\x05\0\x06\0\xF9\xFF\xFF\xFF\x08\0\0\0\x09\0\0\0\x0A\0\0\0"
    "\x0B\0\0\0\x0C\0\0\0\x02\x03\x0D"s;

// A vertical layout with one page "P" holding count control chunks.
std::string FileWithControls(const std::string& chunks, int count)
{
    const std::string pageBody = "\0\0\x01P"s + chunks;
    std::string page = "PAGE\0\0\0\0"s + pageBody;
    page[8] = static_cast<char>(count);
    page[4] = static_cast<char>(pageBody.size());
    const char bodyLength = static_cast<char>(4 + page.size());
    return "KLYF"s + bodyLength + "\0\0\0"s + bodyLength + "\x00\x01\x00"s + page;
}

OSCProject ProjectWithChunkControl()
{
    OSCProject project;
    project.orientation = kVertical;
    project.SetPageName("P");
    project.pages[0]->controls.push_back(std::make_unique<OSCControl>(ChunkControl()));
    return project;
}

const std::string kDemo = ReadWholeFile(EXAMPLES_DIR "/Demo.VornOsc").value_or("");

}  // namespace

TEST(LayoutFile, OneEmptyPageIsTheGoldenTwentyNineBytes)
{
    OSCProject project;
    EXPECT_EQ(Write(project), ReadWholeFile(GOLDEN_DIR "/one-empty-page.VornOsc"));
}

// A host with the other byte order writes each number reversed; reading with
// it gives back every field.
TEST(LayoutFile, AControlIsWrittenAsItsChunkWithEveryNumberConvertedOnceEachWay)
{
    OSCProject project = ProjectWithChunkControl();
    std::string expected = FileWithControls(kControlChunk, 1);
    EXPECT_EQ(Write(project), expected);
    std::vector<std::pair<int, int>> numbers{{4, 4}, {10, 2}, {16, 4}, {20, 2}, {28, 4}};
    for (int i = 0; i < 6; ++i) {
        numbers.emplace_back(38 + 2 * i, 2);  // the control's int16 fields
        numbers.emplace_back(50 + 4 * i, 4);  // and its int32 fields
    }
    for (const auto& [at, size] : numbers)
        std::reverse(expected.begin() + at, expected.begin() + at + size);
    BigEndianHost host;
    const std::string swapped = WriteLayoutFile(project, &host);
    EXPECT_EQ(swapped, expected);

    OSCProject read;
    ASSERT_EQ(ReadLayoutFile(swapped, read, &host), 0);
    ExpectSameControls(*read.pages[0], *project.pages[0]);
    EXPECT_EQ(Stored(*project.pages[0]->controls[0]), Stored(ChunkControl()));
}

// The device is not in the file: reading keeps the project's own.
TEST(LayoutFile, TheDemoIsReadToItsEndAndWrittenBackByteForByte)
{
    OSCProject read;
    read.device = kIPhone;
    FakeHost host;
    std::size_t stoppedAt = 0;
    ASSERT_EQ(ReadLayoutFile(kDemo, read, &host, &stoppedAt), 0);
    EXPECT_EQ(stoppedAt, kDemo.size());
    EXPECT_TRUE(host.errors.empty());
    EXPECT_EQ(read.device, kIPhone);
    EXPECT_EQ(read.orientation, kHorizontal);
    EXPECT_EQ(read.pages.size(), 2u);
    EXPECT_EQ(Write(read), kDemo);
}

// Longer chunks come from later versions; a short or absurd length is ignored.
TEST(LayoutFile, ExtraControlBytesAreSkippedAndAShortLengthIsIgnored)
{
    std::string longer = kControlChunk + "\xEE\xEE\xEE"s;
    longer[4] = 0x2D + 3;
    std::string shorter = kControlChunk;
    shorter[4] = 0x10;
    std::string mostNegative = kControlChunk;
    mostNegative.replace(4, 4, "\0\0\0\x80"s);
    OSCProject read;
    FakeHost host;
    ASSERT_EQ(ReadLayoutFile(FileWithControls(longer + shorter + mostNegative + kControlChunk, 4),
                             read, &host),
              0);
    OSCProject expected = ProjectWithChunkControl();
    for (int i = 0; i < 3; ++i)
        expected.pages[0]->controls.push_back(std::make_unique<OSCControl>(ChunkControl()));
    ExpectSameControls(*read.pages[0], *expected.pages[0]);
}

TEST(LayoutFile, AFileWithoutPagesKeepsThePagesThereWere)
{
    OSCProject project;
    project.SetPageName("Kept");
    FakeHost host;
    ASSERT_EQ(ReadLayoutFile("KLYF\x04\0\0\0\x04\0\0\0"s, project, &host), 0);
    EXPECT_TRUE(host.errors.empty());
    ASSERT_EQ(project.pages.size(), 1u);
    EXPECT_STREQ(project.pages[0]->name, "Kept");
    EXPECT_EQ(project.orientation, kVertical);
}

TEST(LayoutFile, AFileWithoutTheMagicIsNotReadAndNothingIsShown)
{
    for (const std::string& bytes : {""s, "KLY"s, "KLYX\x15\0\0\0"s, "PAGE"s}) {
        OSCProject project;
        FakeHost host;
        EXPECT_EQ(ReadLayoutFile(bytes, project, &host), kNotLayoutFile) << bytes;
        EXPECT_TRUE(host.errors.empty());
    }
}

// Cut anywhere, a damaged chunk tag, or counts far beyond the bytes there are.
TEST(LayoutFile, ABadFileIsToldOnceAndLeavesTheProjectExactlyAsItWas)
{
    const std::string& bytes = kDemo;
    std::vector<std::pair<std::string, std::string>> damaged{
        {"huge counts",
         "KLYF\xFF\xFF\xFF\xFF\xFF\0\xFF\xFFPAGE\xFF\xFF\xFF\x7F\xFF\xFF\0CTRL\xFF\xFF\xFF\x7F"s}};
    for (std::size_t length = 4; length < bytes.size(); ++length)
        damaged.emplace_back("cut at " + std::to_string(length), bytes.substr(0, length));
    for (const char* tag : {"PAGE", "CTRL"}) {
        for (std::size_t at = bytes.find(tag); at != std::string::npos;
             at = bytes.find(tag, at + 1)) {
            damaged.emplace_back(tag + (" at " + std::to_string(at)), bytes);
            damaged.back().second[at + 3] = 'X';
        }
    }
    for (const auto& [what, file] : damaged) {
        SCOPED_TRACE(what);
        OSCProject project;
        project.device = kIPhone;
        project.SetPageName("Before");
        const std::string before = Write(project);
        FakeHost host;
        std::size_t stoppedAt = 0;
        EXPECT_EQ(ReadLayoutFile(file, project, &host, &stoppedAt), 1);
        EXPECT_EQ(host.errors, std::vector<std::string>{"Error reading Vorn OSC file"});
        EXPECT_EQ(Write(project), before);
        EXPECT_EQ(project.device, kIPhone);
        EXPECT_LE(stoppedAt, file.size());
    }
}
