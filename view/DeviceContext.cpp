#include "DeviceContext.h"

#include <QPainter>

namespace {

// The shape of a rectangle whose right and bottom edges lie outside it: Qt
// strokes a QRect one pixel past its width and height.
QRect OutlineRect(const CRect& r)
{
    return QRect(r.left, r.top, r.Width() - 1, r.Height() - 1);
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
    int flags = Qt::AlignLeft;
    if (format & kTextCenter)
        flags = Qt::AlignHCenter;
    else if (format & kTextRight)
        flags = Qt::AlignRight;
    if (format & kTextSingleLine) {
        flags |= Qt::TextSingleLine;
        if (format & kTextBottom)
            flags |= Qt::AlignBottom;
        else if (format & kTextVCenter)
            flags |= Qt::AlignVCenter;
        else
            flags |= Qt::AlignTop;
    } else {
        flags |= Qt::AlignTop;
    }
    if (format & kTextWordBreak)
        flags |= Qt::TextWordWrap;
    if (format & kTextExpandTabs)
        flags |= Qt::TextExpandTabs;
    if (format & kTextNoClip)
        flags |= Qt::TextDontClip;
    // External leading needs nothing: Qt spaces lines by it already.
    return flags;
}

DeviceContext::DeviceContext(QPainter& painter) : painter_(painter), textColor_(Qt::black)
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
    QFont old = painter_.font();
    painter_.setFont(font);
    return old;
}

void DeviceContext::FillRect(const CRect& r, ColorRef color)
{
    if (!r.IsRectEmpty())
        painter_.fillRect(QRect(r.left, r.top, r.Width(), r.Height()), ToQColor(color));
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

void DeviceContext::RoundRect(const CRect& r, CPoint corner)
{
    painter_.drawRoundedRect(OutlineRect(r), corner.x / 2.0, corner.y / 2.0);
}

void DeviceContext::Ellipse(const CRect& r)
{
    painter_.drawEllipse(OutlineRect(r));
}

void DeviceContext::Line(CPoint from, CPoint to)
{
    painter_.drawLine(from.x, from.y, to.x, to.y);
}

void DeviceContext::DrawText(const char* text, const CRect& r, unsigned format)
{
    const QPen pen = painter_.pen();
    painter_.setPen(textColor_);
    painter_.drawText(QRect(r.left, r.top, r.Width(), r.Height()), QtTextFlags(format),
                      QString::fromUtf8(text));
    painter_.setPen(pen);
}
