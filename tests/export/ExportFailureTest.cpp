#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TempFolder.h"
#include "TestFiles.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <csignal>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

const std::vector<std::string> kArchiveErrors = {"Failed to create touchosc file",
                                                 "  try saving again with a different file name"};

std::unique_ptr<OSCProject> OneFaderProject()
{
    auto project = std::make_unique<OSCProject>();
    auto control = std::make_unique<OSCControl>();
    control->type = kFader;
    control->y = 100;
    project->pages.front()->controls.push_back(std::move(control));
    return project;
}

void ExpectOneNotice(const char* text, const char* caption)
{
    const auto& shown = Toolkit().messageBoxes;
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, text);
    EXPECT_EQ(shown[0].caption, caption);
    EXPECT_EQ(shown[0].style, toolkit::kNotice);
}

// Files written by this process may grow no larger than limit bytes while
// this lives; writing past it fails instead of ending the process.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t limit)
    {
        ::getrlimit(RLIMIT_FSIZE, &saved_);
        previousHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        rlimit lowered = saved_;
        lowered.rlim_cur = limit;
        ::setrlimit(RLIMIT_FSIZE, &lowered);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &saved_);
        std::signal(SIGXFSZ, previousHandler_);
    }

private:
    rlimit saved_{};
    void (*previousHandler_)(int) = nullptr;
};

class ExportFailure : public testing::Test {
protected:
    void SetUp() override
    {
        Toolkit().Reset();
        host_.dataFolder = temp_.path().string();
        WriteWholeFile(blocker_, "a file where a folder is expected");
    }

    std::string TemporaryXml() const { return (temp_.path() / "OSC" / "index.xml").string(); }

    TempFolder temp_;
    FakeHost host_;
    const std::string blocker_ = temp_ / "blocker";
    std::unique_ptr<OSCProject> project_ = OneFaderProject();
};

TEST_F(ExportFailure, TouchOSCDataFolderWithoutRoomForTheTemporaryFile)
{
    host_.dataFolder = blocker_;
    const std::string target = temp_ / "old.touchosc";
    WriteWholeFile(target, "old archive");

    project_->ExportTouchOSCFile(&host_, target.c_str());

    ExpectOneNotice("File create failure", "OSC Export");
    EXPECT_TRUE(host_.errors.empty());
    EXPECT_EQ(ReadWholeFile(target), "old archive") << "the target must stay untouched";
}

TEST_F(ExportFailure, TouchOSCTargetThatLibzipCannotCreate)
{
    const std::string target = temp_ / "no such folder/layout.touchosc";

    project_->ExportTouchOSCFile(&host_, target.c_str());

    EXPECT_EQ(host_.errors, kArchiveErrors);
    EXPECT_TRUE(Toolkit().messageBoxes.empty());
    EXPECT_FALSE(fs::exists(target));
    EXPECT_FALSE(fs::exists(TemporaryXml()));
    EXPECT_TRUE(fs::is_directory(temp_.path() / "OSC")) << "the OSC folder stays";
}

TEST_F(ExportFailure, OldTouchOSCTargetIsDeletedEvenWhenTheArchiveFails)
{
    const std::string target = temp_ / "old.touchosc";
    WriteWholeFile(target, "old archive");
    {
        // Too small for any archive, so libzip fails after the old target is gone.
        FileSizeLimit limit(64);
        project_->ExportTouchOSCFile(&host_, target.c_str());
    }

    EXPECT_EQ(host_.errors, kArchiveErrors);
    EXPECT_FALSE(fs::exists(target)) << "a failed export leaves no old target behind";
    EXPECT_FALSE(fs::exists(TemporaryXml()));
}

// Exporting onto the temporary file itself deletes it before it is read back.
TEST_F(ExportFailure, TouchOSCTemporaryFileThatCannotBeReopened)
{
    const std::string target = TemporaryXml();

    project_->ExportTouchOSCFile(&host_, target.c_str());

    ExpectOneNotice("Failed to open temp xml file.\nOperation cancelled.", "Internal Error");
    // The procedure goes on: the (empty) archive is written without an error
    // and then removed along with the temporary file it replaced.
    EXPECT_TRUE(host_.errors.empty());
    EXPECT_FALSE(fs::exists(target));
}

TEST_F(ExportFailure, LemurTargetInAFolderThatCannotBeWritten)
{
    const std::string target = blocker_ + "/layout.jzml";

    project_->ExportLemurFile(&host_, target.c_str());

    ExpectOneNotice("File create failure", "OSC Export");
    EXPECT_TRUE(host_.errors.empty());
}

}  // namespace
