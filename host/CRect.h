#pragma once

#include "CPoint.h"

#include <algorithm>

// A rectangle whose right and bottom edges lie outside it, as window toolkits
// count them: (0, 0, 10, 10) holds x 0 to 9.
struct CRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr int Width() const { return right - left; }
    constexpr int Height() const { return bottom - top; }
    constexpr bool IsRectEmpty() const { return right <= left || bottom <= top; }
    constexpr CPoint TopLeft() const { return {left, top}; }

    constexpr bool PtInRect(CPoint p) const
    {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }

    constexpr void NormalizeRect()
    {
        if (left > right)
            std::swap(left, right);
        if (top > bottom)
            std::swap(top, bottom);
    }

    constexpr void InflateRect(int dx, int dy)
    {
        left -= dx;
        top -= dy;
        right += dx;
        bottom += dy;
    }

    constexpr void OffsetRect(int dx, int dy)
    {
        left += dx;
        right += dx;
        top += dy;
        bottom += dy;
    }

    // Makes this the common part of a and b; true when that part is not empty.
    // Rectangles that only touch along an edge have no common part.
    constexpr bool IntersectRect(const CRect& a, const CRect& b)
    {
        *this = {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                 std::min(a.bottom, b.bottom)};
        if (a.IsRectEmpty() || b.IsRectEmpty() || IsRectEmpty()) {
            *this = {};
            return false;
        }
        return true;
    }

    friend constexpr bool operator==(const CRect&, const CRect&) = default;
};

// True when a and b share at least one point.
constexpr bool RectsIntersect(const CRect& a, const CRect& b)
{
    CRect common;
    return common.IntersectRect(a, b);
}
