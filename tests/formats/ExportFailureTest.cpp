#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TempFolder.h"
#include "TestFiles.h"
#include "document/OSCProject.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <csignal>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

const std::vector<std::string> kArchiveErrors = {"Failed to create touchosc file",
                                                 "  try saving again with a different file name"};
const std::vector<std::string> kToscErrors = {"Failed to create tosc file",
                                              "  try saving again with a different file name"};

class ExportFailure : public testing::Test {
protected:
    void SetUp() override
    {
        Toolkit().Reset();
        host_.dataFolder = temp_.path().string();
        WriteWholeFile(oldTarget_, "old archive");
    }

    // The message boxes shown, a "caption: text" line each; each must be a notice.
    static std::string Notices()
    {
        std::string notices;
        for (const ShownMessageBox& box : Toolkit().messageBoxes)
            notices += box.caption + ": " + box.text +
                       (box.style == toolkit::kNotice ? "\n" : " (not a notice)\n");
        return notices;
    }

    TempFolder temp_;
    FakeHost host_;
    OSCProject project_;
    const std::string oldTarget_ = temp_ / "old.touchosc";
    const std::string temporaryXml_ = temp_ / "OSC/index.xml";
};

// For TouchOSC the file is the temporary one in the data folder.
TEST_F(ExportFailure, AFileThatCannotBeCreatedIsToldAndTheOldTargetLeftAlone)
{
    const std::string blocker = temp_ / "blocker";
    WriteWholeFile(blocker, "a file where a folder is expected");
    project_.ExportLemurFile(&host_, (blocker + "/layout.jzml").c_str());
    project_.ExportToscFile(&host_, (blocker + "/layout.tosc").c_str());
    host_.dataFolder = blocker;
    project_.ExportTouchOSCFile(&host_, oldTarget_.c_str());
    EXPECT_EQ(Notices(),
              "OSC Export: File create failure\nOSC Export: File create failure\n"
              "OSC Export: File create failure\n");
    EXPECT_TRUE(host_.errors.empty());
    EXPECT_EQ(ReadWholeFile(oldTarget_), "old archive");
}

// A failed export leaves no old target behind, nor the temporary file. Files
// may grow no larger than a limit too small for any archive while this writes
// over the old target; writing past it fails instead of ending the process.
TEST_F(ExportFailure, AnArchiveThatCannotBeWrittenIsToldThroughTheHost)
{
    project_.ExportTouchOSCFile(&host_, (temp_ / "no such folder/layout.touchosc").c_str());
    EXPECT_EQ(host_.errors, kArchiveErrors);
    EXPECT_TRUE(fs::is_directory(temp_.path() / "OSC")) << "the OSC folder stays";
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit saved{};
    ::getrlimit(RLIMIT_FSIZE, &saved);
    const rlimit tooSmall{64, saved.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &tooSmall);
    project_.ExportTouchOSCFile(&host_, oldTarget_.c_str());
    const std::string tosc = temp_ / "layout.tosc";
    project_.ExportToscFile(&host_, tosc.c_str());
    ::setrlimit(RLIMIT_FSIZE, &saved);
    EXPECT_EQ(host_.errors.size(), 6u);
    EXPECT_EQ(std::vector(host_.errors.end() - 2, host_.errors.end()), kToscErrors);
    EXPECT_FALSE(fs::exists(tosc)) << "half a file is not left behind";
    EXPECT_FALSE(fs::exists(oldTarget_));
    EXPECT_FALSE(fs::exists(temporaryXml_));
    EXPECT_EQ(Notices(), "");
}

// Exporting onto the temporary file itself deletes it before it is read back.
// The export goes on: the empty archive is written without an error and then
// removed along with the temporary file it replaced.
TEST_F(ExportFailure, ATemporaryFileThatCannotBeReopenedIsToldAndTheExportGoesOn)
{
    project_.ExportTouchOSCFile(&host_, temporaryXml_.c_str());
    EXPECT_EQ(Notices(), "Internal Error: Failed to open temp xml file.\nOperation cancelled.\n");
    EXPECT_TRUE(host_.errors.empty());
    EXPECT_FALSE(fs::exists(temporaryXml_));
}

}  // namespace
