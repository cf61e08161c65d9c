// No file a user can open crashes the application or opens half read.
#include "AppFixture.h"

#include <QMenu>
#include <QMenuBar>

#include <fstream>

namespace {

void Write(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

TEST_F(AppTest, DamagedFilesAreRefusedOneAfterAnotherWithTheirNameAndFaultAndNoEditorHeld)
{
    const std::string good = Contents(EXAMPLES_DIR "/Demo.VornOsc");
    std::vector<std::pair<std::string, std::string>> cases = {
        {"", "the file is empty"},
        {"PK\x03\x04 not a layout", "it is not a layout file"},
        {good.substr(0, 3), "it is not a layout file"},
    };
    // Cut at every chunk and with every chunk's tag spoiled.
    for (std::size_t at = good.find("PAGE"); at != std::string::npos;
         at = good.find_first_of("PC", at + 1)) {
        if (good.compare(at, 4, "PAGE") != 0 && good.compare(at, 4, "CTRL") != 0)
            continue;
        cases.emplace_back(good.substr(0, at + 6), "Error reading Vorn OSC file");
        std::string spoiled = good;
        spoiled[at + 3] = 'X';
        cases.emplace_back(spoiled, "Error reading Vorn OSC file");
    }
    ASSERT_GT(cases.size(), 100u);
    const std::string path = folder / "Damaged.VornOsc";
    for (const auto& [bytes, fault] : cases) {
        Write(path, bytes);
        answeredTexts->clear();
        Answer({QMessageBox::Ok});
        EXPECT_FALSE(window->OpenLayout(QString::fromStdString(path)));
        ASSERT_EQ(answeredTexts->size(), 1);
        const std::string shown = answeredTexts->front().toStdString();
        EXPECT_NE(shown.find(path), std::string::npos) << shown;
        EXPECT_NE(shown.find(fault), std::string::npos) << shown;
    }
    EXPECT_TRUE(window->Frames().isEmpty());
    Write(path, good);
    EXPECT_TRUE(window->OpenLayout(QString::fromStdString(path)));
    EXPECT_EQ(window->Frames().size(), 1);
}

TEST_F(AppTest, ARecentLayoutThatIsGoneIsOfferedForRemovalFromTheList)
{
    const std::string path = CopyOfExample("Gone.VornOsc");
    window->OpenLayout(QString::fromStdString(path));
    delete window->ActiveFrame();
    std::filesystem::remove(path);
    QMenu* recent = window->menuBar()->actions().front()->menu()->findChild<QMenu*>();
    Q_EMIT recent->aboutToShow();
    Answer({QMessageBox::Yes});
    recent->actions().front()->trigger();
    EXPECT_EQ(*unanswered, 0);
    EXPECT_TRUE(window->RecentFiles().isEmpty());
    EXPECT_TRUE(window->Frames().isEmpty());
}

}  // namespace
