// Every folder under golden/ is one case: input.json (the layout) with
// expected.xml (the TouchOSC archive's index.xml) and expected.jzml (the Lemur
// file). A mismatch leaves the actual output under the build folder for review.

#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TempFolder.h"
#include "TestFiles.h"
#include "document/OSCProject.h"
#include "formats/json/LayoutJson.h"

#include <gtest/gtest.h>
#include <zip.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::vector<std::string> CaseNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(GOLDEN_DIR))
        names.push_back(entry.path().filename().string());
    return names;
}

using GoldenExport = testing::TestWithParam<std::string>;

// unzip and xmllint give a second opinion from code that shares nothing with
// libzip or the exporter. A control of a type the editor does not know leaves a
// lone end tag in the Lemur file, as it always did: such a file is not linted.
TEST_P(GoldenExport, TheTouchOSCArchiveAndTheLemurFileHoldTheExpectedBytesAndPassTheTools)
{
    const fs::path folder = fs::path(GOLDEN_DIR) / GetParam();
    const auto expectGolden = [&](const std::string& actual, const char* fileName) {
        if (ReadWholeFile(folder / fileName) == actual)
            return;
        const fs::path kept = fs::path(ACTUAL_DIR) / GetParam() / fileName;
        fs::create_directories(kept.parent_path());
        WriteWholeFile(kept, actual);
        ADD_FAILURE() << "the output differs from " << folder / fileName << "; it is in " << kept;
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

}  // namespace
