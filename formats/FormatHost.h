#pragma once

#include "host/VornBasics.h"

#include <string>

// The host object of a program that reads and writes layouts through the table
// of formats. The exporters and the layout file's reader tell the user of a
// failure through the host and through message boxes; the program gathers what
// they told into one line here, to print it with the name of the file.
class FormatHost : public VornBasics {
public:
    // What was reported since the last call, as one line; empty when nothing was.
    virtual std::string TakeFailures() = 0;
};
