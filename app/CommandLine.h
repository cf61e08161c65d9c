#pragma once

#include <string>

// Runs the vornosc command line: "vornosc dump ...", "vornosc convert ..." and
// "vornosc render ...".
// Output goes to stdout, every error to stderr as one line. Returns the exit
// status: 0 done, 1 failed (bad input, unwritable output), 2 wrong usage.
int RunCommandLine(int argc, const char* const argv[]);

// Whether arg names a command or asks the command line for help or version.
bool NamesACommand(const char* arg);

// "vornosc VERSION\n".
std::string VersionLine();
