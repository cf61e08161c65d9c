#pragma once

#include <span>
#include <string>
#include <string_view>

class FormatHost;
class ImportReport;
class OSCProject;

// The layout formats, told apart by the file's extension: the one place that
// knows them all and what each can read and write.
struct LayoutFormat {
    const char* extension;  // as users write it, with the dot
    const char* name;       // as file dialogs list it
    bool otherApp;          // a touch app's own: the editor opens it as a new layout
    // Reads a file's bytes into project, telling report what was left out or
    // changed; false with one line in error. Null for formats only written.
    bool (*read)(std::string_view bytes, OSCProject& project, FormatHost& host,
                 ImportReport& report, std::string& error);
    // Writes project as the file at path; false with one line in error.
    bool (*write)(OSCProject& project, FormatHost& host, const std::string& path,
                  std::string& error);
};

// Every format, in the order the command line lists them.
std::span<const LayoutFormat> LayoutFormats();

// The format whose extension path ends with, in any case; null if none.
const LayoutFormat* FindLayoutFormat(std::string_view path);

// "a, b or c": the extensions of the formats that can be read, or written.
std::string ReadableExtensions();
std::string WritableExtensions();
