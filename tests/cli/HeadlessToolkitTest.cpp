#include "app/CommandLineHost.h"
#include "app/HeadlessToolkit.h"
#include "host/Toolkit.h"

#include <gtest/gtest.h>

// The command line shows no dialog: each message box becomes one line
// "caption: text" with its line breaks as spaces, for the command to print;
// questions are answered No and notices OK.
TEST(HeadlessToolkit, AMessageBoxIsKeptAsOneLineAndAQuestionIsAnsweredNo)
{
    EXPECT_NE(toolkit::MessageBox(nullptr, "Remove?\r\nSure?", "OSC", toolkit::kYesNo),
              toolkit::kAnswerYes);
    EXPECT_EQ(toolkit::MessageBox(nullptr, "Failed.\nCancelled.", nullptr, toolkit::kNotice), 1);
    EXPECT_EQ(headless::TakeMessages(),
              (std::vector<std::string>{"OSC: Remove?  Sure?", ": Failed. Cancelled."}));
    EXPECT_TRUE(headless::TakeMessages().empty());
}

// The host's errors are printed as one line after the file's name.
TEST(CommandLineHost, ErrorsAreTrimmedAndJoinedIntoOneLineAndBlankOnesDropped)
{
    CommandLineHost host;
    host.ShowError("Failed to create touchosc file\n");
    host.ShowError(" \t\r\n");
    host.ShowError("  try saving again ");
    EXPECT_EQ(host.ErrorLine(), "Failed to create touchosc file; try saving again");
}
