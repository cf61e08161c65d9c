#pragma once

#include "host/CPoint.h"
#include "host/CRect.h"

#include <cstdint>

class OSCControl;

// Where the parts of each control type are drawn, in view pixels. Pure, so
// that each rule can be checked against its numbers.

// Every rounded rectangle of the canvas has corners of this ellipse.
constexpr CPoint roundPt{5, 5};

// The band at the top of a page, in layout units, and its test-mode banner.
CRect TitleStripRect(int screenW, int scrollX, int scrollY);
CRect TestModeBannerRect(const CRect& titleStrip);

// The lit part of a fader. A fader is vertical when narrower than high. Out
// of test mode only a 16-pixel cap shows at the bottom (left) end; in test
// mode the level grows from that cap in proportion to value itself, not to
// its distance from minValue: faders whose range does not start at 0 show an
// offset level on purpose.
CRect FaderLevelRect(const CRect& control, std::int32_t minValue, std::int32_t maxValue,
                     std::int32_t value, bool testMode);

// A knob is drawn as the circle of its largest square at the top left.
CRect KnobBox(const CRect& control);
CRect KnobHub(const CRect& knobBox);

// The pointer of a knob in test mode: from the centre of the whole control
// rectangle, half its larger side long, swept over 270 degrees from lower left
// (minValue) through straight up to just short of lower right.
struct KnobPointer {
    CPoint from;
    CPoint to;
};
KnobPointer KnobPointerLine(const OSCControl& knob, int scrollX, int scrollY);

// The filled inner part of a toggle that is on.
CRect ToggleLitRect(const CRect& control);

// The rectangle a control's name wraps in.
CRect NameTextRect(const CRect& control);
