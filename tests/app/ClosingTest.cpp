// Closing a layout or quitting asks about each changed layout and never loses a change the user
// did not choose to give up; until then a recovery copy keeps it.
#include "AppFixture.h"
#include "document/ControlTables.h"

#include <QCoreApplication>

#include <algorithm>
#include <filesystem>

namespace {

TEST_F(AppTest, ClosingAndQuittingSaveDiscardOrKeepEachChangedLayoutAsAnsweredWithACopyMeanwhile)
{
    const std::string demo = ReadWholeFile(EXAMPLES_DIR "/Demo.VornOsc").value();
    const QString copies = RecoveryFolder(QCoreApplication::applicationPid());
    // Each step changes the layout it opens, if any, then closes the active one, quits or saves.
    for (const nlohmann::json& c : Cases(DATA_DIR "/app.json", "closing")) {
        SCOPED_TRACE(c.dump());
        const std::string open = c.value("open", ""), action = c.value("do", "");
        if (open.starts_with("gone/"))
            std::filesystem::create_directory(folder / "gone");
        if (open == "New")
            window->NewLayout();
        else if (!open.empty())
            Open(CopyOfExample(open));
        if (!open.empty())
            window->InsertControl(kFader);
        if (open.starts_with("gone/"))
            std::filesystem::remove_all(folder / "gone");  // so that saving it fails
        answered.clear();
        answers = c.value("answers", std::deque<std::string>());
        if (action == "quit")
            EXPECT_EQ(window->close(), c["frames"] == 0);
        else if (action == "close")
            Frame().close();
        else if (action == "save")
            window->SaveLayout();
        EXPECT_TRUE(answers.empty());
        EXPECT_EQ(answered, c.value("asked", std::vector<std::string>()));
        if (c.contains("buttons")) {  // of the last question
            std::sort(buttons.begin(), buttons.end());
            EXPECT_EQ(buttons, c["buttons"].get<std::vector<std::string>>());
        }
        ASSERT_EQ(window->Frames().size(), c["frames"]);
        EXPECT_EQ(ReadWholeFile(folder / c["file"]).value_or(demo) != demo, c["written"]);
        window->KeepRecoveryCopies();
        EXPECT_EQ(QDir(copies, QStringLiteral("*.VornOsc")).count(), c["copies"]);
    }
    EXPECT_FALSE(std::filesystem::exists("New")) << "no file in the working folder";
    window.reset();
    EXPECT_FALSE(QDir(copies).exists()) << "a clean exit leaves no copies";
}

}  // namespace
