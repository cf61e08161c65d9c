#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What a user gave a command: its files and options.
struct CommandArguments {
    std::vector<std::string> files;
    std::optional<std::uint8_t> device;  // --device
    bool help = false;                   // --help or -h, anywhere

    // Parses args; false with the reason in error when they make no sense.
    // "--" ends the options, for files whose names start with "-".
    bool Parse(const std::vector<std::string>& args, std::string& error);
};
