// The layout tools: copies in rows, alignment, equal gaps and sizes, and the grid.
#include "DuplicateArrayDlg.h"
#include "ModuleResources.h"
#include "TVornOSCEditor.h"
#include "document/LayoutTools.h"
#include "host/VornBasics.h"

#include <QStyle>

#include <algorithm>
#include <iterator>
#include <string>

namespace {

constexpr int kGap = 8;  // the default step leaves this much between copies

}  // namespace

void TVornOSCEditor::OnEditDuplicate()
{
    OSCPage& page = *project.CurrentPage();
    const Duplicated result = DuplicateSelected(
        page, CopyBeside(page, project.GetScreenW()), project.GetScreenW(), project.GetScreenH());
    if (!result.done) {
        host->ShowError(
            "A copy of the selection fits neither to its right nor below it on the "
            "screen with its control number counted on (up to 32767). Move the "
            "selection, make room or lower its control number first.");
    }
    view.update();
}

void TVornOSCEditor::OnEditDuplicateArray()
{
    const HoldInstance resources;
    OSCPage& page = *project.CurrentPage();
    DuplicateArrayDlg dialog;
    dialog.stepX = CopyBeside(page, 0x7FFF).stepX;  // the selection's width and the gap
    if (dialog.stepX == 0)
        dialog.stepX = kGap;
    if (runDialog(dialog) != QDialog::Accepted)
        return;
    const CopyPlan plan{dialog.count,           dialog.stepX,
                        dialog.stepY,           dialog.numberNames,
                        dialog.numberAddresses, dialog.numberControlNumbers};
    const Duplicated result =
        DuplicateSelected(page, plan, project.GetScreenW(), project.GetScreenH());
    if (!result.done) {
        const std::string message =
            "Only " + std::to_string(result.copiesThatFit) + " of the " +
            std::to_string(plan.count) +
            " copies fit on the screen, with control numbers up to 32767. Choose fewer copies "
            "or shorter steps, or make room first; nothing was copied.";
        host->ShowError(message.c_str());
    }
    view.update();
}

void TVornOSCEditor::Arrange(bool (*tool)(OSCPage&, int, int, int), int how, const char* message)
{
    if (!tool(*project.CurrentPage(), how, project.GetScreenW(), project.GetScreenH()))
        host->ShowError(message);
    view.update();
}

namespace {

template <AlignTo to>
bool Align(OSCPage& page, int, int screenW, int screenH)
{
    return AlignSelected(page, to, screenW, screenH);
}

bool Distribute(OSCPage& page, int along, int screenW, int screenH)
{
    return DistributeSelected(page, static_cast<Along>(along), screenW, screenH);
}

bool SameSize(OSCPage& page, int along, int screenW, int screenH)
{
    return SameSizeSelected(page, static_cast<Along>(along), screenW, screenH);
}

constexpr const char* kAlignRefused =
    "Aligning would take a control off the screen, so nothing was moved.";
constexpr const char* kDistributeRefused =
    "Spacing the controls evenly would take one off the screen, so nothing was moved.";
constexpr const char* kSizeRefused =
    "That size would take a control off the screen, so nothing was changed. Move it first.";

constexpr int kAcross = static_cast<int>(Along::kHorizontal);
constexpr int kDown = static_cast<int>(Along::kVertical);

}  // namespace

void TVornOSCEditor::OnAlignLeft()
{
    Arrange(Align<AlignTo::kLeftEdges>, 0, kAlignRefused);
}

void TVornOSCEditor::OnAlignRight()
{
    Arrange(Align<AlignTo::kRightEdges>, 0, kAlignRefused);
}

void TVornOSCEditor::OnAlignTop()
{
    Arrange(Align<AlignTo::kTops>, 0, kAlignRefused);
}

void TVornOSCEditor::OnAlignBottom()
{
    Arrange(Align<AlignTo::kBottoms>, 0, kAlignRefused);
}

void TVornOSCEditor::OnAlignCentre()
{
    Arrange(Align<AlignTo::kHorizontalCentres>, 0, kAlignRefused);
}

void TVornOSCEditor::OnAlignMiddle()
{
    Arrange(Align<AlignTo::kVerticalCentres>, 0, kAlignRefused);
}

void TVornOSCEditor::OnDistributeAcross()
{
    Arrange(Distribute, kAcross, kDistributeRefused);
}

void TVornOSCEditor::OnDistributeDown()
{
    Arrange(Distribute, kDown, kDistributeRefused);
}

void TVornOSCEditor::OnSameWidth()
{
    Arrange(SameSize, kAcross, kSizeRefused);
}

void TVornOSCEditor::OnSameHeight()
{
    Arrange(SameSize, kDown, kSizeRefused);
}

void TVornOSCEditor::OnViewGrid()
{
    view.showGrid = view.showGrid != 0 ? 0 : 1;
    view.update();
}

void TVornOSCEditor::OnViewSnap()
{
    view.snapToGrid = view.snapToGrid != 0 ? 0 : 1;
}

namespace {

constexpr int kZoomSteps[] = {25, 33, 50, 67, 75, 100, 125, 150, 200, 300, 400};
constexpr int kPageListStrip = 200;

}  // namespace

void TVornOSCEditor::SetZoom(int percent)
{
    view.zoomPercent = std::clamp(percent, TVornOSCView::kLeastZoom, TVornOSCView::kLargestZoom);
    PositionOSCView(width(), height());
    view.InitScroll();
    view.update();
    update();
}

void TVornOSCEditor::OnViewZoomIn()
{
    const int* next = std::upper_bound(std::begin(kZoomSteps), std::end(kZoomSteps), view.zoomPercent);
    SetZoom(next != std::end(kZoomSteps) ? *next : TVornOSCView::kLargestZoom);
}

void TVornOSCEditor::OnViewZoomOut()
{
    const int* next = std::lower_bound(std::begin(kZoomSteps), std::end(kZoomSteps), view.zoomPercent);
    SetZoom(next != std::begin(kZoomSteps) ? *(next - 1) : TVornOSCView::kLeastZoom);
}

void TVornOSCEditor::OnViewActualSize()
{
    SetZoom(100);
}

void TVornOSCEditor::OnViewFitPage()
{
    // The largest zoom at which the page and the bars beside it fit right of the page list.
    const int bars = view.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &view);
    const int across = (width() - kPageListStrip - bars) * 100 / project.GetScreenW();
    const int down = (height() - bars) * 100 / project.GetScreenH();
    SetZoom(std::min(across, down));
}

void TVornOSCEditor::OnGridLeft()
{
    project.ShiftLeft(TVornOSCView::gridStep);
    view.update();
}

void TVornOSCEditor::OnGridRight()
{
    project.ShiftRight(TVornOSCView::gridStep);
    view.update();
}

void TVornOSCEditor::OnGridUp()
{
    project.ShiftUp(TVornOSCView::gridStep);
    view.update();
}

void TVornOSCEditor::OnGridDown()
{
    project.ShiftDown(TVornOSCView::gridStep);
    view.update();
}
