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

using Boxes = std::vector<std::pair<std::string, std::string>>;  // text and caption

// Files written by this process may grow no larger than limit bytes while
// this lives; writing past it fails instead of ending the process.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t limit) : handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &saved_);
        rlimit lowered = saved_;
        lowered.rlim_cur = limit;
        ::setrlimit(RLIMIT_FSIZE, &lowered);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &saved_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit saved_{};
    void (*handler_)(int);
};

class ExportFailure : public testing::Test {
protected:
    void SetUp() override
    {
        Toolkit().Reset();
        host_.dataFolder = temp_.path().string();
        WriteWholeFile(blocker_, "a file where a folder is expected");
        WriteWholeFile(oldTarget_, "old archive");
    }

    // The message boxes shown, as text and caption; each must be a notice.
    static Boxes Notices()
    {
        Boxes notices;
        for (const ShownMessageBox& box : Toolkit().messageBoxes) {
            EXPECT_EQ(box.style, toolkit::kNotice) << box.text;
            notices.emplace_back(box.text, box.caption);
        }
        return notices;
    }

    TempFolder temp_;
    FakeHost host_;
    OSCProject project_;
    const std::string blocker_ = temp_ / "blocker";
    const std::string oldTarget_ = temp_ / "old.touchosc";
    const std::string temporaryXml_ = temp_ / "OSC/index.xml";
};

// For TouchOSC the file is the temporary one in the data folder.
TEST_F(ExportFailure, AFileThatCannotBeCreatedIsToldAndTheOldTargetLeftAlone)
{
    project_.ExportLemurFile(&host_, (blocker_ + "/layout.jzml").c_str());
    host_.dataFolder = blocker_;
    project_.ExportTouchOSCFile(&host_, oldTarget_.c_str());
    EXPECT_EQ(Notices(), Boxes(2, {"File create failure", "OSC Export"}));
    EXPECT_TRUE(host_.errors.empty());
    EXPECT_EQ(ReadWholeFile(oldTarget_), "old archive");
}

// A failed export leaves no old target behind, nor the temporary file.
TEST_F(ExportFailure, AnArchiveThatCannotBeWrittenIsToldThroughTheHost)
{
    const std::string missingFolder = temp_ / "no such folder/layout.touchosc";
    project_.ExportTouchOSCFile(&host_, missingFolder.c_str());
    EXPECT_EQ(host_.errors, kArchiveErrors);
    EXPECT_TRUE(fs::is_directory(temp_.path() / "OSC")) << "the OSC folder stays";
    {
        FileSizeLimit limit(64);  // too small for any archive
        project_.ExportTouchOSCFile(&host_, oldTarget_.c_str());
    }
    EXPECT_EQ(host_.errors.size(), 4u);
    EXPECT_FALSE(fs::exists(oldTarget_));
    EXPECT_FALSE(fs::exists(temporaryXml_));
    EXPECT_TRUE(Notices().empty());
}

// Exporting onto the temporary file itself deletes it before it is read back.
// The export goes on: the empty archive is written without an error and then
// removed along with the temporary file it replaced.
TEST_F(ExportFailure, ATemporaryFileThatCannotBeReopenedIsToldAndTheExportGoesOn)
{
    project_.ExportTouchOSCFile(&host_, temporaryXml_.c_str());
    const Boxes reopenFailure{
        {"Failed to open temp xml file.\nOperation cancelled.", "Internal Error"}};
    EXPECT_EQ(Notices(), reopenFailure);
    EXPECT_TRUE(host_.errors.empty());
    EXPECT_FALSE(fs::exists(temporaryXml_));
}

}  // namespace
