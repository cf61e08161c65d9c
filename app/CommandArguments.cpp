#include "CommandArguments.h"

#include "IgnoringCase.h"
#include "document/ControlTables.h"

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

}  // namespace

bool CommandArguments::Parse(const std::vector<std::string>& args, std::string& error)
{
    const std::string deviceOption = "--device";
    bool optionsEnded = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (optionsEnded || arg == "-" || arg.empty() || arg[0] != '-') {
            files.push_back(arg);
        } else if (arg == "--") {
            optionsEnded = true;
        } else if (arg == "--help" || arg == "-h") {
            help = true;
        } else if (arg == deviceOption || arg.starts_with(deviceOption + "=")) {
            std::string value;
            if (arg == deviceOption) {
                if (i + 1 == args.size()) {
                    error = "--device needs a value: iphone or ipad";
                    return false;
                }
                value = args[++i];
            } else {
                value = arg.substr(deviceOption.size() + 1);
            }
            device = DeviceNamed(value);
            if (!device) {
                error = "unknown device \"" + value + "\"; use iphone or ipad";
                return false;
            }
        } else {
            error = "unknown option \"" + arg + "\"";
            return false;
        }
    }
    return true;
}
