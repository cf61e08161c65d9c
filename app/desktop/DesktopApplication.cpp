#include "DesktopApplication.h"

#include "MainWindow.h"
#include "ModuleLibrary.h"
#include "app/CommandLine.h"
#include "app/network/SyncPlace.h"
#include "app/osc/OscSettings.h"
#include "app/preview/PreviewPlace.h"
#include "document/IgnoringCase.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QSettings>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int kExitCannotStart = 1;
constexpr int kExitUsage = 2;

const char* const kDesktopHelp =
    "Usage: vornosc [--osc-target HOST:PORT] [--osc-listen [HOST:]PORT] [--preview [HOST:]PORT]\n"
    "               [--sync [PORT]] [--insert PARAMETERS.json] [LAYOUT...]\n"
    "Opens the editor on the given layouts, or on a new one.\n\n"
    "  --osc-target HOST:PORT  where test mode sends its OSC messages\n"
    "                          (default: the last one chosen, first 127.0.0.1:9000)\n"
    "  --osc-listen [HOST:]PORT  listens for OSC on that port (of every interface, or\n"
    "                          of HOST) for this run: values sent to a control's\n"
    "                          address move it (default: as Settings > OSC Input says)\n"
    "  --preview [HOST:]PORT   serves the active layout for this run to phones and\n"
    "                          tablets on the network, at the address it prints\n"
    "                          (default: as Settings > Phone Preview says)\n"
    "  --sync [PORT]           lets touch apps on the network add the active layout\n"
    "                          for this run, on port 9658 unless PORT is given\n"
    "                          (default: as Settings > Layout Sync says)\n"
    "  --insert PARAMETERS.json  puts the controls of a host's parameter list on the\n"
    "                          last layout, as Insert > Parameters from file does\n"
    "  --help                  show this help\n"
    "  --version               show the version\n";

bool HasDisplay()
{
    for (const char* variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return true;
    }
    return false;
}

struct DesktopArguments {
    std::vector<std::string> layouts;
    std::string oscTarget;
    std::string oscListen;
    std::string preview;
    std::string insert;
    bool help = false;
    bool version = false;
    // The values read, each set when its option was given.
    std::optional<OscTarget> target;
    std::optional<OscInput> input;
    std::optional<PreviewPlace> previewPlace;
    std::optional<int> syncPort;
};

// Reads an option's value, so that a bad one stops the start before any
// window opens; false with what is wrong in fault.
bool ReadOptionValue(const std::string& option, const std::string& value,
                     DesktopArguments& arguments, std::string& fault)
{
    if (option == "--osc-target")
        return (arguments.target = ParseOscTarget(value, fault)).has_value();
    if (option == "--osc-listen")
        return (arguments.input = ParseOscListen(value, fault)).has_value();
    if (option == "--preview")
        return (arguments.previewPlace = ParsePreviewPlace(value, fault)).has_value();
    // What the parameter file holds is checked, and told, in the editor.
    std::error_code ignored;
    if (std::filesystem::is_directory(value, ignored)) {
        fault = std::strerror(EISDIR);
        return false;
    }
    std::FILE* file = std::fopen(value.c_str(), "rb");
    if (file == nullptr) {
        fault = std::strerror(errno);
        return false;
    }
    std::fclose(file);
    return true;
}

bool ParseDesktopArguments(int argc, char* argv[], DesktopArguments& arguments, std::string& error)
{
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--help" || arg == "-h") {
            arguments.help = true;
        } else if (arg == "--version") {
            arguments.version = true;
        } else if (arg == "--osc-target" || arg == "--osc-listen" || arg == "--preview" ||
                   arg == "--insert") {
            if (i + 1 == argc) {
                error = arg == "--insert"       ? "--insert needs a parameter file"
                        : arg == "--osc-listen" ? "--osc-listen needs [HOST:]PORT"
                        : arg == "--preview"    ? "--preview needs [HOST:]PORT"
                                                : "--osc-target needs HOST:PORT";
                return false;
            }
            const std::string value = argv[++i];
            std::string fault;
            if (!ReadOptionValue(arg, value, arguments, fault)) {
                error = arg + " " + value + ": " + fault;
                return false;
            }
            (arg == "--insert"       ? arguments.insert
             : arg == "--osc-listen" ? arguments.oscListen
             : arg == "--preview"    ? arguments.preview
                                     : arguments.oscTarget) = value;
        } else if (arg == "--sync") {
            // Its port may be left out: digits after it are the port, anything else is not.
            const bool portGiven =
                i + 1 < argc && *argv[i + 1] != '\0' &&
                std::strspn(argv[i + 1], "0123456789") == std::strlen(argv[i + 1]);
            std::string fault;
            arguments.syncPort =
                portGiven ? ParseSyncPort(argv[++i], fault) : SyncPlace::kUsualPort;
            if (!arguments.syncPort) {
                error = arg + " " + argv[i] + ": " + fault;
                return false;
            }
        } else if (arg.rfind("--", 0) == 0) {
            error = "unknown option \"" + arg + "\"";
            return false;
        } else {
            arguments.layouts.push_back(arg);
        }
    }
    return true;
}

// The picture of the menu entry, in the sizes made from it at build time.
QIcon ApplicationIcon()
{
    QIcon icon;
    const QDir sizes(QStringLiteral(":/app-icon"));
    for (const QString& name : sizes.entryList())
        icon.addFile(sizes.filePath(name));
    return icon;
}

}  // namespace

bool WantsDesktop(int argc, const char* const argv[])
{
    if (argc < 2)
        return true;
    const std::string first = argv[1];
    // A mistyped command still gets the command line's answer.
    return !NamesACommand(argv[1]) &&
           (first == "--osc-target" || first == "--osc-listen" || first == "--preview" ||
            first == "--sync" || first == "--insert" || EndsWithIgnoringCase(first, ".vornosc") ||
            std::filesystem::is_regular_file(first));
}

int RunDesktop(int argc, char* argv[])
{
    DesktopArguments arguments;
    std::string error;
    if (!ParseDesktopArguments(argc, argv, arguments, error)) {
        std::fprintf(stderr, "vornosc: %s\n%s", error.c_str(), kDesktopHelp);
        return kExitUsage;
    }
    if (arguments.help || arguments.version) {
        std::fputs(arguments.help ? kDesktopHelp : VersionLine().c_str(), stdout);
        return 0;
    }
    if (!HasDisplay()) {
        std::fputs(
            "vornosc: there is no display to open the editor on (DISPLAY is not set); "
            "\"vornosc render\" paints a layout's pages into PNG pictures instead\n",
            stderr);
        return kExitCannotStart;
    }

    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("vornosc"));
    QApplication::setApplicationName(QStringLiteral("vornosc"));
    QApplication::setApplicationVersion(QStringLiteral(VORNOSC_VERSION));
    // The desktop matches the windows to the menu entry by this name.
    QGuiApplication::setDesktopFileName(QStringLiteral(VORNOSC_APP_ID));
    QApplication::setWindowIcon(ApplicationIcon());
    ModuleLibrary module;
    if (!module.Load(ModuleLibrary::PathFor(VORNOSC_MODULE_FROM_PROGRAM), error)) {
        std::fprintf(stderr, "vornosc: %s\n", error.c_str());
        return kExitCannotStart;
    }
    QSettings settings;
    MainWindow window(module, arguments.target.value_or(LoadOscTarget(settings)));
    window.show();
    NetworkServices& services = window.Services();
    // A network service that cannot start is said, and the editor goes on without it.
    const auto sayRefused = [&window](const QString& service, const std::string& place,
                                      const QString& refusal) {
        std::fprintf(stderr, "vornosc: %s: %s\n", place.c_str(), refusal.toUtf8().constData());
        std::fflush(stderr);
        window.SayRefused(service, refusal);
    };
    QString refusal;
    if (!services.ListenFor(arguments.input.value_or(LoadOscInput(settings)), refusal)) {
        sayRefused(QStringLiteral("OSC Input"),
                   arguments.oscListen.empty() ? "Settings > OSC Input"
                                               : "--osc-listen " + arguments.oscListen,
                   refusal);
    }
    refusal.clear();
    if (!services.ServePreview(arguments.previewPlace.value_or(LoadPreviewPlace(settings)),
                               refusal)) {
        sayRefused(QStringLiteral("Phone Preview"),
                   arguments.preview.empty() ? "Settings > Phone Preview"
                                             : "--preview " + arguments.preview,
                   refusal);
    }
    refusal.clear();
    const SyncPlace sync =
        arguments.syncPort ? SyncPlace{true, "", *arguments.syncPort} : LoadSyncPlace(settings);
    if (!services.ServeSync(sync, refusal)) {
        sayRefused(
            QStringLiteral("Layout Sync"),
            arguments.syncPort ? "--sync " + std::to_string(sync.port) : "Settings > Layout Sync",
            refusal);
    }
    window.Start(arguments.layouts, arguments.insert);
    return application.exec();
}
