#pragma once

#include "host/ModuleExport.h"

#include <chrono>
#include <cstdio>

class OSCProject;

// The format of every control's type attribute. Exported and writable, as the
// host expects to find it.
VORNOSC_EXPORT extern char TouchOSCTypeStr[];

// After the old target is deleted, the file system gets this long to let go
// of it before the new archive is created in its place.
constexpr std::chrono::milliseconds kTargetDeletePause{200};

// Writes the layout's index.xml text: the prolog, the layout element and one
// tabpage per page.
void WriteTouchOSCXml(std::FILE* out, const OSCProject& project);
