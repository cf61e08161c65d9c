// Whatever bytes the classic TouchOSC reader is given, as an archive or as the
// index.xml inside one, it must neither crash, leak nor hang, and whatever it
// accepts must survive the layout file: written as one and read back, it dumps
// as the same JSON. The file does not keep the target device, so the device is
// carried over by hand.

#include "app/CommandLineHost.h"
#include "document/LayoutFile.h"
#include "document/OSCProject.h"
#include "formats/ImportReport.h"
#include "formats/json/LayoutJson.h"
#include "formats/touchosc/TouchOSCImport.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    OSCProject project;
    ImportReport report;
    std::string error;
    // Zip archives start with "PK"; anything else goes straight to the XML reader.
    std::string xml(bytes);
    const bool read = bytes.starts_with("PK") ? ReadTouchOSCFile(bytes, project, report, error)
                                              : ReadTouchOSCXml(xml, project, report, error);
    if (!read)
        return 0;
    report.Lines();

    CommandLineHost host;
    OSCProject reread;
    if (ReadLayoutFile(WriteLayoutFile(project, &host), reread, &host) != 0)
        __builtin_trap();
    reread.device = project.device;
    if (WriteLayoutJson(reread) != WriteLayoutJson(project))
        __builtin_trap();
    return 0;
}
