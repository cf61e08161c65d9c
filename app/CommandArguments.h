#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The options a command takes besides --device, --help and --version.
enum PictureOptions : unsigned {
    kNoPictureOptions = 0,
    kRenderOptions = 1,  // --out, --page, --test-mode, --select
};

// What a user gave a command: its files and options.
struct CommandArguments {
    std::vector<std::string> files;
    std::optional<std::uint8_t> device;  // --device
    bool help = false;                   // --help or -h, anywhere
    bool version = false;                // --version, anywhere
    std::optional<std::string> out;      // --out FILE
    int page = 1;                        // --page N, counted from 1
    bool testMode = false;               // --test-mode
    bool selectAll = false;              // --select all

    // Parses args; false with the reason in error when they make no sense.
    // "--" ends the options, for files whose names start with "-".
    bool Parse(const std::vector<std::string>& args, std::string& error,
               PictureOptions accepted = kNoPictureOptions);
};
