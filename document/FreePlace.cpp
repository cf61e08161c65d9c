#include "FreePlace.h"

#include <algorithm>
#include <cstdint>

namespace {

// Everything is computed in 64 bits: rectangles read from files may lie
// anywhere in int, and w, h may be as large as a whole inflated int16 group.
using Coord = std::int64_t;

// An occupied rectangle seen from the group's top-left corner: the corner
// collides with it for rows firstRow..lastRow and columns firstX..lastX.
struct Obstacle {
    Coord firstRow;
    Coord lastRow;
    Coord firstX;
    Coord lastX;
};

// The leftmost x in 0..maxX not inside any obstacle of active (sorted by
// firstX), or -1.
Coord FirstFreeX(const std::vector<Obstacle>& active, Coord maxX)
{
    Coord x = 0;
    for (const Obstacle& o : active) {
        if (o.firstX > x)
            break;
        x = std::max(x, o.lastX + 1);
        if (x > maxX)
            return -1;
    }
    return x <= maxX ? x : -1;
}

}  // namespace

// Rather than testing every corner, only rows where the set of colliding
// rectangles shrinks can hold the first free place: row 40 and the rows just
// below a rectangle. Between two such rows more rectangles only come in, so a
// row that is not free is followed by rows that are not free either.
std::optional<CPoint> FindFreePlace(const std::vector<CRect>& occupied, int w, int h, int screenW,
                                    int screenH)
{
    constexpr Coord kTopRow = 40;
    const Coord maxX = Coord{screenW} - w - 1;
    const Coord maxY = Coord{screenH} - h - 1;
    if (maxX < 0 || maxY < kTopRow)
        return std::nullopt;
    // An empty group shares no point with anything.
    if (w <= 0 || h <= 0)
        return CPoint{0, static_cast<int>(kTopRow)};

    std::vector<Obstacle> obstacles;
    std::vector<Coord> rows{kTopRow};
    for (const CRect& r : occupied) {
        if (r.IsRectEmpty())
            continue;
        const Obstacle o{Coord{r.top} - h + 1, Coord{r.bottom} - 1, Coord{r.left} - w + 1,
                         Coord{r.right} - 1};
        if (o.lastRow < kTopRow || o.firstRow > maxY || o.lastX < 0 || o.firstX > maxX)
            continue;
        obstacles.push_back(o);
        if (r.bottom > kTopRow && r.bottom <= maxY)
            rows.push_back(r.bottom);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    std::sort(obstacles.begin(), obstacles.end(),
              [](const Obstacle& a, const Obstacle& b) { return a.firstRow < b.firstRow; });

    // Obstacles covering the current row, kept sorted by firstX.
    std::vector<Obstacle> active;
    const auto byFirstX = [](const Obstacle& a, const Obstacle& b) { return a.firstX < b.firstX; };
    auto next = obstacles.begin();
    for (const Coord y : rows) {
        std::erase_if(active, [y](const Obstacle& o) { return o.lastRow < y; });
        for (; next != obstacles.end() && next->firstRow <= y; ++next) {
            if (next->lastRow >= y)
                active.insert(std::upper_bound(active.begin(), active.end(), *next, byFirstX),
                              *next);
        }
        if (const Coord x = FirstFreeX(active, maxX); x >= 0)
            return CPoint{static_cast<int>(x), static_cast<int>(y)};
    }
    return std::nullopt;
}
