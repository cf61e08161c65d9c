// Every folder under golden/ is one case: input.json (the layout) with
// expected.xml (the TouchOSC archive's index.xml) and expected.jzml (the Lemur
// file). The bundled example is the case of the current TouchOSC file. A
// mismatch leaves the actual output under the build folder for review.

#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TempFolder.h"
#include "TestFiles.h"
#include "document/LayoutFile.h"
#include "document/OSCProject.h"
#include "formats/json/LayoutJson.h"
#include "formats/tosc/ToscInflate.h"

#include <gtest/gtest.h>
#include <zip.h>
#include <pugixml.hpp>

#include <filesystem>
#include <set>

namespace fs = std::filesystem;

namespace {

std::vector<std::string> CaseNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(GOLDEN_DIR))
        names.push_back(entry.path().filename().string());
    return names;
}

// Fails unless actual is the golden file's content, and keeps it for review then.
void ExpectGolden(const fs::path& golden, const std::string& actual, const fs::path& kept)
{
    if (ReadWholeFile(golden) == actual)
        return;
    fs::create_directories(kept.parent_path());
    WriteWholeFile(kept, actual);
    ADD_FAILURE() << "the output differs from " << golden << "; it is in " << kept;
}

using GoldenExport = testing::TestWithParam<std::string>;

// unzip and xmllint give a second opinion from code that shares nothing with
// libzip or the exporter. A control of a type the editor does not know leaves a
// lone end tag in the Lemur file, as it always did: such a file is not linted.
TEST_P(GoldenExport, TheTouchOSCArchiveAndTheLemurFileHoldTheExpectedBytesAndPassTheTools)
{
    const fs::path folder = fs::path(GOLDEN_DIR) / GetParam();
    const auto expectGolden = [&](const std::string& actual, const char* fileName) {
        ExpectGolden(folder / fileName, actual, fs::path(ACTUAL_DIR) / GetParam() / fileName);
    };
    Toolkit().Reset();
    TempFolder temp;
    FakeHost host;
    host.dataFolder = temp.path().string();
    OSCProject project;
    std::string error;
    // The one layout that JSON cannot hold: no pages, on the default screen.
    if (const auto input = ReadWholeFile(folder / "input.json"))
        ASSERT_TRUE(ReadLayoutJson(*input, project, error)) << error;
    else
        project.pages.clear();

    const std::string lemur = temp / "layout.jzml", touchOSC = temp / "layout.touchosc";
    project.ExportTouchOSCFile(&host, touchOSC.c_str());
    EXPECT_TRUE(host.errors.empty());
    const auto entries = ReadZipEntries(touchOSC);
    ASSERT_TRUE(entries) << "libzip cannot read " << touchOSC;
    ASSERT_EQ(entries->size(), 1u);
    EXPECT_EQ(entries->front().name, "index.xml");
    EXPECT_EQ(entries->front().method, ZIP_CM_DEFLATE);
    expectGolden(entries->front().bytes, "expected.xml");
    // Second, as it gives unnamed controls their default names in the document.
    project.ExportLemurFile(&host, lemur.c_str());
    expectGolden(ReadWholeFile(lemur).value_or("no Lemur file written"), "expected.jzml");
    EXPECT_TRUE(Toolkit().messageBoxes.empty());

    if (!HasTool("unzip") || !HasTool("xmllint"))
        GTEST_SKIP() << "unzip and xmllint give a second opinion (packages unzip, libxml2-utils)";
    const CommandResult test = RunCommand("unzip -t " + ShellQuoted(touchOSC));
    EXPECT_EQ(test.status, 0) << test.output;
    // The archive's index.xml, as the golden check above found it.
    const CommandResult lint =
        RunCommand("xmllint --noout " + ShellQuoted(folder / "expected.xml"));
    EXPECT_EQ(lint.status, 0) << lint.output;
    const std::string jzml = ReadWholeFile(lemur).value_or("");
    const auto count = [&](const std::string& tag) {
        std::size_t n = 0;
        for (std::size_t at = jzml.find(tag); at != std::string::npos; at = jzml.find(tag, at + 1))
            ++n;
        return n;
    };
    if (count("<WINDOW ") == count("</WINDOW>")) {
        const CommandResult lemurLint = RunCommand("xmllint --noout " + ShellQuoted(lemur));
        EXPECT_EQ(lemurLint.status, 0) << lemurLint.output;
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, GoldenExport, testing::ValuesIn(CaseNames()),
                         [](const auto& info) { return info.param; });

// "TYPE key t" for each property of each node, "TYPE value key" for each value.
std::set<std::string> NodeShapes(const std::string& xml)
{
    pugi::xml_document document;
    EXPECT_TRUE(document.load_buffer(xml.data(), xml.size()));
    std::set<std::string> shapes;
    for (const pugi::xpath_node found : document.select_nodes("//node")) {
        const pugi::xml_node node = found.node();
        const std::string type = node.attribute("type").value();
        for (const pugi::xml_node property : node.child("properties").children("property"))
            shapes.insert(type + " " + property.child_value("key") + " " +
                          property.attribute("type").value());
        for (const pugi::xml_node value : node.child("values").children("value"))
            shapes.insert(type + " value " + value.child_value("key"));
    }
    return shapes;
}

// The shapes of the app's own files: the samples, and for a RADIAL, which no
// sample holds, what files the app wrote are seen to carry.
std::set<std::string> AppsOwnShapes()
{
    std::set<std::string> shapes = {"RADIAL background b",   "RADIAL centered b",
                                    "RADIAL grabFocus b",    "RADIAL grid b",
                                    "RADIAL interactive b",  "RADIAL inverted b",
                                    "RADIAL locked b",       "RADIAL outline b",
                                    "RADIAL visible b",      "RADIAL color c",
                                    "RADIAL gridColor c",    "RADIAL cornerRadius f",
                                    "RADIAL gridSteps i",    "RADIAL orientation i",
                                    "RADIAL outlineStyle i", "RADIAL pointerPriority i",
                                    "RADIAL response i",     "RADIAL responseFactor i",
                                    "RADIAL shape i",        "RADIAL frame r",
                                    "RADIAL name s",         "RADIAL script s",
                                    "RADIAL tag s",          "RADIAL value x",
                                    "RADIAL value touch"};
    for (const char* sample : {"lightshark-pager-lexml4.tosc", "small-lexml3.tosc"}) {
        std::string xml, error;
        EXPECT_TRUE(ToscXml(ReadWholeFile(std::string(SAMPLES_DIR "/") + sample).value_or(""), xml,
                            {}, error))
            << sample << ": " << error;
        shapes.merge(NodeShapes(xml));
    }
    return shapes;
}

// A zlib stream at zlib's default level, as the app's files are; its XML well
// formed for xmllint, and every node carries only properties and values that
// the app writes on nodes of its type.
TEST(GoldenToscExport, TheExampleInflatesToTheExpectedXmlShapedAsTheAppsOwnFiles)
{
    Toolkit().Reset();
    TempFolder temp;
    FakeHost host;
    OSCProject project;
    const auto example = ReadWholeFile(EXAMPLES_DIR "/Demo.VornOsc");
    ASSERT_EQ(ReadLayoutFile(example.value_or(""), project, &host), 0);
    const std::string path = temp / "Demo.tosc";
    project.ExportToscFile(&host, path.c_str());
    EXPECT_TRUE(host.errors.empty());
    EXPECT_TRUE(Toolkit().messageBoxes.empty());
    const std::string bytes = ReadWholeFile(path).value_or("");
    EXPECT_TRUE(bytes.starts_with("\x78\x9C"));
    std::string xml, error;
    ASSERT_TRUE(ToscXml(bytes, xml, {}, error)) << error;
    const fs::path golden = fs::path(DATA_DIR) / "Demo.tosc.xml";
    ExpectGolden(golden, xml, fs::path(ACTUAL_DIR) / "Demo.tosc.xml");

    const std::set<std::string> apps = AppsOwnShapes();
    for (const std::string& shape : NodeShapes(xml))
        EXPECT_TRUE(apps.contains(shape)) << shape << " is not in the app's own files";

    if (!HasTool("xmllint"))
        GTEST_SKIP() << "xmllint gives a second opinion (package libxml2-utils)";
    const CommandResult lint = RunCommand("xmllint --noout " + ShellQuoted(golden));
    EXPECT_EQ(lint.status, 0) << lint.output;
}

}  // namespace
