#pragma once

#include "host/CPoint.h"

#include <string>

class OSCControl;
class OSCPage;

// The mouse editing rules of the canvas, on layout units. Pure, so that each
// rule can be checked against its numbers.

// The edges of a control that the pointer can grab, with the resize state
// that dragging each one enters (edge + 2; 0 is no resize).
enum Edge { kTopEdge = 0, kBottomEdge = 1, kLeftEdge = 2, kRightEdge = 3 };
constexpr int kNoResize = 0;
constexpr int ResizeStateOf(int edge)
{
    return edge + 2;
}

// Finds the first control, in index order, with an edge zone at point: 2 units
// deep above and below a control, 4 wide left and right, just outside it and
// never in a corner. Leaves the outputs alone when there is none; either may
// be null.
bool FindEditEdge(const OSCPage& page, CPoint point, OSCControl** control, int* edge);

// Moves one edge of a control by d units; false when the step is refused and
// the control is unchanged. A control keeps at least 32 units a side and
// neither its top nor its left edge may go above or left of 0; the bottom and
// right are not bounded.
bool ResizeStep(OSCControl& control, int edge, int d);

// Where control stands in the page's order, or -1.
int IndexOf(const OSCPage& page, const OSCControl* control);

// A knob keeps equal sides: the dimension that edge changed is copied into the
// other. Other controls are left alone.
void KeepKnobSquare(OSCControl& control, int edge);

// What the pointer is doing, for the status text.
struct EditState {
    int resizeEdge = kNoResize;  // ResizeStateOf an edge while resizing
    bool movingSelection = false;
    CPoint offset;  // from the press point
};

// "name: x=.. y=.. w=.., h=..", the geometry that control will have when the
// current edit ends. While resizing the control has already changed and the
// offset still counts from the press, so the text runs ahead; that is kept.
std::string StatusText(const OSCControl& control, const EditState& state);
