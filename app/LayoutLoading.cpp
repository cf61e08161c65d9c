#include "LayoutLoading.h"

#include "CommandLineHost.h"
#include "LayoutCommands.h"
#include "document/OSCProject.h"
#include "formats/ImportReport.h"
#include "formats/LayoutFormats.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

bool ReadWholeFile(const std::string& path, std::string& bytes, std::string& error)
{
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        error = std::string("cannot read: ") + std::strerror(errno);
        return false;
    }
    char buffer[65536];
    std::size_t count = 0;
    while ((count = std::fread(buffer, 1, sizeof buffer, file)) > 0)
        bytes.append(buffer, count);
    const bool failed = std::ferror(file) != 0;
    const int savedErrno = errno;
    std::fclose(file);
    if (failed) {
        error = std::string("cannot read: ") + std::strerror(savedErrno);
        return false;
    }
    return true;
}

}  // namespace

int Failure(const std::string& file, const std::string& what)
{
    std::fprintf(stderr, "vornosc: %s: %s\n", file.c_str(), what.c_str());
    return kExitFailure;
}

int LoadLayout(const std::string& path, const LayoutFormat& format,
               const CommandArguments& arguments, OSCProject& project, CommandLineHost& host)
{
    std::string bytes;
    std::string error;
    ImportReport report;
    if (!ReadWholeFile(path, bytes, error) || !format.read(bytes, project, host, report, error))
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
