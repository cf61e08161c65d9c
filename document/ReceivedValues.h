#pragma once

#include "host/Messages.h"

#include <string_view>

class OSCProject;

struct ValuesSet {
    int controls = 0;            // how many controls took the value
    bool onCurrentPage = false;  // whether one of them shows now
};

// Sets the test-mode value of every control on every page whose address is
// address: a number rounded and held to the control's range (either way
// round), on as its maximum, off as its minimum. A number that is not a
// number sets nothing. Only the values change, never the layout.
ValuesSet SetValuesAt(OSCProject& project, std::string_view address, const ReceivedValue& value);
