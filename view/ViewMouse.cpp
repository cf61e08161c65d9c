// The canvas's mouse handling. Its states: idle; resizing (resizeEdge set),
// moving the selection, rubber banding, each from a press to its release; and
// operating a control in test mode (activeControl set).
#include "EditGeometry.h"
#include "QtWindowHandle.h"
#include "TVornOSCView.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "host/Messages.h"
#include "host/Toolkit.h"
#include "host/VornBasics.h"

#include <QCursor>

namespace {

// A press this high up, in layout units, flips test mode.
constexpr int kTestModeSwitchBottom = 34;
// A double click above this, in view pixels less the scroll, opens nothing.
constexpr int kPropertiesTop = kTitleBandHeight;

constexpr Qt::CursorShape kEdgeCursors[] = {Qt::SizeVerCursor, Qt::SizeVerCursor, Qt::SizeHorCursor,
                                            Qt::SizeHorCursor};

}  // namespace

bool TVornOSCView::GetEditEdge(CPoint& point, OSCControl** control, int* edge) const
{
    const OSCPage* page = project.CurrentPage();
    return page != nullptr && FindEditEdge(*page, point, control, edge);
}

void TVornOSCView::OnLButtonDown(unsigned flags, CPoint point)
{
    mouseDown = 1;
    point = ToLayout(point);
    if (point.y <= kTestModeSwitchBottom) {
        testMode = !testMode;
        update();
        return;
    }
    if (project.CurrentPage() == nullptr)
        return;
    anchorPoint = point;
    OSCControl* c = project.GetAt(point.x, point.y);
    if (c != nullptr && testMode) {
        activeControl = c;
        c->SetVal(host, point.x, point.y, kPointerDown);
        SendOperated(*c, OperatedControl::kPressed);
        update();
        return;
    }

    int edge = 0;
    if (GetEditEdge(point, &c, &edge)) {
        // An edge zone wins over the control under the point.
        if (!c->selected) {
            project.UnselectAll();
            c->selected = 1;
            update();
        }
        lastPoint = point;
        resizeEdge = ResizeStateOf(edge);
        grabbedIndex_ = IndexOf(*project.CurrentPage(), c);
    } else if (c != nullptr) {
        if (!(flags & kExtendFlag)) {
            if (flags & kToggleFlag)
                c->selected = !c->selected;
            else if (!c->selected)
                project.UnselectAll();
        }
        if ((flags & kExtendFlag) || !(flags & kToggleFlag))
            c->selected = 1;
        // Even a control just toggled off starts a drag of the selection.
        movingSelection = 1;
        grabbedCorner_ = {c->x, c->y};
    } else {
        if (!(flags & kExtendFlag))
            project.UnselectAll();
        rubberBanding = 1;
    }
    update();
    SetCapture();
}

void TVornOSCView::OnMouseMove(unsigned flags, CPoint point)
{
    point = ToLayout(point);
    dragPoint = movingSelection && Snapping(flags) ? SnappedMove(point) : point;
    if (rubberBanding || movingSelection)
        update();
    const OSCPage* page = project.CurrentPage();
    if (page == nullptr)
        return;

    OSCControl* const under = page->GetAt(point.x, point.y);
    OSCControl* c = under;
    if (c == nullptr) {
        std::vector<OSCControl*> selected;
        page->GetSelectedControls(selected);
        c = selected.empty() ? nullptr : selected.front();
    }
    const EditState state{resizeEdge, movingSelection != 0,
                          {dragPoint.x - anchorPoint.x, dragPoint.y - anchorPoint.y}};
    SendStatusText(c != nullptr ? StatusText(*c, state).c_str() : "");

    if (testMode && activeControl != nullptr) {
        // A fader or knob held follows the pointer beyond its ends; the others only over them.
        if (mouseDown && (under == activeControl || activeControl->FollowsPointer())) {
            activeControl->SetVal(host, point.x, point.y, kPointerMove);
            SendOperated(*activeControl, OperatedControl::kDragged);
            update();
        }
        return;
    }

    if (!rubberBanding && !movingSelection) {
        int edge = 0;
        if (GetEditEdge(point, nullptr, &edge))
            setCursor(kEdgeCursors[resizeEdge != kNoResize ? resizeEdge - 2 : edge]);
        else
            unsetCursor();
    }
    if (resizeEdge != kNoResize)
        ResizeSelected(Snapping(flags) ? SnappedResize(point) : point);
}

void TVornOSCView::ResizeSelected(CPoint point)
{
    const int edge = resizeEdge - 2;
    const int d =
        edge == kTopEdge || edge == kBottomEdge ? point.y - lastPoint.y : point.x - lastPoint.x;
    for (const auto& control : project.CurrentPage()->controls) {
        if (control == nullptr || !control->selected || !ResizeStep(*control, edge, d))
            continue;
        update();
        toolkit::SendMessage(HandleOf(parentWidget()), WM_OSC_SETTITLE, 0, 0);
        KeepKnobSquare(*control, edge);
    }
    lastPoint = point;
}

void TVornOSCView::OnLButtonUp(unsigned flags, CPoint point)
{
    point = ToLayout(point);
    if (project.CurrentPage() == nullptr)
        return;
    OSCControl* c = project.GetAt(point.x, point.y);
    if (testMode && activeControl != nullptr &&
        (c == activeControl || activeControl->FollowsPointer())) {
        activeControl->SetVal(host, point.x, point.y, kPointerUp);
        SendOperated(*activeControl, OperatedControl::kReleased);
        ReleaseCapture();
        update();
        mouseDown = 0;
        activeControl = nullptr;
        return;
    }
    // A press ends wherever the pointer is: the host must not think it held.
    if (activeControl != nullptr)
        SendOperated(*activeControl, OperatedControl::kReleasedAway);
    if (rubberBanding) {
        if (!(flags & kExtendFlag))
            project.UnselectAll();
        project.SelectRange(anchorPoint.x, anchorPoint.y, point.x, point.y);
        rubberBanding = 0;
    }
    if (movingSelection) {
        if (Snapping(flags))
            point = SnappedMove(point);
        // The page refuses a move that would leave the screen. A move that
        // happened is a change the editor must know of, as a resize step is.
        if (project.MoveSelected(point.x - anchorPoint.x, point.y - anchorPoint.y))
            toolkit::SendMessage(HandleOf(parentWidget()), WM_OSC_SETTITLE, 0, 0);
        movingSelection = 0;
    }
    resizeEdge = kNoResize;
    mouseDown = 0;
    activeControl = nullptr;
    ReleaseCapture();
    update();
}

void TVornOSCView::OnLButtonDblClk(unsigned, CPoint point)
{
    // Less the scroll, unlike every other handler: kept as users know it.
    if (Unzoomed(point).y - scrollY > kPropertiesTop)
        toolkit::PostMessage(HandleOf(parentWidget()), WM_OSC_PROPERTIES, 0, 0);
}

void TVornOSCView::OnRButtonDown(unsigned, CPoint)
{
    toolkit::PostMessage(HandleOf(parentWidget()), WM_OSC_CONTEXTMENU, 0, 0);
}

void TVornOSCView::SendStatusText(const char* text)
{
    if (host == nullptr || host->hostWindow == nullptr)
        return;
    StatusRecord record;
    record.words[0] = kStatusRecordKind;
    record.words[kStatusTextWord] = reinterpret_cast<std::intptr_t>(text);
    toolkit::SendMessage(host->hostWindow, WM_OSC_HOSTREQUEST, 0,
                         reinterpret_cast<std::intptr_t>(&record));
}

void TVornOSCView::SendOperated(const OSCControl& control, OperatedControl::Phase phase)
{
    if (host == nullptr || host->hostWindow == nullptr)
        return;
    OperatedControl record{control.name,     control.command, control.type, control.minValue,
                           control.maxValue, control.value,   phase};
    toolkit::SendMessage(host->hostWindow, WM_OSC_OPERATED, 0,
                         reinterpret_cast<std::intptr_t>(&record));
}

void TVornOSCView::SetCapture()
{
    grabMouse();
}

void TVornOSCView::ReleaseCapture()
{
    if (QWidget* grabber = QWidget::mouseGrabber())
        grabber->releaseMouse();
}
