#include "LayoutCommands.h"

#include "CommandLineHost.h"
#include "LayoutFormats.h"
#include "LayoutJson.h"
#include "TemporaryOutput.h"
#include "document/OSCProject.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

const char kDumpSynopsis[] = "vornosc dump LAYOUT [--device iphone|ipad]";
const char kConvertSynopsis[] = "vornosc convert IN OUT [--device iphone|ipad]";

namespace {

const char kDeviceHelp[] =
    "  --device iphone|ipad  the target device. A .VornOsc file does not keep it:\n"
    "                        reading one gives iPad unless this says otherwise.\n"
    "                        A .json file gives its own \"device\".\n"
    "  -h, --help            show this help\n";

int Failure(const std::string& file, const std::string& what)
{
    std::fprintf(stderr, "vornosc: %s: %s\n", file.c_str(), what.c_str());
    return kExitFailure;
}

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

// Reads the layout at path into project and applies --device; returns the exit
// status, 0 when project is ready.
int LoadLayout(const std::string& path, const LayoutFormat& format,
               const CommandArguments& arguments, OSCProject& project, CommandLineHost& host)
{
    std::string bytes;
    std::string error;
    if (!ReadWholeFile(path, bytes, error) || !format.read(bytes, project, host, error))
        return Failure(path, error);
    if (arguments.device)
        project.device = *arguments.device;
    return kExitSuccess;
}

std::string UnknownInput(const std::string& path)
{
    return "cannot read \"" + path + "\": a layout to read ends in " + ReadableExtensions();
}

}  // namespace

int UsageError(const char* command, const std::string& what, const char* synopsis)
{
    std::fprintf(stderr, "vornosc %s: %s\nUsage: %s\nRun \"vornosc %s --help\" for more.\n",
                 command, what.c_str(), synopsis, command);
    return kExitUsage;
}

int RunDump(const CommandArguments& arguments)
{
    if (arguments.files.size() != 1)
        return UsageError("dump", "give one layout file", kDumpSynopsis);
    const std::string& path = arguments.files[0];
    const LayoutFormat* format = FindLayoutFormat(path);
    if (format == nullptr || format->read == nullptr)
        return UsageError("dump", UnknownInput(path), kDumpSynopsis);

    CommandLineHost host;
    OSCProject project;
    if (const int status = LoadLayout(path, *format, arguments, project, host))
        return status;
    const std::string json = WriteLayoutJson(project);
    if (std::fwrite(json.data(), 1, json.size(), stdout) != json.size() || std::fflush(stdout) != 0)
        return Failure("stdout", std::string("cannot write: ") + std::strerror(errno));
    return kExitSuccess;
}

int RunConvert(const CommandArguments& arguments)
{
    if (arguments.files.size() != 2)
        return UsageError("convert", "give two files, IN and OUT", kConvertSynopsis);
    const std::string& in = arguments.files[0];
    const std::string& out = arguments.files[1];
    const LayoutFormat* inFormat = FindLayoutFormat(in);
    if (inFormat == nullptr || inFormat->read == nullptr)
        return UsageError("convert", UnknownInput(in), kConvertSynopsis);
    const LayoutFormat* outFormat = FindLayoutFormat(out);
    if (outFormat == nullptr || outFormat->write == nullptr) {
        return UsageError(
            "convert",
            "cannot write \"" + out + "\": a file to write ends in " + WritableExtensions(),
            kConvertSynopsis);
    }

    CommandLineHost host;
    OSCProject project;
    if (const int status = LoadLayout(in, *inFormat, arguments, project, host))
        return status;
    TemporaryOutput output(out);
    std::string error;
    if (!output.Create(error) || !outFormat->write(project, host, output.Path(), error) ||
        !output.Commit(error))
        return Failure(out, error);
    return kExitSuccess;
}

std::string DumpHelp()
{
    return std::string("Usage: ") + kDumpSynopsis +
           "\n\nPrints a layout as JSON on stdout. LAYOUT ends in " + ReadableExtensions() +
           ".\n\nOptions:\n" + kDeviceHelp;
}

std::string ConvertHelp()
{
    return std::string("Usage: ") + kConvertSynopsis +
           "\n\nWrites the layout IN as OUT, each in the format that its extension names,\n"
           "in any case. IN ends in " +
           ReadableExtensions() + ",\nOUT in " + WritableExtensions() +
           ".\n"
           "OUT appears only once it is complete: on failure an existing OUT is left\n"
           "as it was.\n\nOptions:\n" +
           kDeviceHelp;
}
