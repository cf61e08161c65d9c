// Any layout file the reader accepts must export to the three touch apps'
// formats without reading or writing out of bounds, whatever its bytes, types,
// colours, device and orientation hold; and what is exported must read back as
// well-formed XML with every page and control in its place and the addresses
// the controls had, whatever characters they hold.

#include "app/CommandLineHost.h"
#include "document/ControlTables.h"
#include "document/LayoutFile.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "document/Utf8Text.h"
#include "formats/ImportReport.h"
#include "formats/lemur/LemurExport.h"
#include "formats/lemur/LemurImport.h"
#include "formats/tosc/ToscExport.h"
#include "formats/tosc/ToscImport.h"
#include "formats/touchosc/TouchOSCExport.h"
#include "formats/touchosc/TouchOSCImport.h"

#include <algorithm>
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

enum class Format { kTouchOSC, kLemur, kTosc };

// Text XML can carry as it stands: UTF-8 of the characters XML allows.
bool XmlCarries(std::string_view text)
{
    const bool controls = std::any_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
    });
    return !controls && IsValidUtf8(text) && text.find("\xEF\xBF\xBE") == std::string_view::npos &&
           text.find("\xEF\xBF\xBF") == std::string_view::npos;
}

// An address comes back as it was written unless XML turns its white space
// into blanks, or it reads as base64 in a TouchOSC file (one without "/"). The
// current TouchOSC file keeps white space, and loses only what XML cannot carry.
bool ComesBack(std::string_view address, Format format)
{
    if (format == Format::kTosc)
        return XmlCarries(address);
    return address.find_first_of("\t\n\r") == std::string_view::npos &&
           (format != Format::kTouchOSC || address.starts_with('/'));
}

// The exported layout read back has the pages and controls of the original,
// in the same order, with the same addresses. Labels keep none in Lemur, nor
// in the current TouchOSC file.
void ExpectReadBack(const OSCProject& original, const OSCProject& read, Format format)
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
            const bool sent = format == Format::kTouchOSC || controls[c]->type != kLabel;
            if (sent && ComesBack(address, format) && TextOf(back[c]->command) != address)
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
    const std::string tosc = WriteToscXml(project);
    // Well formed whatever the layout holds: nothing XML cannot carry.
    if (!XmlCarries(tosc) || tosc.find('\r') != std::string::npos)
        __builtin_trap();

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
    ExpectReadBack(project, fromTouchOSC, Format::kTouchOSC);
    OSCProject fromLemur;
    if (!ReadLemurFile(jzml, fromLemur, report, error))
        __builtin_trap();
    ExpectReadBack(project, fromLemur, Format::kLemur);
    OSCProject fromTosc;
    if (!ReadToscFile(tosc, fromTosc, report, error))
        __builtin_trap();
    ExpectReadBack(project, fromTosc, Format::kTosc);
    return 0;
}
