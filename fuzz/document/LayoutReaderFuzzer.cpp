// Whatever bytes the layout reader is given, it must neither read nor write
// out of bounds, and whatever it accepts must survive being saved: the saved
// file reads back, and saving that gives the same bytes again.

#include "app/CommandLineHost.h"
#include "document/LayoutFile.h"
#include "document/OSCProject.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CommandLineHost host;
    OSCProject project;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (ReadLayoutFile(bytes, project, &host) != 0)
        return 0;

    const std::string saved = WriteLayoutFile(project, &host);
    OSCProject reread;
    if (ReadLayoutFile(saved, reread, &host) != 0)
        __builtin_trap();
    if (WriteLayoutFile(reread, &host) != saved)
        __builtin_trap();
    return 0;
}
