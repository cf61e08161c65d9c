#include "TestControls.h"
#include "TestFiles.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "formats/lemur/LemurExport.h"
#include "formats/touchosc/TouchOSCExport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

TEST(ExportFields, TheTypeAttributeIsWrittenThroughTouchOSCTypeStr)
{
    OSCProject project;
    AddControl(*project.pages[0], {{"at", {0, 0, 10, 10}}, {"type", "toggle"}});
    char kind[] = "kind=\"%s\" ";  // as long as the format it stands in for
    std::swap_ranges(std::begin(kind), std::end(kind), TouchOSCTypeStr);
    const std::string xml = Captured([&](std::FILE* out) { WriteTouchOSCXml(out, project); });
    std::swap_ranges(std::begin(kind), std::end(kind), TouchOSCTypeStr);
    EXPECT_NE(xml.find("kind=\"toggle\" local_off="), std::string::npos) << xml;
    EXPECT_EQ(xml.find("type="), std::string::npos) << xml;
}

// Layout files from elsewhere may fill a 256-byte field to the brim; its text
// is then the first 255 bytes, like every text the editor writes. Of a name,
// the first 192 bytes make the 256 base64 characters that fit.
TEST(ExportFields, FieldsWithoutTerminatorAreNotReadPastTheirEnd)
{
    OSCProject project;
    OSCControl& control = AddControl(*project.pages[0], {{"at", {0, 0, 10, 10}}});
    std::memset(control.name, 'n', sizeof control.name);
    std::memset(control.command, 'c', sizeof control.command);
    std::memset(project.pages[0]->name, 'p', sizeof project.pages[0]->name);

    const std::string jzml = Captured([&](std::FILE* out) { WriteLemurJzml(out, project); });
    EXPECT_NE(jzml.find("text=\"" + std::string(255, 'p') + "\" x="), std::string::npos);
    EXPECT_NE(jzml.find("text=\"" + std::string(255, 'n') + "\" x="), std::string::npos);
    EXPECT_NE(jzml.find("content=\"" + std::string(255, 'n') + "\">"), std::string::npos);

    const std::string xml = Captured([&](std::FILE* out) { WriteTouchOSCXml(out, project); });
    std::string names;
    for (int i = 0; i < 64; ++i)
        names += "bm5u";  // "nnn"
    EXPECT_NE(xml.find("osc_cs=\"" + std::string(255, 'c') + "\" "), std::string::npos);
    EXPECT_NE(xml.find("<control name=\"" + names + "\" "), std::string::npos);
    EXPECT_NE(xml.find("text=\"" + names + "\" "), std::string::npos);
}

}  // namespace
