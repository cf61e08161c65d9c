#pragma once

#include "host/CPoint.h"
#include "host/CRect.h"

#include <QBrush>
#include <QFont>
#include <QPen>
#include <QPolygon>

#include <cstdint>

class QPainter;
class TextImageCache;

// Colours as 32-bit words with red in the low byte.
using ColorRef = std::uint32_t;
QColor ToQColor(ColorRef color);

// Text formats, in the numbering of the drawing model the canvas was designed on.
enum TextFormat : unsigned {
    kTextCenter = 0x1,
    kTextBottom = 0x8,
    kTextWordBreak = 0x10,
    kTextExpandTabs = 0x40,
    kTextNoClip = 0x100,
    kTextExternalLeading = 0x200,
};
// Qt's alignment and text flags for a text format. Bottom alignment applies to
// single-line text only, which the canvas never asks for: its texts start at
// the top of their rectangles.
int QtTextFlags(unsigned format);

// Drawing with a selected pen, brush and font, the way the canvas's painters
// were written: rectangles exclude their right and bottom edges, and outlines,
// fills and frames all stay inside them, an outline as wide as its pen.
// Nothing is antialiased but text, so frames stay sharp.
class DeviceContext {
public:
    // Starts with a black one-pixel pen, a white brush and black text. Texts
    // are put down from texts instead of laid out each time.
    DeviceContext(QPainter& painter, TextImageCache& texts);

    QPen CurrentPen() const;
    QBrush CurrentBrush() const;
    // Each Select returns what was selected before, to be put back.
    QPen SelectPen(const QPen& pen);
    QBrush SelectBrush(const QBrush& brush);
    QFont SelectFont(const QFont& font);
    void SetTextColor(ColorRef color) { textColor_ = ToQColor(color); }

    void FillRect(const CRect& r, ColorRef color);
    void FrameRect(const CRect& r, ColorRef color);
    void RoundRect(const CRect& r, CPoint corner);
    void Ellipse(const CRect& r);
    void Line(CPoint from, CPoint to);
    // One pixel at each point.
    void Dots(const QPolygon& points, ColorRef color);
    void DrawText(const char* text, const CRect& r, unsigned format);

private:
    // Fills r, or the ellipse inside it, with the pen's colour and then,
    // inside the outline, with the brush's.
    template <typename FillShape>
    void OutlineAndFill(const CRect& r, FillShape fill);

    QPainter& painter_;
    TextImageCache& texts_;
    QFont font_;
    QColor textColor_;
};

// A solid pen of the given width.
QPen SolidPen(int width, ColorRef color);
