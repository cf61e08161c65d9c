#pragma once

#include "TextImageCache.h"
#include "host/CPoint.h"
#include "host/CRect.h"
#include "host/Messages.h"

#include <QWidget>

#include <cstdint>
#include <functional>

class DeviceContext;
class OSCControl;
class OSCPage;
class OSCProject;
class QPainter;
class QScrollBar;
class VornBasics;

// The canvas: the current page of a project at the target device's size, one
// pixel per layout unit, offset only by the scroll position. Mouse input
// selects, drags and resizes controls, or in test mode operates them.
class TVornOSCView : public QWidget {
    Q_OBJECT

public:
    explicit TVornOSCView(OSCProject& project, QWidget* parent = nullptr);

    std::int32_t testMode = 0;  // 1: controls are operated instead of edited
    OSCProject& project;
    // Receives test-mode values and, through its window, status texts. Set by
    // the window that owns the view.
    VornBasics* host = nullptr;
    std::int16_t scrollX = 0;
    std::int16_t scrollXMax = 0;
    std::int16_t scrollY = 0;
    std::int16_t scrollYMax = 0;
    std::uint8_t mouseDown = 0;
    CPoint anchorPoint;  // where the left button went down, in layout units
    CPoint dragPoint;    // the latest point while it is held
    CPoint lastPoint;    // the point of the previous resize step
    std::uint8_t rubberBanding = 0;
    std::uint8_t movingSelection = 0;
    std::int32_t resizeEdge = 0;          // ResizeStateOf the edge being dragged, or 0
    OSCControl* activeControl = nullptr;  // operated in test mode
    // The grid: shown as dots, and whether mouse edits land on it. Its step
    // in layout units is the module's, for every canvas.
    std::uint8_t showGrid = 0;
    std::uint8_t snapToGrid = 0;
    static int gridStep;
    // Screen pixels per 100 layout units, from 25 to 400; every edit and test
    // works in layout units whatever it is.
    int zoomPercent = 100;
    static constexpr int kLeastZoom = 25;
    static constexpr int kLargestZoom = 400;
    // Called as the left button goes down on the canvas and after it comes up,
    // so that the window that owns the view can keep a drag as one change.
    std::function<void()> onLeftPress, onLeftRelease;

    // Mouse flags: which modifier keys were held.
    static constexpr unsigned kExtendFlag = 0x10;  // Shift: keep the selection
    static constexpr unsigned kToggleFlag = 0x01;  // Ctrl: flip one control
    static constexpr unsigned kFreeFlag = 0x20;    // ours, Alt: move off the grid

    // The part of the view that shows the page: all of it but the scroll bars.
    CRect ClientRect() const;
    // The client area's size in layout units at the zoom.
    int ClientUnitsWide() const;
    int ClientUnitsHigh() const;
    // n layout units in pixels at the zoom, rounded up.
    int Zoomed(int n) const;
    QScrollBar* HorizontalBar() const { return horizontalBar_; }
    QScrollBar* VerticalBar() const { return verticalBar_; }

    int OnCreate();
    void OnSize(int type, int cx, int cy);
    // Recomputes the scroll ranges from the client size and the device's
    // screen; a changed device shows in them at the next size change.
    void InitScroll();
    // A scroll request from bar, or from the window's own bars when it is
    // null; the view's bar shows the new position either way.
    void OnHScroll(int code, int pos, QScrollBar* bar);
    void OnVScroll(int code, int pos, QScrollBar* bar);

    // A control's rectangle in view pixels.
    void CreateControlRect(const OSCControl* control, CRect& r) const;
    // A colour of the colour table with each channel divided by divisor.
    static std::uint32_t GetScaledColor(int colorIndex, int divisor);

    // Paints the part of the view that invalid covers.
    void OnPaint(const QRect& invalid);
    // The page at 100% as OnPaint paints it, onto painter.
    void PaintPage(QPainter& painter, const QRect& invalid);
    void PaintLabel(DeviceContext& dc, OSCControl* control);
    void PaintFader(DeviceContext& dc, OSCControl* control);
    void PaintKnob(DeviceContext& dc, OSCControl* control);
    void PaintToggle(DeviceContext& dc, OSCControl* control);
    void PaintButton(DeviceContext& dc, OSCControl* control);

    // Points are in view pixels.
    void OnLButtonDown(unsigned flags, CPoint point);
    void OnMouseMove(unsigned flags, CPoint point);
    void OnLButtonUp(unsigned flags, CPoint point);
    void OnLButtonDblClk(unsigned flags, CPoint point);
    void OnRButtonDown(unsigned flags, CPoint point);
    bool GetEditEdge(CPoint& point, OSCControl** control, int* edge) const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    // The wheel steps a scroll bar by lines, as its arrows do; with Shift it
    // scrolls across.
    void wheelEvent(QWheelEvent* event) override;

private:
    void OnScroll(int code, int pos, std::int16_t& position, std::int16_t max, int page,
                  bool horizontal);
    void ScrollWindow(int dx, int dy);
    void SetScrollInfo(QScrollBar* bar, int page, int position, int max);
    void ConnectScrollBar(QScrollBar* bar, bool horizontal);
    int GetSystemMetrics(int index) const;
    CPoint ToLayout(CPoint point) const;
    // A point in view pixels in layout units, before the scroll.
    CPoint Unzoomed(CPoint point) const;
    // The page at 100% scaled to the zoom, for what invalid covers.
    void PaintZoomed(const QRect& invalid);
    void SendStatusText(const char* text);
    // Tells the host which control test mode operated, and how.
    void SendOperated(const OSCControl& control, OperatedControl::Phase phase);
    void ResizeSelected(CPoint point);
    // Dots at every grid point of the page in invalid, below the title strip.
    void PaintGrid(DeviceContext& dc, const QRect& invalid);
    bool Snapping(unsigned flags) const;
    // Where a move drag to point ends when the grabbed control's top-left
    // corner lands on the grid.
    CPoint SnappedMove(CPoint point) const;
    // The point that makes the next resize step put the grabbed edge on the grid.
    CPoint SnappedResize(CPoint point) const;
    void SetCapture();
    void ReleaseCapture();

    QScrollBar* horizontalBar_;
    QScrollBar* verticalBar_;
    CPoint grabbedCorner_;  // the top-left corner of the control a move drag took
    int grabbedIndex_ = -1;  // the control whose edge a resize drag took
    int wheelTurn_ = 0;  // eighths of a degree turned short of a whole notch
    TextImageCache texts_;
};
