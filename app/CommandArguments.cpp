#include "CommandArguments.h"

#include "document/ControlTables.h"
#include "document/IgnoringCase.h"

#include <string_view>

namespace {

// "iphone" and "ipad" are what people type; the full names are accepted too.
std::optional<std::uint8_t> DeviceNamed(std::string_view name)
{
    constexpr const char* kShortNames[kDeviceCount] = {"iphone", "ipad"};
    for (int device = 0; device < kDeviceCount; ++device) {
        if (EqualsIgnoringCase(name, kShortNames[device]) ||
            EqualsIgnoringCase(name, DeviceNames[device]))
            return static_cast<std::uint8_t>(device);
    }
    return std::nullopt;
}

// A whole number, as a page number; whether the page exists is the layout's to say.
std::optional<int> PageNumber(const std::string& text)
{
    if (text.empty() || text.size() > 9 ||
        text.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    return std::stoi(text);
}

// Reads the value of an option given as "--name value" or "--name=value";
// nullopt when arg is not that option.
std::optional<std::string> OptionValue(const std::vector<std::string>& args, std::size_t& i,
                                       const std::string& name, bool& missing)
{
    const std::string& arg = args[i];
    if (arg.starts_with(name + "="))
        return arg.substr(name.size() + 1);
    if (arg != name)
        return std::nullopt;
    if (i + 1 == args.size()) {
        missing = true;
        return std::string();
    }
    return args[++i];
}

}  // namespace

bool CommandArguments::Parse(const std::vector<std::string>& args, std::string& error,
                             PictureOptions accepted)
{
    const bool rendering = accepted & kRenderOptions;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        bool missing = false;
        if (optionsEnded || arg == "-" || arg.empty() || arg[0] != '-') {
            files.push_back(arg);
        } else if (arg == "--") {
            optionsEnded = true;
        } else if (arg == "--help" || arg == "-h") {
            help = true;
        } else if (arg == "--version") {
            version = true;
        } else if (auto value = OptionValue(args, i, "--device", missing)) {
            device = DeviceNamed(*value);
            if (missing || !device) {
                error = missing ? "--device needs a value: iphone or ipad"
                                : "unknown device \"" + *value + "\"; use iphone or ipad";
                return false;
            }
        } else if (rendering && (value = OptionValue(args, i, "--out", missing))) {
            if (missing || value->empty()) {
                error = "--out needs the picture's file name";
                return false;
            }
            out = *value;
        } else if (rendering && (value = OptionValue(args, i, "--page", missing))) {
            const std::optional<int> number = PageNumber(*value);
            if (missing || !number) {
                error = "--page needs a page number, counted from 1";
                return false;
            }
            page = *number;
        } else if (rendering && (value = OptionValue(args, i, "--select", missing))) {
            if (missing || *value != "all") {
                error = "--select takes only \"all\"";
                return false;
            }
            selectAll = true;
        } else if (rendering && arg == "--test-mode") {
            testMode = true;
        } else {
            error = "unknown option \"" + arg + "\"";
            return false;
        }
    }
    return true;
}
