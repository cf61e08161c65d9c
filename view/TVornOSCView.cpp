#include "TVornOSCView.h"

#include "ScrollGeometry.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOption>
#include <QWheelEvent>

namespace {

// The two metrics that tell when the whole screen fits across and down.
constexpr int kMetricScrollBarExtent = 9;
constexpr int kMetricLargeIcon = 11;

unsigned MouseFlags(const QMouseEvent* event)
{
    unsigned flags = 0;
    if (event->modifiers() & Qt::ShiftModifier)
        flags |= TVornOSCView::kExtendFlag;
    if (event->modifiers() & Qt::ControlModifier)
        flags |= TVornOSCView::kToggleFlag;
    if (event->modifiers() & Qt::AltModifier)
        flags |= TVornOSCView::kFreeFlag;
    return flags;
}

CPoint PointOf(const QMouseEvent* event)
{
    const QPoint p = event->position().toPoint();
    return {p.x(), p.y()};
}

}  // namespace

TVornOSCView::TVornOSCView(OSCProject& project, QWidget* parent)
    : QWidget(parent),
      project(project),
      horizontalBar_(new QScrollBar(Qt::Horizontal, this)),
      verticalBar_(new QScrollBar(Qt::Vertical, this))
{
    setMouseTracking(true);  // the status text follows the pointer
    setAttribute(Qt::WA_OpaquePaintEvent);
    ConnectScrollBar(horizontalBar_, true);
    ConnectScrollBar(verticalBar_, false);
    OnCreate();
}

int TVornOSCView::OnCreate()
{
    InitScroll();
    return 0;
}

void TVornOSCView::ConnectScrollBar(QScrollBar* bar, bool horizontal)
{
    bar->setSingleStep(kScrollLine);
    const auto scrollTo = [this, horizontal, bar](int code, int pos) {
        if (horizontal)
            OnHScroll(code, pos, bar);
        else
            OnVScroll(code, pos, bar);
    };
    const auto scroll = [scrollTo, bar](int code) { scrollTo(code, bar->sliderPosition()); };
    connect(bar, &QScrollBar::actionTriggered, this, [scroll](int action) {
        switch (action) {
            case QAbstractSlider::SliderSingleStepAdd:
                return scroll(kLineForward);
            case QAbstractSlider::SliderPageStepAdd:
                return scroll(kPageForward);
            case QAbstractSlider::SliderSingleStepSub:
                return scroll(kLineBack);
            case QAbstractSlider::SliderPageStepSub:
                return scroll(kPageBack);
            case QAbstractSlider::SliderMove:
                return scroll(kThumbTrack);
            case QAbstractSlider::SliderToMinimum:  // the bar's menu: "Left edge", "Top"
            case QAbstractSlider::SliderToMaximum:  // "Right edge", "Bottom"
                return scroll(kThumbPosition);
            default:
                return;
        }
    });
    connect(bar, &QScrollBar::sliderReleased, this, [scroll] { scroll(kThumbPosition); });
    // "Scroll here" in the bar's menu sets the bar without an action: the
    // canvas follows, so that bar and canvas never disagree.
    connect(bar, &QScrollBar::valueChanged, this, [this, horizontal, scrollTo](int value) {
        if (value != (horizontal ? scrollX : scrollY))
            scrollTo(kThumbPosition, value);
    });
}

int TVornOSCView::GetSystemMetrics(int index) const
{
    if (index == kMetricScrollBarExtent)
        return style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    return style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, this);
}

CRect TVornOSCView::ClientRect() const
{
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    return {0, 0, std::max(0, width() - bar), std::max(0, height() - bar)};
}

void TVornOSCView::resizeEvent(QResizeEvent*)
{
    const CRect client = ClientRect();
    horizontalBar_->setGeometry(0, client.bottom, client.right, height() - client.bottom);
    verticalBar_->setGeometry(client.right, 0, width() - client.right, client.bottom);
    OnSize(0, client.Width(), client.Height());
}

void TVornOSCView::OnSize(int, int, int)
{
    InitScroll();
}

void TVornOSCView::InitScroll()
{
    const ScrollAxis across = FitScrollAxis(scrollX, project.GetScreenW(), ClientUnitsWide(),
                                            GetSystemMetrics(kMetricScrollBarExtent));
    scrollX = across.position;
    scrollXMax = across.max;
    SetScrollInfo(horizontalBar_, ClientUnitsWide(), scrollX, scrollXMax);

    const ScrollAxis down = FitScrollAxis(scrollY, project.GetScreenH(), ClientUnitsHigh(),
                                          GetSystemMetrics(kMetricLargeIcon));
    scrollY = down.position;
    scrollYMax = down.max;
    if (across.shift != 0 || down.shift != 0)
        ScrollWindow(-across.shift, -down.shift);
    SetScrollInfo(verticalBar_, ClientUnitsHigh(), scrollY, scrollYMax);
}

void TVornOSCView::SetScrollInfo(QScrollBar* bar, int page, int position, int max)
{
    // The position is already the canvas's: the bar only shows it.
    const QSignalBlocker quiet(bar);
    // The bar stays, disabled, when the whole screen is in view.
    bar->setRange(0, max);
    bar->setPageStep(page);
    bar->setValue(position);
    bar->setEnabled(max > 0);
}

void TVornOSCView::OnHScroll(int code, int pos, QScrollBar*)
{
    OnScroll(code, pos, scrollX, scrollXMax, ClientUnitsWide(), true);
}

void TVornOSCView::OnVScroll(int code, int pos, QScrollBar*)
{
    OnScroll(code, pos, scrollY, scrollYMax, ClientUnitsHigh(), false);
}

void TVornOSCView::OnScroll(int code, int pos, std::int16_t& position, std::int16_t max, int page,
                            bool horizontal)
{
    const std::optional<int> step = ScrollStep(code, pos, position, max, page);
    if (!step)
        return;
    position = static_cast<std::int16_t>(position + *step);
    if (horizontal)
        ScrollWindow(-*step, 0);
    else
        ScrollWindow(0, -*step);
    // The view's own bar shows the position, whichever bar asked, if any.
    (horizontal ? horizontalBar_ : verticalBar_)->setValue(position);
}

void TVornOSCView::ScrollWindow(int dx, int dy)
{
    // Moves what is already drawn; only the strip it uncovers is repainted.
    // Zoomed, a unit is not a whole number of pixels: all is drawn again.
    const CRect client = ClientRect();
    if (zoomPercent != 100)
        return update(0, 0, client.Width(), client.Height());
    scroll(dx, dy, QRect(0, 0, client.Width(), client.Height()));
}

void TVornOSCView::CreateControlRect(const OSCControl* control, CRect& r) const
{
    r = {control->x, control->y, control->x + control->width, control->y + control->height};
    r.OffsetRect(-scrollX, -scrollY);
}

std::uint32_t TVornOSCView::GetScaledColor(int colorIndex, int divisor)
{
    const std::uint32_t color = ColorOf(colorIndex);
    const auto channel = [&](int shift) { return ((color >> shift) & 0xFFu) / divisor << shift; };
    return channel(0) | channel(8) | channel(16);
}

CPoint TVornOSCView::ToLayout(CPoint point) const
{
    const CPoint units = Unzoomed(point);
    return {units.x + scrollX, units.y + scrollY};
}

void TVornOSCView::paintEvent(QPaintEvent* event)
{
    OnPaint(event->rect());
    // The square between the two bars belongs to neither the page nor a bar.
    const CRect client = ClientRect();
    QStyleOption corner;
    corner.initFrom(this);
    corner.rect =
        QRect(client.right, client.bottom, width() - client.right, height() - client.bottom);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_PanelScrollAreaCorner, &corner, &painter, this);
}

void TVornOSCView::mousePressEvent(QMouseEvent* event)
{
    // Only the square between the bars is outside the client area: nothing is there to press.
    if (!ClientRect().PtInRect(PointOf(event)))
        return;
    if (event->button() == Qt::LeftButton) {
        if (onLeftPress)
            onLeftPress();
        OnLButtonDown(MouseFlags(event), PointOf(event));
    } else if (event->button() == Qt::RightButton) {
        OnRButtonDown(MouseFlags(event), PointOf(event));
    }
}

void TVornOSCView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    OnLButtonUp(MouseFlags(event), PointOf(event));
    if (onLeftRelease)
        onLeftRelease();
}

void TVornOSCView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && ClientRect().PtInRect(PointOf(event)))
        OnLButtonDblClk(MouseFlags(event), PointOf(event));
}

void TVornOSCView::mouseMoveEvent(QMouseEvent* event)
{
    OnMouseMove(MouseFlags(event), PointOf(event));
}

void TVornOSCView::wheelEvent(QWheelEvent* event)
{
    const QPoint turn = event->angleDelta();
    const bool across = turn.x() != 0 || event->modifiers().testFlag(Qt::ShiftModifier);
    // With Shift held, some systems already report the turn as horizontal.
    const int degrees = turn.x() != 0 ? turn.x() : turn.y();
    wheelTurn_ += degrees;
    const int notches = wheelTurn_ / QWheelEvent::DefaultDeltasPerStep;
    wheelTurn_ -= notches * QWheelEvent::DefaultDeltasPerStep;
    QScrollBar* bar = across ? horizontalBar_ : verticalBar_;
    const auto step =
        notches > 0 ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd;
    for (int line = 0; line < std::abs(notches) * QApplication::wheelScrollLines(); ++line)
        bar->triggerAction(step);
    event->accept();
}
