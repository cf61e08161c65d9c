#include "EditorGeometry.h"

#include <algorithm>

namespace {

constexpr int kPageListStrip = 200;

}  // namespace

CRect ViewPlacement(int cx, int cy, int screenW, int screenH)
{
    const int available = cx - kPageListStrip;
    const int left =
        kPageListStrip + (screenW > available ? 0 : (cx - screenW - kPageListStrip) / 2);
    const int top = screenH > cy ? 0 : (cy - screenH) / 2;
    return {left, top, left + std::min(available, screenW), top + std::min(cy, screenH)};
}

CRect FramePlacement(const CRect& stored, const CRect& hostClient)
{
    if (stored.Width() > 0 && stored.Height() > 0)
        return stored;
    return {hostClient.Width() / 2, hostClient.top, hostClient.right - 4,
            hostClient.bottom - hostClient.Height() / 4};
}
