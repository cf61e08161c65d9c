#pragma once

#include "document/LayoutChange.h"
#include "host/Messages.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

// A pointer of a browser on the preview: a finger or the mouse, in layout
// units of the page the browser shows.
struct BrowserPointer {
    enum Phase { kDown, kMove, kUp, kCancel };
    int pointer = 0;  // the browser's id of the finger or mouse
    Phase phase = kDown;
    int page = 0;
    int x = 0;
    int y = 0;
};

// A control a browser's pointer operated: where it is, the control with the
// value its rule gave, and how it was operated.
struct PointerOperation {
    int page;
    int index;
    OSCControl control;
    OperatedControl::Phase phase;
    bool valueChanged;
};

// Operates controls with the browsers' pointers as the canvas does in test
// mode with the mouse, each pointer on its own: a press on a control holds
// it; moves over it and a release on it run its value rule, as do moves and
// a release anywhere for a fader or knob; another release, or a pointer
// lost, ends the press away from it.
class PointerTracker {
public:
    // Ten fingers; a browser that claims more presses nothing with the rest.
    static constexpr int kMostPointers = 10;

    std::optional<PointerOperation> Take(int browser, const BrowserPointer& pointer,
                                         const LayoutSnapshot& layout);
    // Ends every press of a browser that went away.
    std::vector<PointerOperation> Forget(int browser, const LayoutSnapshot& layout);

private:
    int HeldBy(int browser) const;

    struct Held {
        int page;
        int index;
    };
    std::map<std::pair<int, int>, Held> held_;  // by browser and pointer
};
