#include "PointerQueue.h"

#include <algorithm>
#include <utility>

void PointerQueue::Add(int browser, const BrowserPointer& pointer)
{
    const auto last = std::find_if(waiting_.rbegin(), waiting_.rend(), [&](const Told& told) {
        return told.browser == browser && told.pointer.pointer == pointer.pointer;
    });
    if (pointer.phase == BrowserPointer::kMove && last != waiting_.rend() &&
        last->pointer.phase == BrowserPointer::kMove) {
        last->pointer = pointer;
        return;
    }
    waiting_.push_back({browser, pointer});
}

std::vector<PointerQueue::Told> PointerQueue::TakeAll()
{
    return std::exchange(waiting_, {});
}
