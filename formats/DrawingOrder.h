#pragma once

#include "document/OSCPage.h"

#include <algorithm>
#include <memory>
#include <vector>

// The touch apps draw a page's elements in file order, each over those before
// it, while the editor shows index 0 in front. So an import puts what the app
// draws last at index 0, and an export writes the back-most control first.
inline void StackAsDrawn(std::vector<std::unique_ptr<OSCPage>>& pages)
{
    for (const auto& page : pages)
        std::reverse(page->controls.begin(), page->controls.end());
}
