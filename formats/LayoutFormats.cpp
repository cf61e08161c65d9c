#include "LayoutFormats.h"

#include "FormatHost.h"
#include "document/IgnoringCase.h"
#include "document/LayoutFile.h"
#include "document/OSCProject.h"
#include "formats/json/LayoutJson.h"
#include "formats/lemur/LemurImport.h"
#include "formats/tosc/ToscImport.h"
#include "formats/touchosc/TouchOSCImport.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <vector>

namespace {

bool WriteBytes(const std::string& path, std::string_view bytes, std::string& error)
{
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        error = std::string("cannot write: ") + std::strerror(errno);
        return false;
    }
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const int savedErrno = errno;
    if (std::fclose(file) != 0 || !written) {
        error = std::string("cannot write: ") + std::strerror(written ? errno : savedErrno);
        return false;
    }
    return true;
}

bool ReadJson(std::string_view bytes, OSCProject& project, FormatHost&, ImportReport&,
              std::string& error)
{
    return ReadLayoutJson(bytes, project, error);
}

bool WriteJson(OSCProject& project, FormatHost&, const std::string& path, std::string& error)
{
    return WriteBytes(path, WriteLayoutJson(project), error);
}

bool ReadLayout(std::string_view bytes, OSCProject& project, FormatHost& host, ImportReport&,
                std::string& error)
{
    std::size_t stoppedAt = 0;
    const int result = ReadLayoutFile(bytes, project, &host, &stoppedAt);
    if (result == kNotLayoutFile) {
        error = "not a layout file: it does not start with \"KLYF\"";
        return false;
    }
    if (result != 0) {
        const std::string what = host.TakeFailures();
        error = (what.empty() ? "the layout is damaged" : what) + " (stopped at byte " +
                std::to_string(stoppedAt) + ")";
        return false;
    }
    return true;
}

bool WriteLayout(OSCProject& project, FormatHost& host, const std::string& path, std::string& error)
{
    return WriteBytes(path, WriteLayoutFile(project, &host), error);
}

bool ReadTouchOSC(std::string_view bytes, OSCProject& project, FormatHost&, ImportReport& report,
                  std::string& error)
{
    return ReadTouchOSCFile(bytes, project, report, error);
}

bool ReadLemur(std::string_view bytes, OSCProject& project, FormatHost&, ImportReport& report,
               std::string& error)
{
    return ReadLemurFile(bytes, project, report, error);
}

bool ReadTosc(std::string_view bytes, OSCProject& project, FormatHost&, ImportReport& report,
              std::string& error)
{
    return ReadToscFile(bytes, project, report, error);
}

// The exporters tell the user of failures as they do at the editor: through
// the host and message boxes.
bool Exported(FormatHost& host, std::string& error)
{
    error = host.TakeFailures();
    return error.empty();
}

bool WriteTouchOSC(OSCProject& project, FormatHost& host, const std::string& path,
                   std::string& error)
{
    project.ExportTouchOSCFile(&host, path.c_str());
    return Exported(host, error);
}

bool WriteLemur(OSCProject& project, FormatHost& host, const std::string& path, std::string& error)
{
    project.ExportLemurFile(&host, path.c_str());
    return Exported(host, error);
}

constexpr LayoutFormat kFormats[] = {
    {".json", "Layout JSON", false, ReadJson, WriteJson},
    {".VornOsc", "Vorn OSC Layout", false, ReadLayout, WriteLayout},
    {".touchosc", "TouchOSC Layout", true, ReadTouchOSC, WriteTouchOSC},
    {".jzml", "Lemur Layout", true, ReadLemur, WriteLemur},
    {".tosc", "TouchOSC Layout", true, ReadTosc, nullptr},
};

template <typename Wanted>
std::string Extensions(Wanted wanted)
{
    std::vector<const char*> found;
    for (const LayoutFormat& format : kFormats) {
        if (wanted(format))
            found.push_back(format.extension);
    }
    std::string list;
    for (std::size_t i = 0; i < found.size(); ++i)
        list += std::string(i == 0 ? "" : i + 1 == found.size() ? " or " : ", ") + found[i];
    return list;
}

// The file's bytes, refused once they pass maxBytes; a regular file is
// refused from its size alone, before anything is read.
bool ReadBytes(const std::string& path, std::string& bytes, std::size_t maxBytes,
               std::string& error)
{
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        error = std::string("cannot read: ") + std::strerror(errno);
        return false;
    }
    const std::string tooLarge = "the file is larger than " + SizeText(maxBytes);
    struct stat status {};
    if (::fstat(::fileno(file), &status) == 0 && S_ISREG(status.st_mode)) {
        if (static_cast<std::uintmax_t>(status.st_size) > maxBytes) {
            std::fclose(file);
            error = tooLarge;
            return false;
        }
        bytes.reserve(static_cast<std::size_t>(status.st_size));
    }
    char buffer[65536];
    std::size_t count = 0;
    bool fits = true;
    while (fits && (count = std::fread(buffer, 1, sizeof buffer, file)) > 0) {
        fits = bytes.size() + count <= maxBytes;
        if (fits)
            bytes.append(buffer, count);
    }
    const bool failed = std::ferror(file) != 0;
    const int savedErrno = errno;
    std::fclose(file);
    if (!fits)
        error = tooLarge;
    else if (failed)
        error = std::string("cannot read: ") + std::strerror(savedErrno);
    return fits && !failed;
}

}  // namespace

bool ReadLayoutAt(const LayoutFormat& format, const std::string& path, OSCProject& project,
                  FormatHost& host, ImportReport& report, std::string& error, std::size_t maxBytes)
{
    try {
        std::string bytes;
        return ReadBytes(path, bytes, maxBytes, error) &&
               format.read(bytes, project, host, report, error);
    } catch (const std::bad_alloc&) {
        error = "there is not enough memory to read it";
        return false;
    }
}

std::span<const LayoutFormat> LayoutFormats()
{
    return kFormats;
}

const LayoutFormat* FindLayoutFormat(std::string_view path)
{
    for (const LayoutFormat& format : kFormats) {
        if (EndsWithIgnoringCase(path, format.extension))
            return &format;
    }
    return nullptr;
}

std::string ReadableExtensions()
{
    return Extensions([](const LayoutFormat& format) { return format.read != nullptr; });
}

std::string WritableExtensions()
{
    return Extensions([](const LayoutFormat& format) { return format.write != nullptr; });
}
