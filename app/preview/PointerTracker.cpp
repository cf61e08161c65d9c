#include "PointerTracker.h"

#include <climits>
#include <iterator>

namespace {

const OSCControl* ControlAt(const LayoutSnapshot& layout, int page, int index)
{
    if (page < 0 || page >= std::ssize(layout.pages))
        return nullptr;
    const std::vector<OSCControl>& controls = layout.pages[page].controls;
    return index >= 0 && index < std::ssize(controls) ? &controls[index] : nullptr;
}

// The front-most control under the point, as the canvas finds it; -1 for none.
int IndexAt(const LayoutSnapshot& layout, int page, int x, int y)
{
    if (page < 0 || page >= std::ssize(layout.pages))
        return -1;
    const std::vector<OSCControl>& controls = layout.pages[page].controls;
    for (int i = 0; i < std::ssize(controls); ++i) {
        const OSCControl& c = controls[i];
        if (x >= c.x && x < c.x + c.width && y >= c.y && y < c.y + c.height)
            return i;
    }
    return -1;
}

PointerOperation Operate(const LayoutSnapshot& layout, int page, int index,
                         const BrowserPointer& pointer, OperatedControl::Phase phase)
{
    OSCControl control = *ControlAt(layout, page, index);
    const std::int32_t before = control.value;
    if (phase != OperatedControl::kReleasedAway)
        control.SetVal(nullptr, pointer.x, pointer.y, phase);
    return {page, index, control, phase, control.value != before};
}

}  // namespace

std::optional<PointerOperation> PointerTracker::Take(int browser, const BrowserPointer& pointer,
                                                     const LayoutSnapshot& layout)
{
    const auto key = std::make_pair(browser, pointer.pointer);
    const auto held = held_.find(key);
    if (pointer.phase == BrowserPointer::kDown) {
        const int index = IndexAt(layout, pointer.page, pointer.x, pointer.y);
        if (index < 0 || (held == held_.end() && HeldBy(browser) >= kMostPointers))
            return std::nullopt;
        held_[key] = {pointer.page, index};
        return Operate(layout, pointer.page, index, pointer, OperatedControl::kPressed);
    }
    // A control gone since its press is let go of without a word.
    if (held == held_.end())
        return std::nullopt;
    const Held control = held->second;
    if (ControlAt(layout, control.page, control.index) == nullptr) {
        held_.erase(held);
        return std::nullopt;
    }
    // A fader or knob follows its pointer anywhere, as on the canvas; the others only over them.
    const bool onIt = ControlAt(layout, control.page, control.index)->FollowsPointer() ||
                      (pointer.page == control.page &&
                       IndexAt(layout, pointer.page, pointer.x, pointer.y) == control.index);
    if (pointer.phase == BrowserPointer::kMove) {
        if (!onIt)
            return std::nullopt;
        return Operate(layout, control.page, control.index, pointer, OperatedControl::kDragged);
    }
    held_.erase(held);
    const bool released = pointer.phase == BrowserPointer::kUp && onIt;
    return Operate(layout, control.page, control.index, pointer,
                   released ? OperatedControl::kReleased : OperatedControl::kReleasedAway);
}

int PointerTracker::HeldBy(int browser) const
{
    return static_cast<int>(
        std::distance(held_.lower_bound({browser, INT_MIN}), held_.upper_bound({browser, INT_MAX})));
}

std::vector<PointerOperation> PointerTracker::Forget(int browser, const LayoutSnapshot& layout)
{
    std::vector<PointerOperation> ended;
    for (auto it = held_.lower_bound({browser, INT_MIN});
         it != held_.end() && it->first.first == browser;) {
        if (ControlAt(layout, it->second.page, it->second.index) != nullptr)
            ended.push_back(Operate(layout, it->second.page, it->second.index, {},
                                    OperatedControl::kReleasedAway));
        it = held_.erase(it);
    }
    return ended;
}
