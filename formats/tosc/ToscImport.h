#pragma once

#include "formats/ImportLimits.h"

#include <string>
#include <string_view>

class ImportReport;
class OSCProject;

// Reads a current TouchOSC file: zlib-compressed XML, or the XML itself. On
// success replaces project's screen and pages and tells report what was left
// out or changed; otherwise returns false with one line in error and leaves
// project as it was.
bool ReadToscFile(std::string_view bytes, OSCProject& project, ImportReport& report,
                  std::string& error, const ImportLimits& limits = {});
