#pragma once

#include "document/OSCProject.h"

#include <string>
#include <string_view>

// The layout as JSON, for people and scripts:
// {"device": "iPad", "orientation": "Horizontal", "pages": [{"name": ..., "controls": [...]}]}

// Writes the whole project; names that are not valid UTF-8 are still written.
std::string WriteLayoutJson(const OSCProject& project);

// Replaces project's device, orientation and pages with the JSON's. On bad
// input returns false, sets error to one line saying what is wrong and where,
// and leaves project as it was.
bool ReadLayoutJson(std::string_view text, OSCProject& project, std::string& error);
