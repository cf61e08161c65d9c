#include "DeviceContext.h"

#include "TextImageCache.h"

#include <QPaintDevice>
#include <QPainter>

#include <cmath>
#include <utility>

namespace {

QRect ToQRect(const CRect& r)
{
    return QRect(r.left, r.top, r.Width(), r.Height());
}

// How far in from the side row y of a rounded rectangle starts, for corners of
// the given radius: the rows within the radius of the top or bottom are cut by
// the corner's circle, measured at the middle of the row.
int CornerInset(int y, int height, double radius)
{
    const int fromEdge = std::min(y, height - 1 - y);
    if (fromEdge >= radius)
        return 0;
    const double dy = radius - fromEdge - 0.5;
    return static_cast<int>(std::lround(radius - std::sqrt(radius * radius - dy * dy)));
}

// A rounded rectangle as spans: only the corner rows are cut, so the rest is
// one rectangle.
void FillRounded(QPainter& painter, const CRect& r, CPoint corner, const QColor& color)
{
    if (r.IsRectEmpty())
        return;
    const double radius = std::min({corner.x / 2.0, r.Width() / 2.0, r.Height() / 2.0});
    const int cornerRows = std::min(static_cast<int>(std::ceil(radius)), r.Height() / 2);
    for (int row = 0; row < cornerRows; ++row) {
        const int inset = CornerInset(row, r.Height(), radius);
        const int width = r.Width() - 2 * inset;
        painter.fillRect(r.left + inset, r.top + row, width, 1, color);
        painter.fillRect(r.left + inset, r.bottom - 1 - row, width, 1, color);
    }
    painter.fillRect(r.left, r.top + cornerRows, r.Width(), r.Height() - 2 * cornerRows, color);
}

void FillEllipse(QPainter& painter, const CRect& r, const QColor& color)
{
    if (r.IsRectEmpty())
        return;
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(ToQRect(r));
    painter.restore();
}

}  // namespace

QColor ToQColor(ColorRef color)
{
    return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
}

QPen SolidPen(int width, ColorRef color)
{
    QPen pen(ToQColor(color));
    pen.setWidth(width);
    pen.setJoinStyle(Qt::MiterJoin);
    return pen;
}

int QtTextFlags(unsigned format)
{
    int flags = Qt::AlignTop | (format & kTextCenter ? Qt::AlignHCenter : Qt::AlignLeft);
    if (format & kTextWordBreak)
        flags |= Qt::TextWordWrap;
    if (format & kTextExpandTabs)
        flags |= Qt::TextExpandTabs;
    if (format & kTextNoClip)
        flags |= Qt::TextDontClip;
    // External leading needs nothing: Qt spaces lines by it already.
    return flags;
}

DeviceContext::DeviceContext(QPainter& painter, TextImageCache& texts)
    : painter_(painter), texts_(texts), font_(painter.font()), textColor_(Qt::black)
{
    painter_.setRenderHint(QPainter::Antialiasing, false);
    painter_.setRenderHint(QPainter::TextAntialiasing, true);
    painter_.setPen(SolidPen(1, 0x000000));
    painter_.setBrush(QBrush(Qt::white));
}

QPen DeviceContext::CurrentPen() const
{
    return painter_.pen();
}

QBrush DeviceContext::CurrentBrush() const
{
    return painter_.brush();
}

QPen DeviceContext::SelectPen(const QPen& pen)
{
    QPen old = painter_.pen();
    painter_.setPen(pen);
    return old;
}

QBrush DeviceContext::SelectBrush(const QBrush& brush)
{
    QBrush old = painter_.brush();
    painter_.setBrush(brush);
    return old;
}

QFont DeviceContext::SelectFont(const QFont& font)
{
    return std::exchange(font_, font);
}

void DeviceContext::FillRect(const CRect& r, ColorRef color)
{
    if (!r.IsRectEmpty())
        painter_.fillRect(ToQRect(r), ToQColor(color));
}

void DeviceContext::FrameRect(const CRect& r, ColorRef color)
{
    if (r.IsRectEmpty())
        return;
    FillRect({r.left, r.top, r.right, r.top + 1}, color);
    FillRect({r.left, r.bottom - 1, r.right, r.bottom}, color);
    FillRect({r.left, r.top, r.left + 1, r.bottom}, color);
    FillRect({r.right - 1, r.top, r.right, r.bottom}, color);
}

template <typename FillShape>
void DeviceContext::OutlineAndFill(const CRect& r, FillShape fill)
{
    // Filling beats stroking by far: the outline is the whole shape in the
    // pen's colour, the inside is drawn over it.
    const QPen pen = painter_.pen();
    const int outline = pen.style() == Qt::NoPen ? 0 : std::max(1, pen.width());
    if (outline > 0)
        fill(r, pen.color());
    const QBrush& brush = painter_.brush();
    if (brush.style() == Qt::NoBrush || (outline > 0 && brush.color() == pen.color()))
        return;
    CRect inside = r;
    inside.InflateRect(-outline, -outline);
    fill(inside, brush.color());
}

void DeviceContext::RoundRect(const CRect& r, CPoint corner)
{
    OutlineAndFill(r, [&](const CRect& shape, const QColor& color) {
        FillRounded(painter_, shape, corner, color);
    });
}

void DeviceContext::Ellipse(const CRect& r)
{
    OutlineAndFill(
        r, [&](const CRect& shape, const QColor& color) { FillEllipse(painter_, shape, color); });
}

void DeviceContext::Dots(const QPolygon& points, ColorRef color)
{
    painter_.save();
    painter_.setPen(ToQColor(color));
    painter_.drawPoints(points);
    painter_.restore();
}

void DeviceContext::Line(CPoint from, CPoint to)
{
    painter_.drawLine(from.x, from.y, to.x, to.y);
}

void DeviceContext::DrawText(const char* text, const CRect& r, unsigned format)
{
    const QString string = QString::fromUtf8(text);
    if (string.isEmpty())
        return;
    const TextImageCache::Drawn& drawn =
        texts_.Get(string, font_, textColor_, QSize(r.Width(), r.Height()), QtTextFlags(format),
                   painter_.device()->devicePixelRatioF());
    painter_.drawImage(QPoint(r.left, r.top) + drawn.offset, drawn.image);
}
