#include "CommandLine.h"

#include "LayoutCommands.h"
#include "RenderCommand.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

std::string Usage()
{
    return std::string(
               "Usage: vornosc COMMAND [ARGUMENTS]\n"
               "       vornosc [--osc-target HOST:PORT] [--osc-listen [HOST:]PORT]\n"
               "               [--preview [HOST:]PORT] [--sync [PORT]] [--insert PARAMETERS.json]\n"
               "               [LAYOUT...]\n\n"
               "Without a command, opens the editor on the layouts given, or on a new one.\n\n"
               "Commands:\n  ") +
           kDumpSynopsis + "\n      print a layout as JSON\n  " + kConvertSynopsis +
           "\n      write a layout in another format\n  " + kRenderSynopsis +
           "\n      paint a page of a layout into a PNG picture\n\n"
           "Run \"vornosc COMMAND --help\" for more on a command, \"vornosc --version\" for "
           "the version.\n";
}

struct Command {
    const char* name;
    int (*run)(const CommandArguments&);
    std::string (*help)();
    const char* synopsis;
    PictureOptions options;
};

constexpr Command kCommands[] = {
    {"dump", RunDump, DumpHelp, kDumpSynopsis, kNoPictureOptions},
    {"convert", RunConvert, ConvertHelp, kConvertSynopsis, kNoPictureOptions},
    {"render", RunRender, RenderHelp, kRenderSynopsis, kRenderOptions},
};

}  // namespace

bool NamesACommand(const char* arg)
{
    const std::string name = arg;
    for (const Command& command : kCommands) {
        if (name == command.name)
            return true;
    }
    return name == "--help" || name == "-h" || name == "--version";
}

std::string VersionLine()
{
    return std::string("vornosc ") + VORNOSC_VERSION + '\n';
}

int RunCommandLine(int argc, const char* const argv[])
{
    const std::vector<std::string> args(argv + (argc > 0 ? 1 : 0), argv + argc);
    if (!args.empty() && (args[0] == "--help" || args[0] == "-h")) {
        std::fputs(Usage().c_str(), stdout);
        return kExitSuccess;
    }
    if (!args.empty() && args[0] == "--version") {
        std::fputs(VersionLine().c_str(), stdout);
        return kExitSuccess;
    }
    if (args.empty()) {
        std::fputs(Usage().c_str(), stderr);
        return kExitUsage;
    }
    for (const Command& command : kCommands) {
        if (args[0] != command.name)
            continue;
        CommandArguments arguments;
        std::string error;
        if (!arguments.Parse({args.begin() + 1, args.end()}, error, command.options))
            return UsageError(command.name, error, command.synopsis);
        if (arguments.help || arguments.version) {
            std::fputs(arguments.help ? command.help().c_str() : VersionLine().c_str(), stdout);
            return kExitSuccess;
        }
        return command.run(arguments);
    }
    const char* what = args[0].starts_with('-') ? "option" : "command";
    std::fprintf(stderr, "vornosc: unknown %s \"%s\"\n%s", what, args[0].c_str(), Usage().c_str());
    return kExitUsage;
}
