#pragma once

#include "CommandArguments.h"

#include <string>

constexpr int kExitSuccess = 0;
constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

// The commands, given their parsed arguments. Each prints its own errors and
// returns the exit status.
int RunDump(const CommandArguments& arguments);
int RunConvert(const CommandArguments& arguments);

// Prints what is wrong with how command was called and how to call it;
// returns kExitUsage.
int UsageError(const char* command, const std::string& what, const char* synopsis);

// One line each: how the commands are called.
extern const char kDumpSynopsis[];
extern const char kConvertSynopsis[];

// The help of --device and --help, which every command takes.
extern const char kDeviceHelp[];

// What "vornosc <command> --help" prints.
std::string DumpHelp();
std::string ConvertHelp();
