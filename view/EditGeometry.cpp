#include "EditGeometry.h"

#include "document/ControlTables.h"
#include "document/OSCPage.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace {

constexpr int kZoneDepth = 2;  // above and below
constexpr int kZoneWidth = 4;  // left and right
constexpr int kMinimumSide = 32;

std::int16_t Short(int value)
{
    return static_cast<std::int16_t>(value);
}

bool EdgeAt(const OSCControl& c, CPoint p, int& edge)
{
    if (p.x >= c.x && p.x < c.x + c.width) {
        if (p.y >= c.y - kZoneDepth && p.y < c.y)
            edge = kTopEdge;
        else if (p.y > c.y + c.height && p.y <= c.y + c.height + kZoneDepth)
            edge = kBottomEdge;
        else
            return false;
        return true;
    }
    if (p.y >= c.y && p.y < c.y + c.height) {
        if (p.x >= c.x - kZoneWidth && p.x < c.x)
            edge = kLeftEdge;
        else if (p.x > c.x + c.width && p.x <= c.x + c.width + kZoneWidth)
            edge = kRightEdge;
        else
            return false;
        return true;
    }
    return false;
}

// Moves the near edge (top or left) at position by d, keeping the far one.
bool MoveNearEdge(std::int16_t& position, std::int16_t& size, int d)
{
    if ((d > 0 && size - d < kMinimumSide) || position + d < 0)
        return false;
    position = Short(position + d);
    size = Short(size - d);
    return true;
}

// Moves the far edge (bottom or right) by d; floor is the smallest size the
// step itself may leave.
bool MoveFarEdge(std::int16_t& size, int d, int floor)
{
    if (d < 0 && size + d < kMinimumSide)
        return false;
    size = Short(size + std::max(d, floor - size));
    return true;
}

}  // namespace

bool FindEditEdge(const OSCPage& page, CPoint point, OSCControl** control, int* edge)
{
    for (const auto& c : page.controls) {
        int hit = 0;
        if (c == nullptr || !EdgeAt(*c, point, hit))
            continue;
        if (control != nullptr)
            *control = c.get();
        if (edge != nullptr)
            *edge = hit;
        return true;
    }
    return false;
}

bool ResizeStep(OSCControl& control, int edge, int d)
{
    switch (edge) {
        case kTopEdge:
            return MoveNearEdge(control.y, control.height, d);
        case kBottomEdge:
            return MoveFarEdge(control.height, d, 2);
        case kLeftEdge:
            return MoveNearEdge(control.x, control.width, d);
        case kRightEdge:
            return MoveFarEdge(control.width, d, 4);
        default:
            return false;
    }
}

void KeepKnobSquare(OSCControl& control, int edge)
{
    if (control.type != kKnob)
        return;
    if (edge == kTopEdge || edge == kBottomEdge)
        control.width = control.height;
    else
        control.height = control.width;
}

std::string StatusText(const OSCControl& control, const EditState& state)
{
    int x = control.x;
    int y = control.y;
    int w = control.width;
    int h = control.height;
    const int dx = state.offset.x;
    const int dy = state.offset.y;
    switch (state.resizeEdge) {
        case ResizeStateOf(kTopEdge):
            y += dy;
            h -= dy;
            break;
        case ResizeStateOf(kBottomEdge):
            h += dy;
            break;
        case ResizeStateOf(kLeftEdge):
            x += dx;
            w -= dx;
            break;
        case ResizeStateOf(kRightEdge):
            w += dx;
            break;
        default:
            if (state.movingSelection) {
                x += dx;
                y += dy;
            }
            break;
    }
    char text[sizeof control.name + 80];
    std::snprintf(text, sizeof text, "%s: x=%d y=%d w=%d, h=%d", control.name, x, y, w, h);
    return text;
}

int IndexOf(const OSCPage& page, const OSCControl* control)
{
    const auto& controls = page.controls;
    const auto found = std::find_if(controls.begin(), controls.end(),
                                    [control](const auto& c) { return c.get() == control; });
    return found == controls.end() ? -1 : static_cast<int>(found - controls.begin());
}
