#pragma once

#include "host/CPoint.h"
#include "host/CRect.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

// How the literal scan tests one corner: against every rectangle in order, or
// first against the one that blocked the last corner, since it usually blocks
// the next one too. The second keeps the sanitizer build's tests bearable and
// changes no answer; benchmarks time the first.
enum class CornerTest { kEveryRectangle, kLastBlockerFirst };

// The free-place search done the plain way: every corner in turn, one unit at
// a time, tested against the occupied rectangles. Tests take it as the
// reference for FindFreePlace and the benchmarks as its baseline.
inline std::optional<CPoint> LiteralFreePlace(const std::vector<CRect>& occupied, int w, int h,
                                              int screenW, int screenH, CornerTest cornerTest)
{
    const bool lastBlockerFirst = cornerTest == CornerTest::kLastBlockerFirst;
    std::size_t lastHit = 0;
    for (int y = 40; y < screenH - h; ++y) {
        for (int x = 0; x < screenW - w; ++x) {
            const CRect group{x, y, x + w, y + h};
            if (lastBlockerFirst && lastHit < occupied.size() &&
                RectsIntersect(group, occupied[lastHit]))
                continue;
            const auto hit = std::find_if(occupied.begin(), occupied.end(),
                                          [&](const CRect& r) { return RectsIntersect(group, r); });
            if (hit == occupied.end())
                return CPoint{x, y};
            lastHit = static_cast<std::size_t>(hit - occupied.begin());
        }
    }
    return std::nullopt;
}
