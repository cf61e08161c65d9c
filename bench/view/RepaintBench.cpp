// Repainting a whole iPad page of 500 controls into a picture of the screen's
// size, as the canvas does after every edit, out of test mode and in it. Each
// repaint is reported beside filling the same controls' rectangles in their
// colours with a bare QPainter: "vs_rects" is how many times longer the
// canvas takes, in processor time. Those fills touch the pixels every repaint
// must touch, so the ratio is what the outlines, rounded corners, names and
// the widget's render path cost on top. Both are measured in the same loop,
// turn about, so that a busy machine slows them alike.

#include "LargeLayout.h"
#include "ProcessorTime.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "view/ArialFont.h"
#include "view/DeviceContext.h"
#include "view/TVornOSCView.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

constexpr int kColumns = 25;
constexpr int kRows = 20;
constexpr int kCellW = 40;
constexpr int kCellH = 36;
constexpr int kSelectedEvery = 7;

// The 500 controls of the shared large layout on one iPad page held
// horizontally, each in its own cell of a grid that covers the screen below
// the title strip, as a crowded surface is laid out, at sizes from 22 by 18 to
// 38 by 34. Every seventh is selected, and values are spread over each range
// so that faders show their levels, knobs their pointers and every other
// toggle its light.
std::unique_ptr<OSCProject> CrowdedIPadPage()
{
    auto project = LargeLayout(kColumns * kRows, 1);
    project->device = kIPad;
    project->orientation = kHorizontal;
    int n = 0;
    for (const auto& control : project->pages[0]->controls) {
        control->x = static_cast<std::int16_t>(n % kColumns * kCellW);
        control->y = static_cast<std::int16_t>(kTitleBandHeight + n / kColumns * kCellH);
        control->width = static_cast<std::int16_t>(22 + n * 7 % 17);
        control->height = static_cast<std::int16_t>(18 + n * 11 % 17);
        control->selected = n % kSelectedEvery == 0;
        control->value = control->type == kToggle
                             ? (n % 2 == 0 ? control->maxValue : control->minValue)
                             : control->minValue + n * 37 % (control->maxValue - control->minValue);
        ++n;
    }
    return project;
}

void PaintRectangles(const OSCPage& page, QImage& picture)
{
    QPainter painter(&picture);
    painter.fillRect(picture.rect(), Qt::black);
    for (const auto& control : page.controls)
        painter.fillRect(control->x, control->y, control->width, control->height,
                         ToQColor(ColorOf(control->color)));
}

void BM_Repaint(benchmark::State& state)
{
    const auto project = CrowdedIPadPage();
    TVornOSCView view(*project);
    view.testMode = static_cast<std::int32_t>(state.range(0));
    const int w = project->GetScreenW();
    const int h = project->GetScreenH();
    const CRect client = view.ClientRect();
    view.resize(w + view.width() - client.Width(), h + view.height() - client.Height());
    QImage picture(w, h, QImage::Format_RGB32);
    const QRegion screen(0, 0, w, h);

    QImage blank(w, h, QImage::Format_RGB32);
    blank.fill(Qt::black);
    view.render(&picture, QPoint(), screen);
    if (picture == blank) {
        state.SkipWithError("the canvas painted nothing");
        return;
    }

    double repaintSeconds = 0;
    double rectsSeconds = 0;
    for (auto _ : state) {
        const double rectsStart = ProcessorSeconds();
        PaintRectangles(*project->CurrentPage(), picture);
        rectsSeconds += ProcessorSeconds() - rectsStart;
        benchmark::DoNotOptimize(picture.constBits());

        const double repaintStart = ProcessorSeconds();
        view.render(&picture, QPoint(), screen);
        const double seconds = ProcessorSeconds() - repaintStart;
        repaintSeconds += seconds;
        benchmark::DoNotOptimize(picture.constBits());
        state.SetIterationTime(seconds);
    }
    state.counters["vs_rects"] = repaintSeconds / rectsSeconds;
    state.counters["rects_ms"] = rectsSeconds * 1e3 / static_cast<double>(state.iterations());
    state.SetLabel(view.testMode ? "test mode" : "editing");
}
BENCHMARK(BM_Repaint)->DenseRange(0, 1)->UseManualTime()->Unit(benchmark::kMillisecond);

// The same page repainted at 200% into a window of the same size, which shows
// a quarter of it, and at the zoom that fits the whole page into half the
// window's width, the laptop's Fit Page: "x200_vs_100" and "fit_vs_100" are how
// many times longer each takes than the repaint at 100%, all three measured in
// the same loop, turn about.
void BM_RepaintZoomed(benchmark::State& state)
{
    const auto project = CrowdedIPadPage();
    TVornOSCView view(*project);
    const int w = project->GetScreenW();
    const int h = project->GetScreenH();
    const CRect client = view.ClientRect();
    const int barsW = view.width() - client.Width(), barsH = view.height() - client.Height();
    constexpr int kFitPercent = 50;
    QImage picture(w, h, QImage::Format_RGB32);
    const auto repaintAt = [&](int percent, int pictureW, int pictureH) {
        view.zoomPercent = percent;
        view.resize(pictureW + barsW, pictureH + barsH);
        view.InitScroll();
        const double start = ProcessorSeconds();
        view.render(&picture, QPoint(), QRegion(0, 0, pictureW, pictureH));
        benchmark::DoNotOptimize(picture.constBits());
        return ProcessorSeconds() - start;
    };
    double actual = 0, doubled = 0, fit = 0;
    for (auto _ : state) {
        actual += repaintAt(100, w, h);
        doubled += repaintAt(200, w, h);
        fit += repaintAt(kFitPercent, w * kFitPercent / 100, h * kFitPercent / 100);
    }
    state.counters["x200_vs_100"] = doubled / actual;
    state.counters["fit_vs_100"] = fit / actual;
    state.counters["ms_100"] = actual * 1e3 / static_cast<double>(state.iterations());
}
BENCHMARK(BM_RepaintZoomed)->Unit(benchmark::kMillisecond);

}  // namespace

// The canvas needs an application object and the shared font; the pictures are
// painted off screen, the same with or without a display.
int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    int qtArgc = 1;
    QApplication application(qtArgc, argv);
    CreateArialFont();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    DestroyArialFont();
    return 0;
}
