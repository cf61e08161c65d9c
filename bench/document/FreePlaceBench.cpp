// Pasting onto an iPad page crowded with 1,000 controls. FindFreePlace is timed
// against the literal scan that tries every corner on the same page: "speedup"
// is how many times longer the literal scan takes, in processor time, so that
// other work on the machine does not blur it. Without a free place the whole
// paste asks its question, which the headless toolkit answers No.

#include "ProcessorTime.h"
#include "app/HeadlessToolkit.h"
#include "document/ControlClipboard.h"
#include "document/FreePlace.h"
#include "document/OSCProject.h"
#include "tests/support/LiteralFreePlace.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <optional>
#include <random>
#include <vector>

namespace {

constexpr int kScreenW = 1024;  // iPad, Horizontal
constexpr int kScreenH = 768;
constexpr int kColumns = 40;
constexpr int kRows = 25;
constexpr int kCellW = 25;
constexpr int kCellH = 29;
constexpr int kControlW = 20;
constexpr int kControlH = 24;
constexpr int kHoleCells = 3;
constexpr int kGroupSide = 48;  // one 32 by 32 control with its margin of 8

// 1,000 controls in a grid below the title strip, too tight anywhere for the
// group. With a hole, the three by three cells at the bottom right stay empty
// and their controls lie on the first one, so the one free place is found near
// the end of the scan.
std::vector<CRect> CrowdedPage(bool withHole)
{
    std::vector<CRect> controls;
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            const bool inHole =
                withHole && row >= kRows - kHoleCells && column >= kColumns - kHoleCells;
            const int x = inHole ? 0 : column * kCellW;
            const int y = 40 + (inHole ? 0 : row * kCellH);
            controls.push_back({x, y, x + kControlW, y + kControlH});
        }
    }
    return controls;
}

// 1,000 controls of 20 to 79 units a side thrown anywhere on the page, one
// over the other: no free place, and no grid for the search to profit from.
std::vector<CRect> ScatteredPage()
{
    std::mt19937 random(1);
    std::uniform_int_distribution<int> x(0, kScreenW - 1);
    std::uniform_int_distribution<int> y(0, kScreenH - 1);
    std::uniform_int_distribution<int> side(20, 79);
    std::vector<CRect> controls;
    for (int i = 0; i < kColumns * kRows; ++i) {
        const int left = x(random);
        const int top = y(random);
        controls.push_back({left, top, left + side(random), top + side(random)});
    }
    return controls;
}

enum class Page { kHole, kFull, kScattered };

std::vector<CRect> MakePage(Page page)
{
    return page == Page::kScattered ? ScatteredPage() : CrowdedPage(page == Page::kHole);
}

const char* PageLabel(Page page)
{
    switch (page) {
        case Page::kHole:
            return "grid, free place near the end";
        case Page::kFull:
            return "grid, no free place";
        case Page::kScattered:
            return "scattered, no free place";
    }
    return "";
}

void BM_FindFreePlace(benchmark::State& state)
{
    const auto kind = static_cast<Page>(state.range(0));
    const std::vector<CRect> page = MakePage(kind);

    const double literalStart = ProcessorSeconds();
    const std::optional<CPoint> literal = LiteralFreePlace(page, kGroupSide, kGroupSide, kScreenW,
                                                           kScreenH, CornerTest::kEveryRectangle);
    const double literalSeconds = ProcessorSeconds() - literalStart;

    std::optional<CPoint> found = FindFreePlace(page, kGroupSide, kGroupSide, kScreenW, kScreenH);
    if (found.has_value() != (kind == Page::kHole) || found != literal) {
        state.SkipWithError("FindFreePlace and the literal scan disagree");
        return;
    }

    const double start = ProcessorSeconds();
    for (auto _ : state) {
        found = FindFreePlace(page, kGroupSide, kGroupSide, kScreenW, kScreenH);
        benchmark::DoNotOptimize(found);
    }
    const double seconds = (ProcessorSeconds() - start) / static_cast<double>(state.iterations());
    state.counters["speedup"] = literalSeconds / seconds;
    state.counters["literal_ms"] = literalSeconds * 1e3;
    state.SetLabel(PageLabel(kind));
}
BENCHMARK(BM_FindFreePlace)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);

void BM_LiteralFreePlace(benchmark::State& state)
{
    const auto kind = static_cast<Page>(state.range(0));
    const std::vector<CRect> page = MakePage(kind);
    for (auto _ : state) {
        auto found = LiteralFreePlace(page, kGroupSide, kGroupSide, kScreenW, kScreenH,
                                      CornerTest::kEveryRectangle);
        benchmark::DoNotOptimize(found);
    }
    state.SetLabel(PageLabel(kind));
}
BENCHMARK(BM_LiteralFreePlace)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

// The whole paste of one control from the clipboard: the group rectangle, the
// page's occupied list, the search and the copy.
void BM_ProjectPaste(benchmark::State& state)
{
    const auto kind = static_cast<Page>(state.range(0));
    OSCProject project;
    project.device = 1;
    project.orientation = 1;
    OSCPage& page = *project.CurrentPage();
    for (const CRect& r : MakePage(kind)) {
        auto control = std::make_unique<OSCControl>();
        control->x = static_cast<std::int16_t>(r.left);
        control->y = static_cast<std::int16_t>(r.top);
        control->width = static_cast<std::int16_t>(r.Width());
        control->height = static_cast<std::int16_t>(r.Height());
        page.controls.push_back(std::move(control));
    }
    const std::size_t count = page.controls.size();

    _OSCParms record{};
    std::strcpy(record.name, "Pasted");
    record.x = 100;
    record.y = 100;
    record.width = 32;
    record.height = 32;
    ExternalPasteToClipboard({&record});

    for (auto _ : state) {
        project.Paste();
        // Take the pasted copy away again so that every paste sees the same page.
        if (page.controls.size() > count)
            page.controls.erase(page.controls.begin());
        benchmark::DoNotOptimize(headless::TakeMessages());
    }
    project.Paste();
    const bool pasted = page.controls.size() > count;
    if (pasted != (kind == Page::kHole))
        state.SkipWithError("the paste went otherwise than the free place says");
    ClearClipboard();
    state.SetLabel(PageLabel(kind));
}
BENCHMARK(BM_ProjectPaste)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);

}  // namespace
