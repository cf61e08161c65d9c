#pragma once

#include "host/ModuleExport.h"

#include <cstdint>
#include <string>

// The search-and-replace dialog's last answers, shared by every editor window
// of the module and kept only while it is loaded. The texts are UTF-8 bytes,
// the form of the controls' name and command fields, so they reach
// OSCProject::SearchAndReplace without conversion and ask no Qt type of a host.
extern "C" {
VORNOSC_EXPORT extern std::string Search;
VORNOSC_EXPORT extern std::string Replace;
VORNOSC_EXPORT extern std::int32_t inName;
VORNOSC_EXPORT extern std::int32_t inCommand;
}
