#include "LayoutLoading.h"

#include "CommandLineHost.h"
#include "LayoutCommands.h"
#include "document/OSCProject.h"
#include "formats/ImportReport.h"
#include "formats/LayoutFormats.h"

#include <cstdio>

int Failure(const std::string& file, const std::string& what)
{
    std::fprintf(stderr, "vornosc: %s: %s\n", file.c_str(), what.c_str());
    return kExitFailure;
}

int LoadLayout(const std::string& path, const LayoutFormat& format,
               const CommandArguments& arguments, OSCProject& project, CommandLineHost& host)
{
    std::string error;
    ImportReport report;
    if (!ReadLayoutAt(format, path, project, host, report, error))
        return Failure(path, error);
    // What an import left out or changed is told, but the layout is made.
    for (const std::string& line : report.Lines())
        std::fprintf(stderr, "vornosc: %s: %s\n", path.c_str(), line.c_str());
    if (arguments.device)
        project.device = *arguments.device;
    return kExitSuccess;
}

std::string UnknownInput(const std::string& path)
{
    return "cannot read \"" + path + "\": a layout to read ends in " + ReadableExtensions();
}
