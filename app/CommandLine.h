#pragma once

// Runs the vornosc command line: "vornosc dump ..." and "vornosc convert ...".
// Output goes to stdout, every error to stderr as one line. Returns the exit
// status: 0 done, 1 failed (bad input, unwritable output), 2 wrong usage.
int RunCommandLine(int argc, const char* const argv[]);
