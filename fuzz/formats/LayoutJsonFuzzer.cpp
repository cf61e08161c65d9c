// Whatever text the layout JSON reader is given, it must neither crash, leak
// nor hang, and whatever it accepts must survive the layout file: written as
// one and read back, it dumps as the same JSON. The file does not keep the
// target device, so the device is carried over by hand.

#include "app/CommandLineHost.h"
#include "document/LayoutFile.h"
#include "document/OSCProject.h"
#include "formats/json/LayoutJson.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    OSCProject project;
    std::string error;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (!ReadLayoutJson(text, project, error))
        return 0;

    CommandLineHost host;
    OSCProject reread;
    if (ReadLayoutFile(WriteLayoutFile(project, &host), reread, &host) != 0)
        __builtin_trap();
    reread.device = project.device;
    if (WriteLayoutJson(reread) != WriteLayoutJson(project))
        __builtin_trap();
    return 0;
}
