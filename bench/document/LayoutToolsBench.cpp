// Align and distribute over one page of 20,000 selected controls. Each is
// reported in milliseconds and as "vs_arrow": how many times longer it takes
// than an arrow-key move of the same selection, measured in the same loop,
// turn about, in processor time.

#include "LargeLayout.h"
#include "ProcessorTime.h"
#include "document/LayoutTools.h"
#include "document/OSCProject.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

constexpr int kControlCount = 20000;

template <typename Tool>
void Measure(benchmark::State& state, Tool tool)
{
    auto project = SelectedPage(kControlCount);
    OSCPage& page = *project->CurrentPage();
    const int width = project->GetScreenW(), height = project->GetScreenH();
    double toolSeconds = 0, arrowSeconds = 0;
    int turn = 0;
    for (auto _ : state) {
        double start = ProcessorSeconds();
        tool(page, turn, width, height);
        toolSeconds += ProcessorSeconds() - start;
        start = ProcessorSeconds();
        if (turn % 2 == 0)
            project->ShiftRight(1);
        else
            project->ShiftLeft(1);
        arrowSeconds += ProcessorSeconds() - start;
        ++turn;
    }
    state.counters["ms"] = toolSeconds / turn * 1e3;
    state.counters["vs_arrow"] = toolSeconds / arrowSeconds;
}

void BM_Align(benchmark::State& state)
{
    Measure(state, [](OSCPage& page, int turn, int width, int height) {
        AlignSelected(page, turn % 2 == 0 ? AlignTo::kLeftEdges : AlignTo::kBottoms, width, height);
    });
}
BENCHMARK(BM_Align)->Unit(benchmark::kMillisecond);

void BM_Distribute(benchmark::State& state)
{
    Measure(state, [](OSCPage& page, int turn, int width, int height) {
        DistributeSelected(page, turn % 2 == 0 ? Along::kHorizontal : Along::kVertical, width,
                           height);
    });
}
BENCHMARK(BM_Distribute)->Unit(benchmark::kMillisecond);

}  // namespace
