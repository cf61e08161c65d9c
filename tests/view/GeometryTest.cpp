// The canvas's arithmetic, against its numbers.
#include "document/ControlTables.h"
#include "document/OSCPage.h"
#include "view/ControlGeometry.h"
#include "view/DeviceContext.h"
#include "view/EditGeometry.h"
#include "view/ScrollGeometry.h"
#include "view/TVornOSCView.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>

namespace {

OSCControl Control(int x, int y, int w, int h, int minValue = 0, int maxValue = 127, int value = 0)
{
    OSCControl c;
    c.x = static_cast<std::int16_t>(x);
    c.y = static_cast<std::int16_t>(y);
    c.width = static_cast<std::int16_t>(w);
    c.height = static_cast<std::int16_t>(h);
    c.minValue = minValue;
    c.maxValue = maxValue;
    c.value = value;
    return c;
}

TEST(ScrollGeometry, StepsStopAtTheEndsButTheThumbGoesWhereItIsPut)
{
    const struct {
        int code, thumb, position, max;
        std::optional<int> step;
    } cases[] = {
        {kLineForward, 0, 0, 100, 16},
        {kLineForward, 0, 90, 100, 10},
        {kLineForward, 0, 100, 100, std::nullopt},
        {kPageForward, 0, 0, 100, 60},
        {kPageForward, 0, 50, 100, 50},
        {kPageForward, 0, 100, 100, 0},
        {kLineBack, 0, 20, 100, -16},
        {kLineBack, 0, 5, 100, -5},
        {kLineBack, 0, 0, 100, std::nullopt},
        {kPageBack, 0, 70, 100, -60},
        {kPageBack, 0, 50, 100, -50},
        {kThumbTrack, 150, 10, 100, 140},
        {kThumbPosition, -5, 10, 100, -15},
        {8, 50, 10, 100, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "code " << c.code << " at " << c.position);
        EXPECT_EQ(ScrollStep(c.code, c.thumb, c.position, c.max, 60), c.step);
    }
}

TEST(ScrollGeometry, APositionPastTheNewRangeComesBackAndAFittingScreenGoesToZero)
{
    const struct {
        int position, client, margin;
        ScrollAxis expected;
    } cases[] = {
        {200, 900, 16, {124, 124, -76}},                                // grown while at the end
        {100, 900, 16, {100, 124, 0}},   {50, 1008, 16, {0, 16, -50}},  // within the margin: the
                                                                        // screen counts as fitting
        {50, 1007, 16, {17, 17, -33}},   {50, 1100, 16, {0, 0, -50}},  {0, 1100, 16, {0, 0, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "position " << c.position << ", client " << c.client);
        const ScrollAxis axis =
            FitScrollAxis(static_cast<std::int16_t>(c.position), 1024, c.client, c.margin);
        EXPECT_EQ(axis.position, c.expected.position);
        EXPECT_EQ(axis.max, c.expected.max);
        EXPECT_EQ(axis.shift, c.expected.shift);
    }
}

TEST(ControlGeometry, ScaledColoursDivideEachChannel)
{
    EXPECT_EQ(TVornOSCView::GetScaledColor(8, 1), 0x009314FFu);  // pink
    EXPECT_EQ(TVornOSCView::GetScaledColor(8, 2), 0x00490A7Fu);
    EXPECT_EQ(TVornOSCView::GetScaledColor(8, 8), 0x0012021Fu);
    EXPECT_EQ(TVornOSCView::GetScaledColor(200, 4), TVornOSCView::GetScaledColor(kGray, 4));
}

TEST(ControlGeometry, FaderLevelsGrowFromTheCapInProportionToTheValue)
{
    const CRect tall{10, 50, 50, 250};
    const CRect wide{10, 50, 210, 90};
    const struct {
        const char* name;
        CRect control;
        int minValue, maxValue, value;
        bool testMode;
        CRect level;
    } cases[] = {
        {"vertical at the top of its range", tall, 0, 127, 127, true, {10, 50, 50, 250}},
        {"vertical at 0 shows the cap", tall, 0, 127, 0, true, {10, 234, 50, 250}},
        {"vertical half way", tall, 0, 100, 50, true, {10, 142, 50, 250}},
        {"out of test mode only the cap", tall, 0, 127, 127, false, {10, 234, 50, 250}},
        {"the value itself, not its distance from the minimum",
         tall,
         100,
         200,
         50,
         true,
         {10, 142, 50, 250}},
        {"an empty range divides by 1", tall, 5, 5, 1, true, {10, 50, 50, 250}},
        {"horizontal", wide, 0, 100, 50, true, {10, 50, 118, 90}},
        {"square is horizontal", {0, 40, 40, 80}, 0, 127, 0, true, {0, 40, 16, 80}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(FaderLevelRect(c.control, c.minValue, c.maxValue, c.value, c.testMode), c.level);
    }
}

TEST(ControlGeometry, KnobsDrawTheirTopLeftSquareWithAQuarterHub)
{
    EXPECT_EQ(KnobBox({10, 20, 70, 60}), (CRect{10, 20, 50, 60}));
    EXPECT_EQ(KnobBox({10, 20, 50, 80}), (CRect{10, 20, 50, 60}));
    EXPECT_EQ(KnobHub({10, 20, 50, 60}), (CRect{20, 30, 40, 50}));
    EXPECT_EQ(ToggleLitRect({10, 20, 50, 60}), (CRect{14, 24, 46, 56}));
    EXPECT_EQ(NameTextRect({10, 20, 50, 60}), (CRect{12, 22, 48, 58}));
    EXPECT_EQ(TestModeBannerRect(TitleStripRect(1024, 4, 10)), (CRect{4, -2, 1012, 22}));
}

TEST(ControlGeometry, AKnobPointerSweepsFromLowerLeftOverTheTopFromTheWholeRectanglesCentre)
{
    const struct {
        int value;
        CPoint to;
    } cases[] = {{0, {9, 41}}, {64, {30, -9}}, {127, {51, 40}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        const KnobPointer pointer = KnobPointerLine(Control(0, 0, 60, 40, 0, 127, c.value), 0, 0);
        EXPECT_EQ(pointer.from, (CPoint{30, 20}));
        EXPECT_EQ(pointer.to, c.to);
    }
    const KnobPointer scrolled = KnobPointerLine(Control(100, 200, 40, 40), 10, 20);
    EXPECT_EQ(scrolled.from, (CPoint{110, 200}));
    EXPECT_EQ(scrolled.to, (CPoint{110 - 14, 200 + 14}));
}

TEST(EditGeometry, EdgeZonesLieJustOutsideAControlAndNeverInItsCorners)
{
    OSCPage page;
    page.controls.clear();
    page.controls.push_back(std::make_unique<OSCControl>(Control(100, 100, 50, 40)));
    page.controls.push_back(std::make_unique<OSCControl>(Control(100, 143, 50, 40)));
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
        if (c.edge >= 0) {
            EXPECT_EQ(control, page.controls[c.control].get());
        }
    }
}

TEST(EditGeometry, ResizingKeepsThirtyTwoUnitsASideAndTheTopLeftOnThePage)
{
    const struct {
        const char* name;
        int edge, d;
        bool changed;
        CRect after;  // x, y, width, height
    } cases[] = {
        {"bottom shrinks to 32", kBottomEdge, -8, true, {10, 10, 40, 32}},
        {"bottom not below 32", kBottomEdge, -10, false, {10, 10, 40, 40}},
        {"bottom grows", kBottomEdge, 500, true, {10, 10, 40, 540}},
        {"top shrinks to 32", kTopEdge, 8, true, {10, 18, 40, 32}},
        {"top not below 32", kTopEdge, 9, false, {10, 10, 40, 40}},
        {"top up to 0", kTopEdge, -10, true, {10, 0, 40, 50}},
        {"top not above 0", kTopEdge, -11, false, {10, 10, 40, 40}},
        {"left shrinks to 32", kLeftEdge, 8, true, {18, 10, 32, 40}},
        {"left not below 32", kLeftEdge, 9, false, {10, 10, 40, 40}},
        {"left not past 0", kLeftEdge, -11, false, {10, 10, 40, 40}},
        {"right shrinks to 32", kRightEdge, -8, true, {10, 10, 32, 40}},
        {"right not below 32", kRightEdge, -9, false, {10, 10, 40, 40}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        OSCControl control = Control(10, 10, 40, 40);
        EXPECT_EQ(ResizeStep(control, c.edge, c.d), c.changed);
        EXPECT_EQ((CRect{control.x, control.y, control.width, control.height}), c.after);
    }
    OSCControl knob = Control(10, 10, 40, 40);
    knob.type = kKnob;
    ResizeStep(knob, kRightEdge, 20);
    KeepKnobSquare(knob, kRightEdge);
    EXPECT_EQ(knob.height, 60);
    ResizeStep(knob, kTopEdge, 10);
    KeepKnobSquare(knob, kTopEdge);
    EXPECT_EQ(knob.width, 50);
}

TEST(EditGeometry, StatusTextsShowTheGeometryTheEditWillLeave)
{
    OSCControl vol = Control(100, 200, 40, 60);
    std::strcpy(vol.name, "Vol");
    const CPoint offset{5, -7};
    const struct {
        EditState state;
        const char* text;
    } cases[] = {
        {{kNoResize, false, offset}, "Vol: x=100 y=200 w=40, h=60"},
        {{kNoResize, true, offset}, "Vol: x=105 y=193 w=40, h=60"},
        {{ResizeStateOf(kTopEdge), false, offset}, "Vol: x=100 y=193 w=40, h=67"},
        {{ResizeStateOf(kBottomEdge), false, offset}, "Vol: x=100 y=200 w=40, h=53"},
        {{ResizeStateOf(kLeftEdge), false, offset}, "Vol: x=105 y=200 w=35, h=60"},
        {{ResizeStateOf(kRightEdge), false, offset}, "Vol: x=100 y=200 w=45, h=60"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(StatusText(vol, row.state), row.text);
}

TEST(DeviceContext, LabelsAreCentredUnwrappedAndNamesWrapFromTheTopLeft)
{
    EXPECT_EQ(QtTextFlags(0x149),
              Qt::AlignHCenter | Qt::AlignTop | int{Qt::TextExpandTabs} | Qt::TextDontClip);
    EXPECT_EQ(QtTextFlags(0x318),
              Qt::AlignLeft | Qt::AlignTop | int{Qt::TextWordWrap} | Qt::TextDontClip);
    EXPECT_EQ(QtTextFlags(kTextSingleLine | kTextBottom | kTextRight),
              Qt::AlignRight | Qt::AlignBottom | int{Qt::TextSingleLine});
}

}  // namespace
