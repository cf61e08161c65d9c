#pragma once

#include "document/LayoutChange.h"

#include <optional>
#include <string>
#include <vector>

// What the browsers of the phone preview are told of the layout, as JSON
// messages, each naming its kind:
//   {"kind": "layout", "width": W, "height": H, "pages": [NAME...], "current": N}
//     the screen, the page names and the editor's current page; no pages
//     while no layout is open;
//   {"kind": "page", "page": N, "controls": [{"type", "color", "x", "y",
//     "width", "height", "min", "max", "value", "name"}...]}
//     a page's controls, index 0 front-most;
//   {"kind": "values", "page": N, "values": [[CONTROL, VALUE]...]}
//     values that changed on a page whose controls did not.
// The feed remembers what it told last and tells only what changed since.
class PreviewFeed {
public:
    // The messages that bring browsers from the last layout told to now, or
    // to no layout at all; none when nothing they show changed.
    std::vector<std::string> Update(const std::optional<LayoutSnapshot>& now);
    // Everything the last update told, for a browser that just came.
    std::vector<std::string> Everything() const;
    // The layout as the browsers know it, which their pointers refer to.
    const std::optional<LayoutSnapshot>& Told() const { return told_; }

private:
    std::optional<LayoutSnapshot> told_;
};
