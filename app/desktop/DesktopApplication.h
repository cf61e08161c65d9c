#pragma once

// Runs the desktop application: "vornosc [--osc-target HOST:PORT] [LAYOUT...]".
// Returns the exit status: 0 after a normal quit, 1 when it cannot start,
// 2 for wrong usage.
int RunDesktop(int argc, char* argv[]);

// Whether the arguments ask for the desktop application rather than a command.
bool WantsDesktop(int argc, const char* const argv[]);
