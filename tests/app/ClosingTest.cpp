// Closing a layout or quitting asks about each changed layout and never loses a change the user
// did not choose to give up.
#include "AppFixture.h"
#include "document/ControlTables.h"

#include <filesystem>

namespace {

TEST_F(AppTest, ClosingAndQuittingSaveDiscardOrKeepEachChangedLayoutAsAnswered)
{
    const std::string demo = ReadWholeFile(EXAMPLES_DIR "/Demo.VornOsc").value();
    const auto here = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());  // where a layout never saved would go as "New"
    std::filesystem::create_directory(folder / "gone");
    // Each step changes the layout it opens, if any, and closes the active one or quits.
    for (const nlohmann::json& c : Cases(DATA_DIR "/app.json", "closing")) {
        SCOPED_TRACE(c.dump());
        const std::string open = c.value("open", "");
        if (open == "New")
            window->NewLayout();
        else if (!open.empty())
            Open(CopyOfExample(open));
        if (!open.empty())
            window->InsertControl(kFader);
        if (open.starts_with("gone/"))
            std::filesystem::remove_all(folder / "gone");  // so that saving it fails
        answered.clear();
        for (const std::string answer : c["answers"])
            answers.push_back(answer);
        if (c.value("quit", false))
            EXPECT_EQ(window->close(), c["frames"] == 0);
        else if (!c["answers"].empty())
            Frame().close();
        EXPECT_TRUE(answers.empty());
        EXPECT_EQ(answered, c.value("asked", std::vector<std::string>()));
        ASSERT_EQ(window->Frames().size(), c["frames"]);
        EXPECT_TRUE(window->Frames().isEmpty() || Modified()) << "what stays open stays changed";
        EXPECT_EQ(ReadWholeFile(folder / c["file"]).value_or(demo) != demo, c["written"]);
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "New"));
    std::filesystem::current_path(here);
}

}  // namespace
