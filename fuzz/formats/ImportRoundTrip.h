#pragma once

#include "app/CommandLineHost.h"
#include "document/LayoutFile.h"
#include "document/OSCProject.h"
#include "formats/ImportReport.h"
#include "formats/json/LayoutJson.h"

// A layout a reader accepted, and its report, must survive the layout file:
// written as one and read back, it dumps as the same JSON. The file does not
// keep the target device, so the device is carried over by hand.
inline void CheckImportedLayout(OSCProject& project, const ImportReport& report)
{
    for (const std::string& line : report.Lines()) {
        if (line.empty())
            __builtin_trap();
    }
    CommandLineHost host;
    OSCProject reread;
    if (ReadLayoutFile(WriteLayoutFile(project, &host), reread, &host) != 0)
        __builtin_trap();
    reread.device = project.device;
    if (WriteLayoutJson(reread) != WriteLayoutJson(project))
        __builtin_trap();
}
