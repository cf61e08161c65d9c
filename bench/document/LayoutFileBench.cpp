// Loading and saving a layout of 20,000 controls through a file on disk. Each
// is reported beside moving the same bytes with one fread or fwrite alone:
// "vs_fread" and "vs_fwrite" are how many times longer the whole load or save
// takes, in processor time. Both are measured in the same loop, turn about, so
// that a busy machine slows them alike.

#include "LargeLayout.h"
#include "ProcessorTime.h"
#include "app/CommandLineHost.h"
#include "document/LayoutFile.h"
#include "document/OSCProject.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kControlCount = 20000;
constexpr int kPageCount = 10;

// A file of this run's own in the temporary folder, removed afterwards.
class BenchFile {
public:
    BenchFile()
        : path_((std::filesystem::temp_directory_path() /
                 ("vornosc-layout-bench-" + std::to_string(::getpid()) + ".VornOsc"))
                    .string())
    {
    }
    BenchFile(const BenchFile&) = delete;
    BenchFile& operator=(const BenchFile&) = delete;
    ~BenchFile() { std::filesystem::remove(path_); }

    bool Save(const std::string& bytes) const
    {
        std::FILE* file = std::fopen(path_.c_str(), "wb");
        if (!file)
            return false;
        const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
        return std::fclose(file) == 0 && written;
    }

    bool Load(std::string& bytes) const
    {
        std::FILE* file = std::fopen(path_.c_str(), "rb");
        if (!file)
            return false;
        const bool read = std::fread(bytes.data(), 1, bytes.size(), file) == bytes.size();
        std::fclose(file);
        return read;
    }

private:
    std::string path_;
};

void BM_LoadLayout(benchmark::State& state)
{
    CommandLineHost host;
    const BenchFile file;
    const std::string written = WriteLayoutFile(*LargeLayout(kControlCount, kPageCount), &host);
    if (!file.Save(written)) {
        state.SkipWithError("cannot write the layout file in the temporary folder");
        return;
    }

    double loadSeconds = 0;
    double freadSeconds = 0;
    double recordsSeconds = 0;
    for (auto _ : state) {
        // What making the controls' in-memory records alone costs: a control
        // takes about seven times its bytes in the file.
        std::vector<std::unique_ptr<OSCControl>> records;
        const double recordsStart = ProcessorSeconds();
        records.reserve(kControlCount);
        for (int i = 0; i < kControlCount; ++i)
            records.push_back(std::make_unique<OSCControl>());
        recordsSeconds += ProcessorSeconds() - recordsStart;
        benchmark::DoNotOptimize(records.data());
        records.clear();

        std::string bytes(written.size(), '\0');
        const double freadStart = ProcessorSeconds();
        file.Load(bytes);
        freadSeconds += ProcessorSeconds() - freadStart;
        benchmark::DoNotOptimize(bytes.data());

        const double loadStart = ProcessorSeconds();
        file.Load(bytes);
        OSCProject project;
        const int result = ReadLayoutFile(bytes, project, &host);
        const double seconds = ProcessorSeconds() - loadStart;
        loadSeconds += seconds;
        if (result != 0) {
            state.SkipWithError("the layout file does not read back");
            return;
        }
        state.SetIterationTime(seconds);
    }
    state.counters["vs_fread"] = loadSeconds / freadSeconds;
    state.counters["records_alone_vs_fread"] = recordsSeconds / freadSeconds;
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(written.size()));
}
BENCHMARK(BM_LoadLayout)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_SaveLayout(benchmark::State& state)
{
    CommandLineHost host;
    const BenchFile file;
    const std::unique_ptr<OSCProject> project = LargeLayout(kControlCount, kPageCount);
    const std::string written = WriteLayoutFile(*project, &host);

    double saveSeconds = 0;
    double fwriteSeconds = 0;
    for (auto _ : state) {
        const double fwriteStart = ProcessorSeconds();
        const bool plainSaved = file.Save(written);
        fwriteSeconds += ProcessorSeconds() - fwriteStart;

        const double saveStart = ProcessorSeconds();
        const bool saved = file.Save(WriteLayoutFile(*project, &host));
        const double seconds = ProcessorSeconds() - saveStart;
        saveSeconds += seconds;
        if (!plainSaved || !saved) {
            state.SkipWithError("cannot write the layout file in the temporary folder");
            return;
        }
        state.SetIterationTime(seconds);
    }
    state.counters["vs_fwrite"] = saveSeconds / fwriteSeconds;
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(written.size()));
}
BENCHMARK(BM_SaveLayout)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
