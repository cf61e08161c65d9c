#include "LayoutCommands.h"

#include "CommandLineHost.h"
#include "LayoutLoading.h"
#include "document/OSCProject.h"
#include "document/TemporaryOutput.h"
#include "formats/LayoutFormats.h"
#include "formats/json/LayoutJson.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

const char kDumpSynopsis[] = "vornosc dump LAYOUT [--device iphone|ipad]";
const char kConvertSynopsis[] = "vornosc convert IN OUT [--device iphone|ipad]";

const char kDeviceHelp[] =
    "  --device iphone|ipad  the target device. A .VornOsc file does not keep it:\n"
    "                        reading one gives iPad unless this says otherwise.\n"
    "                        A .json file gives its own \"device\", and a\n"
    "                        file from another app the device its screen fits.\n"
    "  -h, --help            show this help\n";

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
