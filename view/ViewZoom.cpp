// The canvas at a zoom: layout units to pixels and back, and the page painted
// at 100% and scaled.
#include "TVornOSCView.h"

#include <QImage>
#include <QPainter>

int TVornOSCView::ClientUnitsWide() const
{
    return ClientRect().Width() * 100 / zoomPercent;
}

int TVornOSCView::ClientUnitsHigh() const
{
    return ClientRect().Height() * 100 / zoomPercent;
}

int TVornOSCView::Zoomed(int n) const
{
    return (n * zoomPercent + 99) / 100;
}

CPoint TVornOSCView::Unzoomed(CPoint point) const
{
    const auto units = [this](int pixels) {
        // Rounds down on both sides of 0, as the pixel a unit starts at does.
        const int scaled = pixels * 100;
        return scaled >= 0 ? scaled / zoomPercent : -((-scaled + zoomPercent - 1) / zoomPercent);
    };
    return {units(point.x), units(point.y)};
}

void TVornOSCView::PaintZoomed(const QRect& invalid)
{
    // The units under invalid, with the unit each edge cuts through.
    const CPoint from = Unzoomed({invalid.left(), invalid.top()});
    const CPoint to = Unzoomed({invalid.right(), invalid.bottom()});
    const QRect units(from.x, from.y, to.x - from.x + 1, to.y - from.y + 1);
    QImage page(units.size(), QImage::Format_RGB32);
    {
        QPainter painter(&page);
        painter.translate(-units.topLeft());
        PaintPage(painter, units);
    }
    QPainter painter(this);
    painter.setClipRect(invalid);
    // Shrunk, the page is smoothed; grown, each unit stays a sharp square.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, zoomPercent < 100);
    painter.drawImage(QRectF(units.left() * zoomPercent / 100.0, units.top() * zoomPercent / 100.0,
                             units.width() * zoomPercent / 100.0,
                             units.height() * zoomPercent / 100.0),
                      page);
}
