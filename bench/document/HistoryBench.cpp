// Undo history on one page of 20,000 selected controls, moved by arrow keys.
// "step_vs_plain" is how many times longer an arrow-key step takes when it is
// kept in the history than the same move alone, both measured in the same loop,
// turn about, in processor time. "undo_ms" and "redo_ms" are one undo and one
// redo of such a step; "history_MB" is what 1,000 such steps hold, counted by
// the history and by the allocator ("heap_MB").

#include "LargeLayout.h"
#include "ProcessorTime.h"
#include "document/EditHistory.h"
#include "document/OSCProject.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <memory>

namespace {

constexpr int kControlCount = 20000;
constexpr int kSteps = 1000;

// Right on even turns, left on odd ones, so that the selection stays on the screen.
void ArrowKey(OSCProject& project, int turn)
{
    if (turn % 2 == 0)
        project.ShiftRight(1);
    else
        project.ShiftLeft(1);
}

void KeptArrowKey(OSCProject& project, EditHistory& history, int turn)
{
    const LayoutSnapshot before = LayoutSnapshot::Of(project);
    ArrowKey(project, turn);
    history.Add("Move", LayoutChange::Between(before, project));
}

double MegaBytes(std::size_t bytes)
{
    return static_cast<double>(bytes) / (1024.0 * 1024.0);
}

void BM_ArrowKeyStepsAndTheirUndo(benchmark::State& state)
{
    auto plain = SelectedPage(kControlCount);
    auto kept = SelectedPage(kControlCount);
    EditHistory history;
    const std::size_t heapBefore = mallinfo2().uordblks;
    for (int turn = 0; turn < kSteps; ++turn)
        KeptArrowKey(*kept, history, turn);
    const std::size_t heapAfter = mallinfo2().uordblks;

    double plainSeconds = 0, keptSeconds = 0, undoSeconds = 0, redoSeconds = 0;
    int turn = 0;
    for (auto _ : state) {
        double start = ProcessorSeconds();
        ArrowKey(*plain, turn);
        plainSeconds += ProcessorSeconds() - start;

        start = ProcessorSeconds();
        history.Undo(*kept);
        undoSeconds += ProcessorSeconds() - start;
        start = ProcessorSeconds();
        history.Redo(*kept);
        redoSeconds += ProcessorSeconds() - start;

        start = ProcessorSeconds();
        KeptArrowKey(*kept, history, kSteps + turn);
        keptSeconds += ProcessorSeconds() - start;
        ++turn;
    }
    const double turns = static_cast<double>(turn);
    state.counters["step_vs_plain"] = keptSeconds / plainSeconds;
    state.counters["plain_ms"] = plainSeconds / turns * 1e3;
    state.counters["step_ms"] = keptSeconds / turns * 1e3;
    state.counters["undo_ms"] = undoSeconds / turns * 1e3;
    state.counters["redo_ms"] = redoSeconds / turns * 1e3;
    state.counters["history_MB"] = MegaBytes(history.Bytes()) * kSteps /
                                   static_cast<double>(history.Steps());
    state.counters["heap_MB"] = MegaBytes(heapAfter - heapBefore);
}
BENCHMARK(BM_ArrowKeyStepsAndTheirUndo)->Unit(benchmark::kMillisecond);

}  // namespace
