#pragma once

#include "host/OSCParms.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The host's parameter records that controls are born from: one of each kind
// for the Insert menu, or a list read from a JSON file.

class OSCProject;

// A record for a new control of type (a ControlType) on layout, with a
// sensible size and range, named after its kind and numbered after the
// highest of its kind on the layout ("Fader 3" after "Fader 2"), and with the
// next control number of its device, so that its address is one of its own.
_OSCParms RecordForNewControl(int type, const OSCProject& layout);

// Reads a JSON array of parameter objects with the fields "name", "device",
// "control", "x", "y", "width", "height", "min", "max" and "type" (a number
// 0 to 4 or a control type's name). Any fault refuses the whole list, with one
// sentence saying where and what in error.
std::optional<std::vector<_OSCParms>> ReadParameterRecords(std::string_view json,
                                                           std::string& error);
