#include "ControlGeometry.h"

#include "document/ControlTables.h"
#include "document/OSCControl.h"

#include <cmath>
#include <cstdlib>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr int kFaderCap = 16;
constexpr int kBannerInset = 8;
constexpr int kToggleInset = 4;
constexpr int kNameInset = 2;

// The level's edge between the cap (base) and the far end (full). Counted in
// 64 bits: a range may span the whole of int.
int LevelEdge(int base, int full, std::int32_t minValue, std::int32_t maxValue, std::int32_t value)
{
    std::int64_t range = std::llabs(std::int64_t{maxValue} - minValue);
    if (range == 0)
        range = 1;
    return static_cast<int>(base + (std::int64_t{full} - base) * value / range);
}

}  // namespace

CRect TitleStripRect(int screenW, int scrollX, int scrollY)
{
    CRect strip{0, 0, screenW, kTitleBandHeight};
    strip.OffsetRect(-scrollX, -scrollY);
    return strip;
}

CRect TestModeBannerRect(const CRect& titleStrip)
{
    CRect banner = titleStrip;
    banner.InflateRect(-kBannerInset, -kBannerInset);
    return banner;
}

CRect FaderLevelRect(const CRect& control, std::int32_t minValue, std::int32_t maxValue,
                     std::int32_t value, bool testMode)
{
    CRect level = control;
    if (control.Width() < control.Height()) {
        const int base = control.bottom - kFaderCap;
        level.top = testMode ? LevelEdge(base, control.top, minValue, maxValue, value) : base;
    } else {
        const int base = control.left + kFaderCap;
        level.right = testMode ? LevelEdge(base, control.right, minValue, maxValue, value) : base;
    }
    return level;
}

CRect KnobBox(const CRect& control)
{
    CRect box = control;
    if (box.Width() >= box.Height())
        box.right = box.left + box.Height();
    else
        box.bottom = box.top + box.Width();
    return box;
}

CRect KnobHub(const CRect& knobBox)
{
    CRect hub = knobBox;
    const int inset = knobBox.Width() / 4;
    hub.InflateRect(-inset, -inset);
    return hub;
}

KnobPointer KnobPointerLine(const OSCControl& knob, int scrollX, int scrollY)
{
    const CPoint centre{knob.x + knob.width / 2 - scrollX, knob.y + knob.height / 2 - scrollY};
    const int radius = knob.width > knob.height ? knob.width / 2 : knob.height / 2;
    std::int64_t steps = std::llabs(std::int64_t{knob.maxValue} - knob.minValue + 1);
    if (steps == 0)
        steps = 1;
    // The angle is single precision, as the device computes it.
    const float angle = static_cast<float>(pi * 1.75) +
                        (pi * -1.5 * static_cast<float>(std::int64_t{knob.value} - knob.minValue)) /
                            static_cast<float>(steps);
    const int dx = static_cast<int>(std::sin(double{angle}) * radius);
    const int dy = static_cast<int>(std::cos(double{angle}) * radius);
    return {centre, {centre.x + dx, centre.y + dy}};
}

CRect ToggleLitRect(const CRect& control)
{
    CRect lit = control;
    lit.InflateRect(-kToggleInset, -kToggleInset);
    return lit;
}

CRect NameTextRect(const CRect& control)
{
    CRect text = control;
    text.InflateRect(-kNameInset, -kNameInset);
    return text;
}
