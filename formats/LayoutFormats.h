#pragma once

#include "ImportLimits.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

class FormatHost;
class ImportReport;
class OSCProject;

// No layout file of any format is larger than the XML a reader takes.
constexpr std::size_t kMaxLayoutFileBytes = ImportLimits{}.maxXmlBytes;

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

// Reads the file at path as format. A file larger than maxBytes is refused
// from its size before any of it is read, and one that needs more memory than
// there is is refused as well; false with one line in error then.
bool ReadLayoutAt(const LayoutFormat& format, const std::string& path, OSCProject& project,
                  FormatHost& host, ImportReport& report, std::string& error,
                  std::size_t maxBytes = kMaxLayoutFileBytes);

// Every format, in the order the command line lists them.
std::span<const LayoutFormat> LayoutFormats();

// The format whose extension path ends with, in any case; null if none.
const LayoutFormat* FindLayoutFormat(std::string_view path);

// "a, b or c": the extensions of the formats that can be read, or written.
std::string ReadableExtensions();
std::string WritableExtensions();
