#pragma once

#include "formats/ImportLimits.h"

#include <string>
#include <string_view>

class ImportReport;
class OSCProject;

// Reads a Lemur file (JZML text). On success replaces project's screen and
// pages and tells report what was left out or changed; otherwise returns false
// with one line in error and leaves project as it was.
bool ReadLemurFile(std::string_view bytes, OSCProject& project, ImportReport& report,
                   std::string& error, const ImportLimits& limits = {});
