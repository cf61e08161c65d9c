#pragma once

#include <cstdio>

class OSCProject;

// Writes the layout's JZML text: the root, the project line and one interface
// window per page. Unnamed controls get their default names written into the
// document on the way.
void WriteLemurJzml(std::FILE* out, OSCProject& project);
