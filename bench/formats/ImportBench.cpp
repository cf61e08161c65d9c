// Reading other apps' layouts. A classic TouchOSC file of 20,000 controls is
// read and reported beside the editor's own export of the same layout
// ("vs_export": how many times longer the import takes). A current TouchOSC
// file of 12 MB of XML is read and reported beside inflating and parsing the
// same bytes alone ("vs_parse"). Both compare processor time, so that other
// work on the machine does not blur them.

#include "LargeLayout.h"
#include "ProcessorTime.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "formats/ImportReport.h"
#include "formats/tosc/ToscImport.h"
#include "formats/tosc/ToscInflate.h"
#include "formats/touchosc/TouchOSCArchive.h"
#include "formats/touchosc/TouchOSCExport.h"
#include "formats/touchosc/TouchOSCImport.h"

#include <benchmark/benchmark.h>
#include <zlib.h>
#include <pugixml.hpp>

#include <unistd.h>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

constexpr int kControlCount = 20000;
constexpr int kPageCount = 10;
constexpr std::size_t kToscXmlBytes = std::size_t{12} << 20;

std::string ExportedArchive(const OSCProject& project, const std::string& path)
{
    char* bytes = nullptr;
    std::size_t size = 0;
    std::FILE* out = ::open_memstream(&bytes, &size);
    WriteTouchOSCXml(out, project);
    std::fclose(out);
    const bool written = WriteTouchOSCArchive(path.c_str(), bytes, size);
    std::free(bytes);
    if (!written)
        return {};
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void ClassicTouchOSCImport(benchmark::State& state)
{
    const auto layout = LargeLayout(kControlCount, kPageCount);
    const std::string path = (std::filesystem::temp_directory_path() /
                              ("vornosc-bench-" + std::to_string(::getpid()) + ".touchosc"))
                                 .string();
    double exporting = 0;
    double importing = 0;
    std::string bytes;
    for (auto _ : state) {
        state.PauseTiming();
        const double exportStart = ProcessorSeconds();
        bytes = ExportedArchive(*layout, path);
        exporting += ProcessorSeconds() - exportStart;
        state.ResumeTiming();

        const double start = ProcessorSeconds();
        OSCProject project;
        ImportReport report;
        std::string error;
        if (!ReadTouchOSCFile(bytes, project, report, error))
            state.SkipWithError(error.c_str());
        importing += ProcessorSeconds() - start;
    }
    state.counters["vs_export"] = importing / exporting;
    state.counters["archive_bytes"] = static_cast<double>(bytes.size());
    std::filesystem::remove(path);
}

// One control node as the app writes them: properties, a value and a message.
std::string ControlNode(int index)
{
    const char* const types[] = {"FADER", "RADIAL", "BUTTON", "LABEL", "BOX"};
    const auto property = [](const char* type, const char* key, const std::string& value) {
        return std::string("<property type=\"") + type + "\"><key><![CDATA[" + key +
               "]]></key><value>" + value + "</value></property>";
    };
    const std::string frame = "<x>" + std::to_string(index % 700) + "</x><y>" +
                              std::to_string(index % 900) + "</y><w>60</w><h>40</h>";
    return std::string("<node ID=\"3c88d80c-d335-11ec-b9d8-") + std::to_string(100000 + index) +
           "\" type=\"" + types[index % 5] + "\"><properties>" +
           property("c", "color", "<r>1</r><g>0.5</g><b>0</b><a>1</a>") +
           property("r", "frame", frame) + property("i", "buttonType", "1") +
           property("s", "name", "<![CDATA[control" + std::to_string(index) + "]]>") +
           property("b", "visible", "1") +
           "</properties><values><value><key><![CDATA[x]]></key><locked>0</locked>"
           "<default>0</default></value></values><messages><osc><enabled>1</enabled>"
           "<path><partial><type>CONSTANT</type><value>/mix/</value></partial><partial>"
           "<type>PROPERTY</type><value>name</value></partial></path><arguments><partial>"
           "<type>VALUE</type><value>x</value><scaleMin>0</scaleMin><scaleMax>127</scaleMax>"
           "</partial></arguments></osc></messages></node>";
}

// A layout of pages in a pager, as large as the app's largest files.
std::string LargeToscXml()
{
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><lexml version=\"3\">"
        "<node type=\"GROUP\"><properties><property type=\"r\"><key>frame</key>"
        "<value><x>0</x><y>0</y><w>768</w><h>984</h></value></property>"
        "</properties><children><node type=\"PAGER\"><children>";
    int index = 0;
    while (xml.size() < kToscXmlBytes) {
        xml += "<node type=\"GROUP\"><children>";
        for (int i = 0; i < 1000; ++i)
            xml += ControlNode(index++);
        xml += "</children></node>";
    }
    return xml + "</children></node></children></node></lexml>";
}

std::string Compressed(const std::string& xml)
{
    std::string bytes(compressBound(xml.size()), '\0');
    uLongf size = bytes.size();
    compress(reinterpret_cast<Bytef*>(bytes.data()), &size,
             reinterpret_cast<const Bytef*>(xml.data()), xml.size());
    bytes.resize(size);
    return bytes;
}

void CurrentTouchOSCImport(benchmark::State& state)
{
    const std::string xml = LargeToscXml();
    const std::string bytes = Compressed(xml);
    double parsing = 0;
    double importing = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const double parseStart = ProcessorSeconds();
        std::string inflated;
        std::string error;
        pugi::xml_document document;
        if (!ToscXml(bytes, inflated, {}, error) ||
            !document.load_buffer_inplace(inflated.data(), inflated.size()))
            state.SkipWithError("the XML alone did not read");
        parsing += ProcessorSeconds() - parseStart;
        state.ResumeTiming();

        const double start = ProcessorSeconds();
        OSCProject project;
        ImportReport report;
        if (!ReadToscFile(bytes, project, report, error))
            state.SkipWithError(error.c_str());
        importing += ProcessorSeconds() - start;
    }
    state.counters["vs_parse"] = importing / parsing;
    state.counters["xml_bytes"] = static_cast<double>(xml.size());
}

}  // namespace

BENCHMARK(ClassicTouchOSCImport)->Unit(benchmark::kMillisecond);
BENCHMARK(CurrentTouchOSCImport)->Unit(benchmark::kMillisecond);
