// The canvas's arithmetic, against its numbers.
#include "document/ControlTables.h"
#include "document/OSCPage.h"
#include "tests/support/TestControls.h"
#include "view/ControlGeometry.h"
#include "view/EditGeometry.h"
#include "view/ScrollGeometry.h"
#include "view/TVornOSCView.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>

namespace {

OSCControl Control(int x, int y, int w, int h, int value = 0)
{
    OSCPage page;
    OSCControl c = AddControl(page, x, y, w, h);
    c.value = value;
    return c;
}

TEST(ScrollGeometry, StepsStopAtTheEndsButTheThumbGoesWhereItIsPut)
{
    const struct {
        int code, thumb, position;
        std::optional<int> step;  // on a range of 0 to 100, 60 to a page
    } cases[] = {
        {kLineForward, 0, 0, 16},
        {kLineForward, 0, 90, 10},
        {kLineForward, 0, 100, std::nullopt},
        {kPageForward, 0, 0, 60},
        {kPageForward, 0, 50, 50},
        {kLineBack, 0, 20, -16},
        {kLineBack, 0, 5, -5},
        {kLineBack, 0, 0, std::nullopt},
        {kPageBack, 0, 70, -60},
        {kPageBack, 0, 50, -50},
        {kThumbTrack, 150, 10, 140},
        {kThumbPosition, -5, 10, -15},
        {8, 50, 10, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "code " << c.code << " at " << c.position);
        EXPECT_EQ(ScrollStep(c.code, c.thumb, c.position, 100, 60), c.step);
    }
}

TEST(ControlGeometry, ScaledColoursDivideEachChannelAndUnknownColoursAreGray)
{
    EXPECT_EQ(TVornOSCView::GetScaledColor(8, 1), 0x009314FFu);  // pink
    EXPECT_EQ(TVornOSCView::GetScaledColor(8, 2), 0x00490A7Fu);
    EXPECT_EQ(TVornOSCView::GetScaledColor(8, 8), 0x0012021Fu);
    EXPECT_EQ(TVornOSCView::GetScaledColor(200, 4), TVornOSCView::GetScaledColor(kGray, 4));
}

TEST(ControlGeometry, FaderLevelsGrowFromTheCapByTheValueItself)
{
    const CRect tall{10, 50, 50, 250};
    const struct {
        const char* name;
        CRect control;
        int minValue, maxValue, value;
        bool testMode;
        CRect level;
    } cases[] = {
        {"vertical at its maximum", tall, 0, 127, 127, true, tall},
        {"vertical at 0: the cap", tall, 0, 127, 0, true, {10, 234, 50, 250}},
        {"half way", tall, 0, 100, 50, true, {10, 142, 50, 250}},
        {"out of test mode: the cap", tall, 0, 127, 127, false, {10, 234, 50, 250}},
        {"not the distance from the minimum", tall, 100, 200, 50, true, {10, 142, 50, 250}},
        {"an empty range divides by 1", tall, 5, 5, 1, true, tall},
        {"horizontal", {10, 50, 210, 90}, 0, 100, 50, true, {10, 50, 118, 90}},
        {"square is horizontal", {0, 40, 40, 80}, 0, 127, 0, true, {0, 40, 16, 80}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(FaderLevelRect(c.control, c.minValue, c.maxValue, c.value, c.testMode), c.level);
    }
}

TEST(ControlGeometry, KnobsDrawTheirTopLeftSquareAndPointFromTheWholeRectanglesCentre)
{
    EXPECT_EQ(KnobBox({10, 20, 70, 60}), (CRect{10, 20, 50, 60}));
    EXPECT_EQ(KnobBox({10, 20, 50, 80}), (CRect{10, 20, 50, 60}));
    EXPECT_EQ(KnobHub({10, 20, 50, 60}), (CRect{20, 30, 40, 50}));
    EXPECT_EQ(ToggleLitRect({10, 20, 50, 60}), (CRect{14, 24, 46, 56}));
    EXPECT_EQ(TestModeBannerRect(TitleStripRect(1024, 4, 10)), (CRect{4, -2, 1012, 22}));
    // From lower left over the top to one step short of lower right.
    const struct {
        int value;
        CPoint to;
    } cases[] = {{0, {9, 41}}, {64, {30, -9}}, {127, {51, 40}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        const KnobPointer pointer = KnobPointerLine(Control(0, 0, 60, 40, c.value), 0, 0);
        EXPECT_EQ(pointer.from, (CPoint{30, 20}));
        EXPECT_EQ(pointer.to, c.to);
    }
    const KnobPointer scrolled = KnobPointerLine(Control(100, 200, 40, 40), 10, 20);
    EXPECT_EQ(scrolled.to, (CPoint{110 - 14, 200 + 14}));
}

TEST(EditGeometry, EdgeZonesLieJustOutsideAControlAndNeverInItsCorners)
{
    OSCPage page;
    AddControl(page, 100, 100, 50, 40);
    AddControl(page, 100, 143, 50, 40);
    const struct {
        CPoint point;
        int edge;  // -1: none
        int control = 0;
    } cases[] = {
        {{120, 99}, kTopEdge},    {{120, 98}, kTopEdge},     {{120, 97}, -1},
        {{120, 140}, -1},         {{120, 141}, kBottomEdge}, {{120, 142}, kBottomEdge},
        {{96, 120}, kLeftEdge},   {{95, 120}, -1},           {{150, 120}, -1},
        {{151, 120}, kRightEdge}, {{154, 120}, kRightEdge},  {{155, 120}, -1},
        {{99, 99}, -1},           {{150, 141}, -1},          {{120, 120}, -1},
        {{149, 99}, kTopEdge},    {{100, 99}, kTopEdge},     {{120, 184}, kBottomEdge, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.point.x << "," << c.point.y);
        OSCControl* control = nullptr;
        int edge = -1;
        EXPECT_EQ(FindEditEdge(page, c.point, &control, &edge), c.edge >= 0);
        EXPECT_EQ(edge, c.edge);
        EXPECT_EQ(control, c.edge >= 0 ? page.controls[c.control].get() : nullptr);
    }
}

TEST(EditGeometry, ResizingKeepsThirtyTwoUnitsASideAndTheTopLeftOnThePage)
{
    const struct {
        int edge, d;
        CRect after;  // x, y, width, height of a control at (10, 10), 40 by 40
    } cases[] = {
        {kBottomEdge, -8, {10, 10, 40, 32}},   {kBottomEdge, -10, {10, 10, 40, 40}},
        {kBottomEdge, 500, {10, 10, 40, 540}}, {kTopEdge, 8, {10, 18, 40, 32}},
        {kTopEdge, 9, {10, 10, 40, 40}},       {kTopEdge, -10, {10, 0, 40, 50}},
        {kTopEdge, -11, {10, 10, 40, 40}},     {kLeftEdge, 8, {18, 10, 32, 40}},
        {kLeftEdge, 9, {10, 10, 40, 40}},      {kLeftEdge, -11, {10, 10, 40, 40}},
        {kRightEdge, -8, {10, 10, 32, 40}},    {kRightEdge, -9, {10, 10, 40, 40}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "edge " << c.edge << " by " << c.d);
        OSCControl control = Control(10, 10, 40, 40);
        const bool changed = ResizeStep(control, c.edge, c.d);
        EXPECT_EQ((CRect{control.x, control.y, control.width, control.height}), c.after);
        EXPECT_EQ(changed, c.after != (CRect{10, 10, 40, 40}));
    }
}

TEST(EditGeometry, StatusTextsShowTheGeometryTheEditWillLeave)
{
    OSCControl vol = Control(100, 200, 40, 60);
    std::strcpy(vol.name, "Vol");
    const struct {
        int resizeEdge;
        bool moving;
        const char* text;
    } cases[] = {
        {kNoResize, false, "Vol: x=100 y=200 w=40, h=60"},
        {kNoResize, true, "Vol: x=105 y=193 w=40, h=60"},
        {ResizeStateOf(kTopEdge), false, "Vol: x=100 y=193 w=40, h=67"},
        {ResizeStateOf(kBottomEdge), false, "Vol: x=100 y=200 w=40, h=53"},
        {ResizeStateOf(kLeftEdge), false, "Vol: x=105 y=200 w=35, h=60"},
        {ResizeStateOf(kRightEdge), false, "Vol: x=100 y=200 w=45, h=60"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(StatusText(vol, {c.resizeEdge, c.moving, {5, -7}}), c.text);
}

}  // namespace
