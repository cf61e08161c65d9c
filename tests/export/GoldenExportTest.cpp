// Every folder under golden/ is one case: input.json (the layout) with
// expected.xml (the TouchOSC archive's index.xml) and expected.jzml (the Lemur
// file). A mismatch leaves the actual output under the build folder for review.

#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TempFolder.h"
#include "TestFiles.h"
#include "app/LayoutJson.h"
#include "document/OSCProject.h"
#include "document/TextField.h"

#include <gtest/gtest.h>
#include <zip.h>

#include <algorithm>
#include <filesystem>
#include <memory>

namespace fs = std::filesystem;

namespace {

const fs::path kGoldenFolder = GOLDEN_DIR;
const fs::path kActualFolder = ACTUAL_DIR;

std::vector<std::string> CaseNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kGoldenFolder)) {
        if (entry.is_directory())
            names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool HoldsQuoteOrAmpersand(std::string_view text)
{
    return text.find_first_of("\"&") != std::string_view::npos;
}

class GoldenExport : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override
    {
        Toolkit().Reset();
        host_.dataFolder = temp_.path().string();
        const fs::path input = CaseFolder() / "input.json";
        project_ = std::make_unique<OSCProject>();
        if (!fs::exists(input)) {
            // The one layout that JSON cannot hold: a project without pages,
            // on the project's default screen.
            project_->pages.clear();
            return;
        }
        const auto text = ReadWholeFile(input.string());
        ASSERT_TRUE(text) << "cannot read " << input;
        std::string error;
        ASSERT_TRUE(ReadLayoutJson(*text, *project_, error)) << input << ": " << error;
    }

    fs::path CaseFolder() const { return kGoldenFolder / GetParam(); }

    std::string ExportTouchOSC()
    {
        const std::string target = temp_ / "layout.touchosc";
        project_->ExportTouchOSCFile(&host_, target.c_str());
        return target;
    }

    void ExpectGolden(const std::string& actual, const char* fileName)
    {
        const fs::path expectedPath = CaseFolder() / fileName;
        const auto expected = ReadWholeFile(expectedPath.string());
        if (expected == actual)
            return;
        const fs::path actualPath = kActualFolder / GetParam() / fileName;
        fs::create_directories(actualPath.parent_path());
        WriteWholeFile(actualPath.string(), actual);
        ADD_FAILURE() << (expected ? "the output differs from " : "there is no ") << expectedPath
                      << "; the output is in " << actualPath;
    }

    bool XmlMayBeChecked() const
    {
        for (const auto& page : project_->pages) {
            for (const auto& control : page->controls) {
                if (HoldsQuoteOrAmpersand(TextOf(control->name)) ||
                    HoldsQuoteOrAmpersand(TextOf(control->command)))
                    return false;
            }
        }
        return true;
    }

    TempFolder temp_;
    FakeHost host_;
    std::unique_ptr<OSCProject> project_;
};

TEST_P(GoldenExport, TouchOSCArchiveHoldsTheExpectedXml)
{
    const std::string target = ExportTouchOSC();

    EXPECT_TRUE(host_.errors.empty());
    EXPECT_TRUE(Toolkit().messageBoxes.empty());
    EXPECT_FALSE(fs::exists(temp_.path() / "OSC" / "index.xml")) << "temporary file left";
    const auto entries = ReadZipEntries(target);
    ASSERT_TRUE(entries) << "libzip cannot read " << target;
    ASSERT_EQ(entries->size(), 1u);
    EXPECT_EQ(entries->front().name, "index.xml");
    EXPECT_EQ(entries->front().method, ZIP_CM_DEFLATE);
    ExpectGolden(entries->front().bytes, "expected.xml");
}

TEST_P(GoldenExport, LemurFileIsTheExpectedJzml)
{
    const std::string target = temp_ / "layout.jzml";
    project_->ExportLemurFile(&host_, target.c_str());

    EXPECT_TRUE(Toolkit().messageBoxes.empty());
    const auto written = ReadWholeFile(target);
    ASSERT_TRUE(written) << "no Lemur file written";
    ExpectGolden(*written, "expected.jzml");
}

// A second opinion on the archive from tools that share no code with libzip.
TEST_P(GoldenExport, ZipToolsAcceptTheTouchOSCArchive)
{
    if (!HasTool("unzip") || !HasTool("zipinfo"))
        GTEST_SKIP() << "unzip and zipinfo are needed to check the archive (Debian package unzip)";
    const std::string target = ExportTouchOSC();
    const std::string archive = ShellQuoted(target);

    const CommandResult test = RunCommand("unzip -t " + archive);
    EXPECT_EQ(test.status, 0) << test.output;
    const CommandResult names = RunCommand("zipinfo -1 " + archive);
    EXPECT_EQ(names.status, 0) << names.output;
    EXPECT_EQ(names.output, "index.xml\n");
    const CommandResult details = RunCommand("zipinfo -v " + archive);
    EXPECT_EQ(details.status, 0) << details.output;
    EXPECT_NE(details.output.find("compression method:                             deflated"),
              std::string::npos)
        << details.output;

    if (!XmlMayBeChecked())
        return;
    if (!HasTool("xmllint"))
        GTEST_SKIP() << "xmllint is needed to check the XML (Debian package libxml2-utils)";
    const std::string extracted = temp_ / "index.xml";
    const auto entries = ReadZipEntries(target);
    ASSERT_TRUE(entries && entries->size() == 1u);
    WriteWholeFile(extracted, entries->front().bytes);
    const CommandResult lint = RunCommand("xmllint --noout " + ShellQuoted(extracted));
    EXPECT_EQ(lint.status, 0) << lint.output;
}

INSTANTIATE_TEST_SUITE_P(Cases, GoldenExport, testing::ValuesIn(CaseNames()),
                         [](const testing::TestParamInfo<std::string>& info) {
                             return info.param;
                         });

}  // namespace
