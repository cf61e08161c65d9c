#include "host/CRect.h"

#include <gtest/gtest.h>

TEST(Rect, RightAndBottomEdgesLieOutside)
{
    const CRect r{10, 20, 30, 60};
    EXPECT_EQ(r.Width(), 20);
    EXPECT_EQ(r.Height(), 40);
    EXPECT_TRUE(r.PtInRect({10, 20}));
    EXPECT_TRUE(r.PtInRect({29, 59}));
    EXPECT_FALSE(r.PtInRect({30, 59}));
    EXPECT_FALSE(r.PtInRect({29, 60}));
    EXPECT_TRUE((CRect{5, 5, 5, 9}).IsRectEmpty());
    EXPECT_TRUE((CRect{5, 5, 4, 9}).IsRectEmpty());
}

TEST(Rect, IntersectionIsEmptyForTouchingOrEmptyRectangles)
{
    CRect common;
    EXPECT_TRUE(common.IntersectRect({0, 0, 10, 10}, {5, 5, 20, 20}));
    EXPECT_EQ(common, (CRect{5, 5, 10, 10}));
    EXPECT_FALSE(common.IntersectRect({0, 0, 10, 10}, {10, 0, 20, 10}));
    EXPECT_EQ(common, CRect{});
    EXPECT_FALSE(common.IntersectRect({0, 0, 10, 10}, {0, 10, 10, 20}));
    // A rectangle turned inside out holds nothing, even where it spans another.
    EXPECT_FALSE(RectsIntersect({0, 0, 10, 10}, {8, 2, 2, 8}));
    EXPECT_FALSE(RectsIntersect({0, 0, 10, 10}, {5, 5, 5, 5}));
}

TEST(Rect, NormalizeInflateAndOffset)
{
    CRect r{30, 40, 10, 20};
    r.NormalizeRect();
    EXPECT_EQ(r, (CRect{10, 20, 30, 40}));
    r.InflateRect(8, 8);
    EXPECT_EQ(r, (CRect{2, 12, 38, 48}));
    r.OffsetRect(-2, 3);
    EXPECT_EQ(r, (CRect{0, 15, 36, 51}));
    EXPECT_EQ(r.TopLeft(), (CPoint{0, 15}));
}
