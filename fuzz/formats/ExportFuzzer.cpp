// Any layout file the reader accepts must export to both formats without
// reading or writing out of bounds, whatever its bytes, types, colours,
// device and orientation hold; and what is exported must read back as well-
// formed XML with every page and control in its place and the addresses the
// controls had, whatever characters they hold.

#include "app/CommandLineHost.h"
#include "document/ControlTables.h"
#include "document/LayoutFile.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "formats/ImportReport.h"
#include "formats/lemur/LemurExport.h"
#include "formats/lemur/LemurImport.h"
#include "formats/touchosc/TouchOSCExport.h"
#include "formats/touchosc/TouchOSCImport.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

std::string Written(void (*write)(std::FILE*, OSCProject&), OSCProject& project)
{
    char* text = nullptr;
    std::size_t length = 0;
    std::FILE* out = ::open_memstream(&text, &length);
    if (!out)
        std::abort();
    write(out, project);
    std::fclose(out);
    std::string written(text, length);
    std::free(text);
    return written;
}

// An address comes back as it was written unless XML turns its white space
// into blanks, or it reads as base64 in a TouchOSC file (one without "/").
bool ComesBack(std::string_view address, bool touchOSC)
{
    return address.find_first_of("\t\n\r") == std::string_view::npos &&
           (!touchOSC || address.starts_with('/'));
}

// The exported layout read back has the pages and controls of the original,
// in the same order, with the same addresses. Labels keep none in Lemur.
void ExpectReadBack(const OSCProject& original, const OSCProject& read, bool touchOSC)
{
    if (read.pages.size() != original.pages.size())
        __builtin_trap();
    for (std::size_t p = 0; p < original.pages.size(); ++p) {
        const auto& controls = original.pages[p]->controls;
        const auto& back = read.pages[p]->controls;
        if (back.size() != controls.size())
            __builtin_trap();
        for (std::size_t c = 0; c < controls.size(); ++c) {
            const std::string_view address = TextOf(controls[c]->command);
            const bool sent = touchOSC || controls[c]->type != kLabel;
            if (sent && ComesBack(address, touchOSC) && TextOf(back[c]->command) != address)
                __builtin_trap();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CommandLineHost host;
    OSCProject project;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (ReadLayoutFile(bytes, project, &host) != 0)
        return 0;

    std::string xml =
        Written([](std::FILE* out, OSCProject& p) { WriteTouchOSCXml(out, p); }, project);
    const std::string jzml = Written(WriteLemurJzml, project);

    // Types the editor does not know are written without one, or in Lemur as a
    // lone end tag, as they always were; and a layout needs a page to be read.
    for (const auto& page : project.pages) {
        for (const auto& control : page->controls) {
            if (control->type >= kControlTypeCount)
                return 0;
        }
    }
    if (project.pages.empty())
        return 0;
    ImportReport report;
    std::string error;
    OSCProject fromTouchOSC;
    if (!ReadTouchOSCXml(xml, fromTouchOSC, report, error))
        __builtin_trap();
    ExpectReadBack(project, fromTouchOSC, true);
    OSCProject fromLemur;
    if (!ReadLemurFile(jzml, fromLemur, report, error))
        __builtin_trap();
    ExpectReadBack(project, fromLemur, false);
    return 0;
}
