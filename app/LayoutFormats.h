#pragma once

#include <string>
#include <string_view>

class CommandLineHost;
class OSCProject;

// The file formats of the command line, told apart by the file's extension.
struct LayoutFormat {
    const char* extension;  // as users write it, with the dot
    // Reads a file's bytes into project; false with one line in error. Null
    // for formats that can only be written.
    bool (*read)(std::string_view bytes, OSCProject& project, CommandLineHost& host,
                 std::string& error);
    // Writes project as the file at path; false with one line in error.
    bool (*write)(OSCProject& project, CommandLineHost& host, const std::string& path,
                  std::string& error);
};

// The format whose extension path ends with, in any case; null if none.
const LayoutFormat* FindLayoutFormat(std::string_view path);

// "a, b or c": the extensions of the formats that can be read, or written.
std::string ReadableExtensions();
std::string WritableExtensions();
