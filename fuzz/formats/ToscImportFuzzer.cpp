// Whatever bytes the current TouchOSC reader is given, zlib data or XML, it
// must neither crash, leak nor hang, and whatever it accepts must survive the
// layout file.

#include "ImportRoundTrip.h"
#include "formats/tosc/ToscImport.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    OSCProject project;
    ImportReport report;
    std::string error;
    if (ReadToscFile(std::string_view(reinterpret_cast<const char*>(data), size), project, report,
                     error))
        CheckImportedLayout(project, report);
    return 0;
}
