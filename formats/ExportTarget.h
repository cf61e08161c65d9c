#pragma once

#include "document/ControlTables.h"
#include "document/OSCProject.h"

// The target screen as the exporters read it. A device or orientation byte
// outside 0..1 can only come from a damaged layout file; it is clamped to the
// nearest valid value, 1, so that the tables indexed by it are never read past
// and the file written stays one that the apps can load.
inline int ExportDevice(const OSCProject& project)
{
    return project.device < kDeviceCount ? project.device : kDeviceCount - 1;
}

inline int ExportOrientation(const OSCProject& project)
{
    return project.orientation < kOrientationCount ? project.orientation : kOrientationCount - 1;
}
