#include "TestFiles.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "export/LemurExport.h"
#include "export/TouchOSCExport.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

OSCControl& AddControl(OSCProject& project, ControlType type)
{
    auto& controls = project.pages.front()->controls;
    controls.push_back(std::make_unique<OSCControl>());
    controls.back()->type = type;
    return *controls.back();
}

std::string TouchOSCXml(const OSCProject& project)
{
    return Captured([&](std::FILE* out) { WriteTouchOSCXml(out, project); });
}

std::string LemurJzml(OSCProject& project)
{
    return Captured([&](std::FILE* out) { WriteLemurJzml(out, project); });
}

TEST(ExportFields, TypeAttributeIsWrittenThroughTouchOSCTypeStr)
{
    OSCProject project;
    AddControl(project, kToggle);
    char saved[sizeof "type=\"%s\" "];
    std::memcpy(saved, TouchOSCTypeStr, sizeof saved);
    std::strcpy(TouchOSCTypeStr, "kind=\"%s\" ");

    const std::string xml = TouchOSCXml(project);

    std::memcpy(TouchOSCTypeStr, saved, sizeof saved);
    EXPECT_NE(xml.find("kind=\"toggle\" local_off="), std::string::npos) << xml;
    EXPECT_EQ(xml.find("type="), std::string::npos) << xml;
}

// Layout files from elsewhere may fill a 256-byte field to the brim.
TEST(ExportFields, FieldsWithoutTerminatorAreNotReadPastTheirEnd)
{
    OSCProject project;
    OSCControl& control = AddControl(project, kLabel);
    std::memset(control.name, 'n', sizeof control.name);
    std::memset(control.command, 'c', sizeof control.command);
    std::memset(project.pages.front()->name, 'p', sizeof project.pages.front()->name);
    // A field's text is at most 255 bytes, like every text the editor writes.
    const std::string name(255, 'n');
    const std::string command(255, 'c');
    const std::string page(255, 'p');

    const std::string jzml = LemurJzml(project);
    EXPECT_NE(jzml.find("text=\"" + page + "\" x="), std::string::npos);
    EXPECT_NE(jzml.find("text=\"" + name + "\" x="), std::string::npos);
    EXPECT_NE(jzml.find("content=\"" + name + "\">"), std::string::npos);

    const std::string xml = TouchOSCXml(project);
    EXPECT_NE(xml.find("osc_cs=\"" + command + "\" "), std::string::npos);
    // The first 192 bytes make the 256 characters that fit.
    const std::string code = "bm5u";  // "nnn"
    std::string names;
    for (int i = 0; i < 64; ++i)
        names += code;
    EXPECT_NE(xml.find("<control name=\"" + names + "\" "), std::string::npos);
    EXPECT_NE(xml.find("text=\"" + names + "\" "), std::string::npos);
}

TEST(ExportFields, LemurExportNamesUnnamedControlsInTheDocument)
{
    OSCProject project;
    const char* const defaults[] = {"text", "Fader", "Knob", "Toggle", "Button"};
    for (int type = kLabel; type <= kPushButton; ++type)
        AddControl(project, static_cast<ControlType>(type));
    OSCControl& named = AddControl(project, kFader);
    std::strcpy(named.name, "Cutoff");
    OSCControl& unknown = AddControl(project, static_cast<ControlType>(7));

    LemurJzml(project);

    const auto& controls = project.pages.front()->controls;
    for (int type = kLabel; type <= kPushButton; ++type)
        EXPECT_STREQ(controls[static_cast<std::size_t>(type)]->name, defaults[type]);
    EXPECT_STREQ(named.name, "Cutoff");
    EXPECT_STREQ(unknown.name, "") << "a type without a window gets no name";
}

}  // namespace
