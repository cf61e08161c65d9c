#pragma once

#include "PointerTracker.h"

#include <vector>

// The pointers the browsers told of that are not applied yet, in the order
// they came. A move replaces the move of the same pointer still waiting when
// nothing else of that pointer came after it: a pointer's newest place is all
// that counts, so a flood of moves costs what one does.
class PointerQueue {
public:
    struct Told {
        int browser;
        BrowserPointer pointer;
    };

    void Add(int browser, const BrowserPointer& pointer);
    // Everything waiting, which waits no more.
    std::vector<Told> TakeAll();

private:
    std::vector<Told> waiting_;
};
