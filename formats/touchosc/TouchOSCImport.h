#pragma once

#include "formats/ImportLimits.h"

#include <string>
#include <string_view>

class ImportReport;
class OSCProject;

// Reads a classic TouchOSC file: a zip archive whose index.xml holds the layout.
// On success replaces project's screen and pages and tells report what was left
// out or changed; otherwise returns false with one line in error and leaves
// project as it was.
bool ReadTouchOSCFile(std::string_view bytes, OSCProject& project, ImportReport& report,
                      std::string& error, const ImportLimits& limits = {});

// The same from the text of index.xml, which it parses in place.
bool ReadTouchOSCXml(std::string& xml, OSCProject& project, ImportReport& report,
                     std::string& error, const ImportLimits& limits = {});
