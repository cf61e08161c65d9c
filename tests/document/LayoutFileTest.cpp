#include "FakeHost.h"
#include "document/ControlTables.h"
#include "document/LayoutFile.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

using namespace std::string_literals;

namespace {

std::string ReadGolden(const std::string& name)
{
    std::ifstream in(std::string(GOLDEN_DIR) + "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

OSCControl& AddControl(OSCPage& page, const char* name, const char* command)
{
    page.controls.push_back(std::make_unique<OSCControl>());
    OSCControl& control = *page.controls.back();
    std::strcpy(control.name, name);
    std::strcpy(control.command, command);
    return control;
}

// Two pages whose controls use every field, some at their limits.
OSCProject SampleProject()
{
    OSCProject project;
    project.orientation = kVertical;
    project.SetPageName("Mixer");
    OSCControl& fader = AddControl(*project.pages[0], "Vol", "/TRVX/ID1/SetVal/Ctl7");
    fader.deviceId = 1;
    fader.controlNumber = 7;
    fader.x = -32768;
    fader.y = 32767;
    fader.width = 40;
    fader.height = 200;
    fader.minValue = INT_MIN;
    fader.maxValue = INT_MAX;
    fader.reserved1 = 1;
    fader.reserved2 = -2;
    fader.reserved3 = 0x01020304;
    fader.reserved4 = -0x01020304;
    fader.type = kFader;
    fader.color = 255;
    fader.flags = 0x80;
    AddControl(*project.pages[0], std::string(255, 'n').c_str(), "");
    project.AddPage();
    project.SetPageName("");
    project.AddPage();
    project.SetPageName("Transport");
    AddControl(*project.pages[2], "Play", "/play").type = kPushButton;
    return project;
}

std::string Write(OSCProject& project)
{
    FakeHost host;
    return WriteLayoutFile(project, &host);
}

// A control chunk for name "ab", command "/c", with every number distinct.
const std::string kControlChunk =
    "CTRL\x2D\0\0\0"s
    "\x02"
    "ab"
    "\x02"
    "/c"
    "\x01\x00"
    "\x02\x00"
    "\x03\x00"
    "\x04\x00"
    "\x05\x00"
    "\x06\x00"s
    "\xF9\xFF\xFF\xFF"
    "\x08\0\0\0"
    "\x09\0\0\0"
    "\x0A\0\0\0"
    "\x0B\0\0\0"
    "\x0C\0\0\0"s
    "\x02\x03\x0D"s;

OSCControl ChunkControl()
{
    OSCControl control;
    std::strcpy(control.name, "ab");
    std::strcpy(control.command, "/c");
    control.deviceId = 1;
    control.controlNumber = 2;
    control.x = 3;
    control.y = 4;
    control.width = 5;
    control.height = 6;
    control.minValue = -7;
    control.maxValue = 8;
    control.reserved1 = 9;
    control.reserved2 = 10;
    control.reserved3 = 11;
    control.reserved4 = 12;
    control.type = kKnob;
    control.color = 3;
    control.flags = 13;
    return control;
}

// A file with one page "P" holding the given control chunks.
std::string FileWithControls(const std::string& chunks, int count)
{
    const std::string pageBody = "\x00\x00\x01P"s + chunks;
    std::string page = "PAGE"s + std::string(4, '\0') + pageBody;
    page[8] = static_cast<char>(count);
    page[4] = static_cast<char>(pageBody.size());
    const std::uint8_t bodyLength = static_cast<std::uint8_t>(4 + page.size());
    return "KLYF"s + static_cast<char>(bodyLength) + "\0\0\0"s + static_cast<char>(bodyLength) +
           "\x00\x01\x00"s + page;
}

void ExpectSameControl(const OSCControl& a, const OSCControl& b)
{
    EXPECT_STREQ(a.name, b.name);
    EXPECT_STREQ(a.command, b.command);
    EXPECT_EQ(a.Rect(), b.Rect());
    EXPECT_EQ(std::tie(a.deviceId, a.controlNumber, a.minValue, a.maxValue, a.reserved1,
                       a.reserved2, a.reserved3, a.reserved4, a.type, a.color, a.flags),
              std::tie(b.deviceId, b.controlNumber, b.minValue, b.maxValue, b.reserved1,
                       b.reserved2, b.reserved3, b.reserved4, b.type, b.color, b.flags));
}

}  // namespace

TEST(LayoutFile, OneEmptyPageIsTheGoldenTwentyNineBytes)
{
    OSCProject project;
    const std::string bytes = Write(project);
    EXPECT_EQ(bytes.size(), 29u);
    EXPECT_EQ(bytes, ReadGolden("one-empty-page.VornOsc"));
}

TEST(LayoutFile, ControlChunkBytes)
{
    OSCProject project;
    project.orientation = kVertical;
    project.SetPageName("P");
    project.pages[0]->controls.push_back(std::make_unique<OSCControl>(ChunkControl()));
    EXPECT_EQ(Write(project), FileWithControls(kControlChunk, 1));
}

TEST(LayoutFile, EveryNumberIsConvertedOnceEachWay)
{
    // A host with the other byte order writes each number reversed; reading
    // with it must give back every field.
    OSCProject project;
    project.SetPageName("P");
    project.pages[0]->controls.push_back(std::make_unique<OSCControl>(ChunkControl()));
    BigEndianHost host;
    const std::string swapped = WriteLayoutFile(project, &host);
    const std::string little = Write(project);
    ASSERT_EQ(swapped.size(), little.size());
    const auto reversedAt = [&](std::size_t at, std::size_t size) {
        std::string field = little.substr(at, size);
        return std::string(field.rbegin(), field.rend());
    };
    EXPECT_EQ(swapped.substr(4, 4), reversedAt(4, 4));    // body length
    EXPECT_EQ(swapped.substr(10, 2), reversedAt(10, 2));  // page count
    const std::size_t chunk = little.find("CTRL");
    EXPECT_EQ(swapped.substr(chunk + 4, 4), reversedAt(chunk + 4, 4));
    for (std::size_t field = 0; field < 6; ++field) {
        const std::size_t at = chunk + 14 + 2 * field;
        EXPECT_EQ(swapped.substr(at, 2), reversedAt(at, 2)) << "int16 field " << field;
    }
    for (std::size_t field = 0; field < 6; ++field) {
        const std::size_t at = chunk + 26 + 4 * field;
        EXPECT_EQ(swapped.substr(at, 4), reversedAt(at, 4)) << "int32 field " << field;
    }
    EXPECT_EQ(swapped.substr(chunk + 50), little.substr(chunk + 50));

    OSCProject read;
    ASSERT_EQ(ReadLayoutFile(swapped, read, &host), 0);
    ExpectSameControl(*read.pages[0]->controls[0], ChunkControl());
    ExpectSameControl(*project.pages[0]->controls[0], ChunkControl());  // restored after writing
}

TEST(LayoutFile, RoundTripKeepsEveryStoredField)
{
    OSCProject project = SampleProject();
    const std::string bytes = Write(project);

    OSCProject read;
    FakeHost host;
    std::size_t stoppedAt = 0;
    ASSERT_EQ(ReadLayoutFile(bytes, read, &host, &stoppedAt), 0);
    EXPECT_EQ(stoppedAt, bytes.size());
    EXPECT_TRUE(host.errors.empty());
    EXPECT_EQ(read.orientation, kVertical);
    ASSERT_EQ(read.pages.size(), 3u);
    EXPECT_STREQ(read.pages[0]->name, "Mixer");
    EXPECT_STREQ(read.pages[1]->name, "");
    EXPECT_STREQ(read.pages[2]->name, "Transport");
    for (std::size_t p = 0; p < 3; ++p) {
        ASSERT_EQ(read.pages[p]->controls.size(), project.pages[p]->controls.size());
        for (std::size_t c = 0; c < read.pages[p]->controls.size(); ++c)
            ExpectSameControl(*read.pages[p]->controls[c], *project.pages[p]->controls[c]);
    }
    EXPECT_EQ(Write(read), bytes);
}

TEST(LayoutFile, DeviceNeverTravelsThroughTheFile)
{
    OSCProject project;  // an iPad, horizontal
    project.orientation = kVertical;
    const std::string bytes = Write(project);

    OSCProject iphone;
    iphone.device = kIPhone;
    FakeHost host;
    ASSERT_EQ(ReadLayoutFile(bytes, iphone, &host), 0);
    EXPECT_EQ(iphone.device, kIPhone);
    EXPECT_EQ(iphone.orientation, kVertical);
}

TEST(LayoutFile, ExtraControlBytesAreSkippedAndAShortLengthIsIgnored)
{
    std::string longer = kControlChunk + "\xEE\xEE\xEE"s;
    longer[4] = static_cast<char>(0x2D + 3);
    std::string shorter = kControlChunk;
    shorter[4] = 0x10;
    OSCProject project;
    FakeHost host;
    ASSERT_EQ(ReadLayoutFile(FileWithControls(longer + shorter + kControlChunk, 3), project, &host),
              0)
        << (host.errors.empty() ? "" : host.errors[0]);
    ASSERT_EQ(project.pages[0]->controls.size(), 3u);
    for (const auto& control : project.pages[0]->controls)
        ExpectSameControl(*control, ChunkControl());
}

TEST(LayoutFile, NoPagesKeepsThePagesThereWere)
{
    OSCProject project;
    project.SetPageName("Kept");
    project.pages[0]->controls.push_back(std::make_unique<OSCControl>());
    const std::string noPages = "KLYF\x04\x00\x00\x00\x04\x00\x00\x00"s;
    FakeHost host;
    ASSERT_EQ(ReadLayoutFile(noPages, project, &host), 0);
    EXPECT_TRUE(host.errors.empty());
    ASSERT_EQ(project.pages.size(), 1u);
    EXPECT_STREQ(project.pages[0]->name, "Kept");
    EXPECT_EQ(project.pages[0]->controls.size(), 1u);
    EXPECT_EQ(project.orientation, kVertical);
}

TEST(LayoutFile, MissingMagicReadsNothingAndSaysNothing)
{
    OSCProject project;
    FakeHost host;
    for (const std::string& bytes : {""s, "KLY"s, "KLYX\x15\x00\x00\x00"s, "PAGE"s}) {
        EXPECT_EQ(ReadLayoutFile(bytes, project, &host), kNotLayoutFile);
    }
    EXPECT_TRUE(host.errors.empty());
}

TEST(LayoutFile, BadTagLeavesTheProjectExactlyAsItWas)
{
    OSCProject sample = SampleProject();
    std::string bytes = Write(sample);
    const std::size_t secondPage = bytes.find("PAGE", bytes.find("PAGE") + 1);
    const std::size_t lastControl = bytes.rfind("CTRL");

    for (const std::size_t at : {secondPage, lastControl, bytes.find("CTRL")}) {
        std::string damaged = bytes;
        damaged[at + 1] = 'X';
        OSCProject project;
        project.device = kIPhone;
        project.SetPageName("Before");
        const std::string before = Write(project);
        FakeHost host;
        EXPECT_EQ(ReadLayoutFile(damaged, project, &host), 1);
        EXPECT_EQ(host.errors, std::vector<std::string>{"Error reading Vorn OSC file"});
        EXPECT_EQ(Write(project), before);
        EXPECT_EQ(project.device, kIPhone);
    }
}

TEST(LayoutFile, FileEndingEarlyIsAnErrorWherever)
{
    OSCProject sample = SampleProject();
    const std::string bytes = Write(sample);
    for (std::size_t length = 4; length < bytes.size(); ++length) {
        OSCProject project;
        project.orientation = kHorizontal;
        const std::string before = Write(project);
        FakeHost host;
        std::size_t stoppedAt = 0;
        ASSERT_EQ(ReadLayoutFile(bytes.substr(0, length), project, &host, &stoppedAt), 1)
            << "length " << length;
        EXPECT_EQ(host.errors, std::vector<std::string>{"Error reading Vorn OSC file"})
            << "length " << length;
        EXPECT_EQ(Write(project), before) << "length " << length;
        EXPECT_LE(stoppedAt, length);
    }
}

TEST(LayoutFile, HugeCountsInATinyFileFailQuickly)
{
    const std::string bytes =
        "KLYF\xFF\xFF\xFF\xFF\xFF\x00\xFF\xFFPAGE\xFF\xFF\xFF\x7F\xFF\xFF\x00"
        "CTRL\xFF\xFF\xFF\x7F"s;
    OSCProject project;
    FakeHost host;
    EXPECT_EQ(ReadLayoutFile(bytes, project, &host), 1);
    EXPECT_EQ(project.pages.size(), 1u);
}

TEST(LayoutFile, ControlLengthNearTheEndOfIntDoesNotOverflowTheCounter)
{
    std::string chunk = kControlChunk;
    chunk.replace(4, 4, "\x00\x00\x00\x80"s);  // read as the most negative int
    OSCProject project;
    FakeHost host;
    ASSERT_EQ(ReadLayoutFile(FileWithControls(chunk, 1), project, &host), 0);
    ExpectSameControl(*project.pages[0]->controls[0], ChunkControl());
}
