// How vornosc starts the application, run as a user runs it, with no display.
#include "tests/support/TempFolder.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

namespace {

TEST(Start,
     TheApplicationAnswersHelpVersionAndBadOptionsAndSaysWhenThereIsNoDisplayOrNoPortToListenOn)
{
    WriteWholeFile("-h", "");  // an option still wins over a file of its name
    for (const nlohmann::json& c : Cases(DATA_DIR "/app.json", "starts")) {
        SCOPED_TRACE(c.dump());
        // With a display (offscreen, a home of its own), the application runs until stopped.
        const TempFolder home;
        const std::string start =
            c.value("display", false)
                ? "HOME=" + ShellQuoted(home.path()) + " QT_QPA_PLATFORM=offscreen timeout 3 "
                : "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM ";
        const CommandResult run =
            RunCommand(start + VORNOSC_BINARY " " + c["arguments"].get<std::string>());
        EXPECT_EQ(run.status, c["status"]);
        EXPECT_NE(run.output.find(c["shows"].get<std::string>()), std::string::npos) << run.output;
    }
}

}  // namespace
