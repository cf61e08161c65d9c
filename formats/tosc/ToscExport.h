#pragma once

#include <string>

class OSCProject;

// The XML of the layout as a current TouchOSC file, before it is compressed:
// a root group the size of the screen holding a pager with one group per page.
std::string WriteToscXml(const OSCProject& project);
