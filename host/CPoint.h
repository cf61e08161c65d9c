#pragma once

// A point in layout units.
struct CPoint {
    int x = 0;
    int y = 0;

    friend constexpr bool operator==(const CPoint&, const CPoint&) = default;
};
