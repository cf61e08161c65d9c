// The canvas's grid: its dots, and the points that put a dragged control or
// edge on it.
#include "DeviceContext.h"
#include "EditGeometry.h"
#include "TVornOSCView.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"

#include <QPolygon>

#include <algorithm>

namespace {

constexpr ColorRef kGridDotColor = 0x5A5A5A;

// The grid point nearest to v.
int Nearest(int v, int step)
{
    const int below = (v >= 0 ? v / step : -((-v + step - 1) / step)) * step;
    return v - below < step - (v - below) ? below : below + step;
}

}  // namespace

int TVornOSCView::gridStep = 10;

void TVornOSCView::PaintGrid(DeviceContext& dc, const QRect& invalid)
{
    const int step = gridStep;
    const int firstX = std::max(0, (invalid.left() + scrollX) / step * step);
    const int lastX = std::min(project.GetScreenW() - 1, invalid.right() + scrollX);
    const int firstY = std::max((kTitleBandHeight + step - 1) / step * step,
                                (invalid.top() + scrollY) / step * step);
    const int lastY = std::min(project.GetScreenH() - 1, invalid.bottom() + scrollY);
    QPolygon dots;
    for (int y = firstY; y <= lastY; y += step) {
        for (int x = firstX; x <= lastX; x += step)
            dots << QPoint(x - scrollX, y - scrollY);
    }
    dc.Dots(dots, kGridDotColor);
}

bool TVornOSCView::Snapping(unsigned flags) const
{
    return snapToGrid != 0 && (flags & kFreeFlag) == 0;
}

CPoint TVornOSCView::SnappedMove(CPoint point) const
{
    const int dx = Nearest(grabbedCorner_.x + point.x - anchorPoint.x, gridStep) - grabbedCorner_.x;
    const int dy = Nearest(grabbedCorner_.y + point.y - anchorPoint.y, gridStep) - grabbedCorner_.y;
    return {anchorPoint.x + dx, anchorPoint.y + dy};
}

CPoint TVornOSCView::SnappedResize(CPoint point) const
{
    const OSCPage* page = project.CurrentPage();
    if (page == nullptr || grabbedIndex_ < 0 ||
        grabbedIndex_ >= static_cast<int>(page->controls.size()))
        return point;
    const OSCControl& grabbed = *page->controls[static_cast<std::size_t>(grabbedIndex_)];
    const int edge = resizeEdge - 2;
    const bool vertical = edge == kTopEdge || edge == kBottomEdge;
    const int at = edge == kTopEdge      ? grabbed.y
                   : edge == kBottomEdge ? grabbed.y + grabbed.height
                   : edge == kLeftEdge   ? grabbed.x
                                         : grabbed.x + grabbed.width;
    const int wanted = Nearest(vertical ? point.y : point.x, gridStep);
    CPoint snapped = lastPoint;
    (vertical ? snapped.y : snapped.x) += wanted - at;
    return snapped;
}
