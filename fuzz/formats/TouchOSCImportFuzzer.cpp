// Whatever bytes the classic TouchOSC reader is given, as an archive or as the
// index.xml inside one, it must neither crash, leak nor hang, and whatever it
// accepts must survive the layout file.

#include "ImportRoundTrip.h"
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
    if (read)
        CheckImportedLayout(project, report);
    return 0;
}
