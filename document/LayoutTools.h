#pragma once

class OSCPage;

// Tools that arrange the selected controls of a page. Each changes nothing
// when it would take a control off the screen, and then answers false.

enum class AlignTo { kLeftEdges, kRightEdges, kTops, kBottoms, kHorizontalCentres, kVerticalCentres };
enum class Along { kHorizontal, kVertical };

// Each selected control to the same edge or centre of the selection's
// bounding box; two or more must be selected.
bool AlignSelected(OSCPage& page, AlignTo to, int screenW, int screenH);
// Equal gaps between neighbours, in the order of their left (or top) edges;
// the first and the last stay where they are. Three or more must be selected.
bool DistributeSelected(OSCPage& page, Along along, int screenW, int screenH);
// Every selected control as wide (or tall) as the widest (or tallest) of them;
// a knob keeps equal sides.
bool SameSizeSelected(OSCPage& page, Along along, int screenW, int screenH);

// How copies of the selection are made.
struct CopyPlan {
    int count = 1;
    int stepX = 0, stepY = 0;  // copy k is moved by k times these
    bool numberNames = false;
    bool numberAddresses = false;
    bool numberControlNumbers = false;
};

struct Duplicated {
    bool done = false;
    int copiesThatFit = 0;  // when not done: how many of the copies would fit
};

// Copies of the selected controls by plan, in front of the page; the copies
// become the selection. Nothing changes unless every copy fits on the screen,
// its control number included.
Duplicated DuplicateSelected(OSCPage& page, const CopyPlan& plan, int screenW, int screenH);
// The plan of one copy beside the selection, its names, addresses and control
// numbers counted on: to its right with a gap, or below it when the right has
// no room.
CopyPlan CopyBeside(const OSCPage& page, int screenW);

// Moves the count front-most controls together so that their bounding box's
// top-left corner lands on the nearest point of a grid of step units, or the
// next one that keeps them on the screen; false when none does.
bool SnapFrontControls(OSCPage& page, int count, int step, int screenW, int screenH);
