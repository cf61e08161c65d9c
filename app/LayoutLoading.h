#pragma once

#include "CommandArguments.h"

#include <string>

class CommandLineHost;
class OSCProject;
struct LayoutFormat;

// Prints "vornosc: file: what" on stderr; returns the failure exit status.
int Failure(const std::string& file, const std::string& what);

// Reads the layout at path into project and applies --device; returns the exit
// status, 0 when project is ready. What an import left out or changed is
// printed on stderr, one line per kind.
int LoadLayout(const std::string& path, const LayoutFormat& format,
               const CommandArguments& arguments, OSCProject& project, CommandLineHost& host);

// Why path cannot be read as a layout: its extension is none of ours.
std::string UnknownInput(const std::string& path);
