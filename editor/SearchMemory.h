#pragma once

#include <cstdint>
#include <string>

// The search-and-replace dialog's last answers, shared by every editor window
// of the module and kept only while it is loaded. The texts are UTF-8 bytes,
// the form of the controls' name and command fields, so they reach
// OSCProject::SearchAndReplace without conversion and ask no Qt type of a host.
extern std::string Search;
extern std::string Replace;
extern std::int32_t inName;
extern std::int32_t inCommand;
