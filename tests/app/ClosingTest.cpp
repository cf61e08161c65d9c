// Closing never loses a change the user did not choose to give up.
#include "AppFixture.h"
#include "document/ControlTables.h"

#include <filesystem>

namespace {

TEST_F(AppTest, SavingANeverSavedLayoutOnCloseAsksForItsNameAndNoFileNamedNewAppears)
{
    const auto here = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    window->NewLayout();
    window->InsertControl(kToggle);

    Answer({QMessageBox::Save});
    AnswerFileDialog("");
    window->ActiveFrame()->close();
    EXPECT_EQ(window->Frames().size(), 1) << "cancelling Save As cancels the close";
    EXPECT_TRUE(Modified());

    const std::string path = folder / "Named.VornOsc";
    Answer({QMessageBox::Save});
    AnswerFileDialog(path);
    window->ActiveFrame()->close();
    EXPECT_TRUE(window->Frames().isEmpty());
    EXPECT_EQ(Contents(path).substr(0, 4), "KLYF");
    EXPECT_FALSE(std::filesystem::exists(folder / "New"));
    EXPECT_EQ(*unanswered, 0);
    std::filesystem::current_path(here);
}

TEST_F(AppTest, AFailedSaveOnCloseShowsWhyAndAsksAgainUntilSavedOrGivenUp)
{
    std::filesystem::create_directory(folder / "gone");
    const std::string path = folder / "gone/Show.VornOsc";
    std::filesystem::copy_file(EXAMPLES_DIR "/Demo.VornOsc", path);
    window->OpenLayout(QString::fromStdString(path));
    window->InsertControl(kKnob);
    std::filesystem::remove_all(folder / "gone");

    Answer({QMessageBox::Save, QMessageBox::Ok, QMessageBox::Discard});
    window->ActiveFrame()->close();
    EXPECT_EQ(*unanswered, 0) << "the question came back after the failure";
    EXPECT_TRUE(window->Frames().isEmpty());
}

}  // namespace
