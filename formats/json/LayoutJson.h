#pragma once

#include "document/OSCProject.h"

#include <string>
#include <string_view>

// The layout as JSON, for people and scripts:
// {"device": "iPad", "orientation": "Horizontal", "pages": [{"name": ..., "controls": [...]}]}
// Type, colour, device and orientation are written by their names in the
// tables, or as numbers when a table has no name for them.

// Writes the whole project, ending with a newline. Names that are not valid
// UTF-8 are still written: each byte that does not start a well-formed UTF-8
// sequence becomes U+FFFD.
std::string WriteLayoutJson(const OSCProject& project);

// Replaces project's device, orientation and pages with the JSON's and makes
// the first page current. Names are read in any case, or as numbers 0..255;
// fields left out take the values of a new project, page or control; unknown
// fields are refused. On bad input returns false, sets error to one line
// saying what is wrong and where (like "pages[1].controls[3].x: ..."), and
// leaves project as it was.
bool ReadLayoutJson(std::string_view text, OSCProject& project, std::string& error);
