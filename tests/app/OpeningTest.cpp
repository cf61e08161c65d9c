// No file a user can open crashes the application or opens half read.
#include "AppFixture.h"

#include <QMenu>
#include <QMenuBar>

#include <cstdint>
#include <fstream>

namespace {

// The file's bytes with a little-endian number of size bytes put at offset.
std::string WithNumber(std::string bytes, std::size_t offset, std::uint32_t value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes[offset + static_cast<std::size_t>(i)] = static_cast<char>(value >> (8 * i));
    return bytes;
}

TEST_F(AppTest, DamagedFilesNeverCrashNorOpenHalfReadAndTheApplicationGoesOn)
{
    const std::string good = Contents(EXAMPLES_DIR "/Demo.VornOsc");
    // Refused for sure, with the fault named.
    std::vector<std::pair<std::string, std::string>> refused = {
        {"", "the file is empty"},
        {"PK\x03\x04 not a layout", "it is not a layout file"},
        {good.substr(0, 3), "it is not a layout file"},
        {WithNumber(good, 10, 0xFFFF, 2), "Error reading Vorn OSC file"},  // page count
    };
    // Either refused with their name or read whole: lengths and counts near the ends of int.
    std::vector<std::string> odd = {WithNumber(good, 4, 0x7FFFFFFF, 4),
                                    WithNumber(good, 4, 0xFFFFFFFF, 4)};
    for (std::size_t at = good.find("PAGE"); at != std::string::npos;
         at = good.find_first_of("PC", at + 1)) {
        if (good.compare(at, 4, "PAGE") != 0 && good.compare(at, 4, "CTRL") != 0)
            continue;
        refused.emplace_back(good.substr(0, at + 6), "Error reading Vorn OSC file");
        std::string spoiled = good;
        spoiled[at + 3] = 'X';
        refused.emplace_back(spoiled, "Error reading Vorn OSC file");
        for (const std::uint32_t length : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 0u})
            odd.push_back(WithNumber(good, at + 4, length, 4));
    }
    ASSERT_GT(refused.size() + odd.size(), 300u);
    const std::string path = folder / "Damaged.VornOsc";
    const auto open = [&](const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
        answeredTexts->clear();
        Answer({QMessageBox::Ok});
        const bool opened = window->OpenLayout(QString::fromStdString(path));
        if (opened) {
            CancelAnswers();
            delete window->ActiveFrame();
        }
        return opened;
    };
    for (const auto& [bytes, fault] : refused) {
        EXPECT_FALSE(open(bytes));
        ASSERT_EQ(answeredTexts->size(), 1);
        const std::string shown = answeredTexts->front().toStdString();
        EXPECT_NE(shown.find(path), std::string::npos) << shown;
        EXPECT_NE(shown.find(fault), std::string::npos) << shown;
    }
    for (const std::string& bytes : odd) {
        if (!open(bytes)) {
            ASSERT_EQ(answeredTexts->size(), 1);
            EXPECT_NE(answeredTexts->front().toStdString().find(path), std::string::npos);
        }
    }
    EXPECT_TRUE(window->Frames().isEmpty());
    EXPECT_TRUE(open(good)) << "the application goes on";
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
