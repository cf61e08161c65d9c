// Exporting a large layout. The TouchOSC export is measured without its fixed
// pause after deleting the target, and reported beside libzip compressing the
// same XML on its own: "vs_zip" is how many times longer the whole export takes,
// in processor time, so that other work on the machine does not blur it. The
// current TouchOSC export, file and all, is reported beside zlib compressing
// its XML in memory at the same level ("vs_zlib").

#include "LargeLayout.h"
#include "ProcessorTime.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "formats/tosc/ToscExport.h"
#include "formats/touchosc/TouchOSCArchive.h"
#include "formats/touchosc/TouchOSCExport.h"

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <unistd.h>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int kControlCount = 20000;
constexpr int kPageCount = 10;

std::string BenchPath(const char* extension)
{
    return (std::filesystem::temp_directory_path() /
            ("vornosc-bench-" + std::to_string(::getpid()) + extension))
        .string();
}

struct MemoryText {
    char* bytes = nullptr;
    std::size_t size = 0;
    MemoryText() = default;
    MemoryText(const MemoryText&) = delete;
    MemoryText& operator=(const MemoryText&) = delete;
    ~MemoryText() { std::free(bytes); }
};

void WriteXml(const OSCProject& project, MemoryText& text)
{
    std::FILE* out = ::open_memstream(&text.bytes, &text.size);
    WriteTouchOSCXml(out, project);
    std::fclose(out);
}

void TouchOSCExport(benchmark::State& state)
{
    const auto project = LargeLayout(kControlCount, kPageCount);
    const std::string target = BenchPath(".touchosc");
    const std::string zipOnly = BenchPath("-zip.touchosc");
    double exporting = 0;
    double zipping = 0;
    std::size_t xmlBytes = 0;
    for (auto _ : state) {
        const double start = ProcessorSeconds();
        MemoryText xml;
        WriteXml(*project, xml);
        if (!WriteTouchOSCArchive(target.c_str(), xml.bytes, xml.size))
            state.SkipWithError("libzip could not write the archive");
        exporting += ProcessorSeconds() - start;

        state.PauseTiming();
        const double zipStart = ProcessorSeconds();
        WriteTouchOSCArchive(zipOnly.c_str(), xml.bytes, xml.size);
        zipping += ProcessorSeconds() - zipStart;
        xmlBytes = xml.size;
        state.ResumeTiming();
    }
    state.counters["vs_zip"] = exporting / zipping;
    state.counters["xml_bytes"] = static_cast<double>(xmlBytes);
    std::filesystem::remove(target);
    std::filesystem::remove(zipOnly);
}

void LemurExport(benchmark::State& state)
{
    const auto project = LargeLayout(kControlCount, kPageCount);
    const std::string target = BenchPath(".jzml");
    for (auto _ : state)
        project->ExportLemurFile(nullptr, target.c_str());
    state.counters["jzml_bytes"] = static_cast<double>(std::filesystem::file_size(target));
    std::filesystem::remove(target);
}

void ToscExport(benchmark::State& state)
{
    const auto project = LargeLayout(kControlCount, kPageCount);
    const std::string target = BenchPath(".tosc");
    double exporting = 0;
    double compressing = 0;
    std::size_t xmlBytes = 0;
    for (auto _ : state) {
        const double start = ProcessorSeconds();
        project->ExportToscFile(nullptr, target.c_str());
        exporting += ProcessorSeconds() - start;

        state.PauseTiming();
        const std::string xml = WriteToscXml(*project);
        std::vector<Bytef> compressed(compressBound(xml.size()));
        uLongf size = compressed.size();
        const double zlibStart = ProcessorSeconds();
        if (compress2(compressed.data(), &size, reinterpret_cast<const Bytef*>(xml.data()),
                      xml.size(), Z_DEFAULT_COMPRESSION) != Z_OK)
            state.SkipWithError("zlib could not compress the XML");
        compressing += ProcessorSeconds() - zlibStart;
        xmlBytes = xml.size();
        state.ResumeTiming();
    }
    state.counters["vs_zlib"] = exporting / compressing;
    state.counters["xml_bytes"] = static_cast<double>(xmlBytes);
    state.counters["tosc_bytes"] = static_cast<double>(std::filesystem::file_size(target));
    std::filesystem::remove(target);
}

}  // namespace

BENCHMARK(TouchOSCExport)->Unit(benchmark::kMillisecond);
BENCHMARK(LemurExport)->Unit(benchmark::kMillisecond);
BENCHMARK(ToscExport)->Unit(benchmark::kMillisecond);
