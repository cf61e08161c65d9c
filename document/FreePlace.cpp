#include "FreePlace.h"

#include <algorithm>
#include <cstdint>

namespace {

// Everything is computed in 64 bits: rectangles read from files may lie
// anywhere in int, and w, h may be as large as a whole inflated int16 group.
using Coord = std::int64_t;

// An occupied rectangle seen from the group's top-left corner: the corner
// collides with it for rows firstRow..lastRow and columns firstX..lastX, cut
// to the rows and columns searched so that they fit in int again.
struct Obstacle {
    int firstRow;
    int lastRow;
    int firstX;
    int lastX;
};

// The leftmost x in 0..maxX not inside any obstacle of active (sorted by
// firstX), or -1.
int FirstFreeX(const std::vector<Obstacle>& active, int maxX)
{
    int x = 0;
    for (const Obstacle& o : active) {
        if (o.firstX > x)
            break;
        x = std::max(x, o.lastX + 1);
        if (x > maxX)
            return -1;
    }
    return x;
}

}  // namespace

// Rather than testing every corner, only rows where the set of colliding
// rectangles shrinks can hold the first free place: row 40 and the rows just
// below a rectangle. Between two such rows more rectangles only come in, so a
// row that is not free is followed by rows that are not free either.
std::optional<CPoint> FindFreePlace(const std::vector<CRect>& occupied, int w, int h, int screenW,
                                    int screenH)
{
    constexpr int kTopRow = 40;
    const Coord maxX = Coord{screenW} - w - 1;
    const Coord maxY = Coord{screenH} - h - 1;
    if (maxX < 0 || maxY < kTopRow)
        return std::nullopt;
    // An empty group shares no point with anything.
    if (w <= 0 || h <= 0)
        return CPoint{0, kTopRow};

    std::vector<Obstacle> obstacles;
    obstacles.reserve(occupied.size());
    std::vector<int> rows{kTopRow};
    rows.reserve(occupied.size() + 1);
    for (const CRect& r : occupied) {
        if (r.IsRectEmpty())
            continue;
        const Coord firstRow = Coord{r.top} - h + 1;
        const Coord lastRow = Coord{r.bottom} - 1;
        const Coord firstX = Coord{r.left} - w + 1;
        const Coord lastX = Coord{r.right} - 1;
        if (lastRow < kTopRow || firstRow > maxY || lastX < 0 || firstX > maxX)
            continue;
        obstacles.push_back({static_cast<int>(std::max<Coord>(firstRow, kTopRow)),
                             static_cast<int>(std::min(lastRow, maxY)),
                             static_cast<int>(std::max<Coord>(firstX, 0)),
                             static_cast<int>(std::min(lastX, maxX))});
        if (r.bottom > kTopRow && r.bottom <= maxY)
            rows.push_back(r.bottom);
    }
    // Merge sorts: controls laid out in a grid give runs of equal rows, on
    // which std::sort was seen falling back to its much slower heap sort.
    std::stable_sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    std::stable_sort(obstacles.begin(), obstacles.end(),
                     [](const Obstacle& a, const Obstacle& b) { return a.firstRow < b.firstRow; });

    // Obstacles covering the current row, kept sorted by firstX.
    std::vector<Obstacle> active;
    const auto byFirstX = [](const Obstacle& a, const Obstacle& b) { return a.firstX < b.firstX; };
    auto next = obstacles.begin();
    for (const int y : rows) {
        std::erase_if(active, [y](const Obstacle& o) { return o.lastRow < y; });
        for (; next != obstacles.end() && next->firstRow <= y; ++next) {
            if (next->lastRow >= y)
                active.insert(std::upper_bound(active.begin(), active.end(), *next, byFirstX),
                              *next);
        }
        if (const int x = FirstFreeX(active, static_cast<int>(maxX)); x >= 0)
            return CPoint{x, y};
    }
    return std::nullopt;
}
