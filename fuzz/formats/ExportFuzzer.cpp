// Any layout file the reader accepts must export to both formats without
// reading or writing out of bounds, whatever its bytes, types, colours,
// device and orientation hold.

#include "app/CommandLineHost.h"
#include "document/LayoutFile.h"
#include "document/OSCProject.h"
#include "formats/lemur/LemurExport.h"
#include "formats/touchosc/TouchOSCExport.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CommandLineHost host;
    OSCProject project;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (ReadLayoutFile(bytes, project, &host) != 0)
        return 0;

    char* text = nullptr;
    std::size_t length = 0;
    std::FILE* out = ::open_memstream(&text, &length);
    if (!out)
        return 0;
    WriteTouchOSCXml(out, project);
    WriteLemurJzml(out, project);
    std::fclose(out);
    std::free(text);
    return 0;
}
