// The canvas's arithmetic, against its numbers.
#include "CanvasFixture.h"
#include "document/OSCPage.h"
#include "tests/support/TestControls.h"
#include "view/ControlGeometry.h"
#include "view/EditGeometry.h"

#include <algorithm>

namespace {

OSCControl Control(const json& ltrb, int value = 0)
{
    OSCPage page;
    const CRect r = RectOf(ltrb);
    OSCControl c = AddControl(page, r.left, r.top, r.Width(), r.Height(), 0, false, "Vol");
    c.value = value;
    return c;
}

// The index of name in names: an edge or a scroll code by its name.
int Named(const json& name, const std::vector<std::string>& names)
{
    return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
}

const std::vector<std::string> kEdges = {"top", "bottom", "left", "right"};

TEST(ScrollGeometry, StepsStopAtTheEndsButTheThumbGoesWhereItIsPut)
{
    const std::vector<std::string> codes = {"line forward", "page forward",   "line back",
                                            "page back",    "thumb position", "thumb track"};
    for (const json& c : CanvasCases("scrollSteps")) {  // on a range of 0 to 100, 60 to a page
        const std::optional<int> step =
            ScrollStep(Named(c["code"], codes), c.value("thumb", 0), c["position"], 100, 60);
        EXPECT_EQ(step ? json(*step) : json(), c["step"]) << c;
    }
}

TEST(ControlGeometry, FaderLevelsGrowFromTheCapByTheValueItself)
{
    for (const json& c : CanvasCases("faderLevels")) {
        const CRect level = FaderLevelRect(RectOf(c["control"]), c["range"][0], c["range"][1],
                                           c["value"], c.value("testMode", true));
        EXPECT_EQ(Json(level), c["level"]) << c["what"];
    }
}

TEST(ControlGeometry, KnobsDrawTheirTopLeftSquareAndPointFromTheWholeRectanglesCentre)
{
    EXPECT_EQ(Json(KnobBox({10, 20, 70, 60})), json({10, 20, 50, 60}));
    EXPECT_EQ(Json(KnobBox({10, 20, 50, 80})), json({10, 20, 50, 60}));
    EXPECT_EQ(Json(KnobHub({10, 20, 50, 60})), json({20, 30, 40, 50}));
    for (const json& c : CanvasCases("knobPointers")) {
        const json scroll = c.value("scroll", json({0, 0}));
        const KnobPointer line =
            KnobPointerLine(Control(c["control"], c["value"]), scroll[0], scroll[1]);
        EXPECT_EQ(json({line.from.x, line.from.y, line.to.x, line.to.y}),
                  json({c["from"][0], c["from"][1], c["to"][0], c["to"][1]}))
            << c["what"];
    }
}

TEST(ControlGeometry, TheTitleStripScrollsWithThePageAndColoursDivideEachChannel)
{
    EXPECT_EQ(Json(TestModeBannerRect(TitleStripRect(1024, 4, 10))), json({4, -2, 1012, 22}));
    EXPECT_EQ(TVornOSCView::GetScaledColor(8, 2), 0x00490A7Fu);  // pink
}

TEST(EditGeometry, EdgeZonesLieJustOutsideAControlAndNeverInItsCorners)
{
    OSCPage page;
    AddControl(page, 100, 100, 50, 40);
    AddControl(page, 100, 143, 50, 40);
    for (const json& c : CanvasCases("editEdges")) {
        OSCControl* control = nullptr;
        int edge = -1;
        const bool found = FindEditEdge(page, {c["point"][0], c["point"][1]}, &control, &edge);
        EXPECT_EQ(found, c.contains("edge")) << c;
        EXPECT_EQ(edge, found ? Named(c["edge"], kEdges) : -1) << c;
        EXPECT_EQ(control, found ? page.controls[c["control"]].get() : nullptr) << c;
    }
}

TEST(EditGeometry, ResizingKeepsThirtyTwoUnitsASideAndTheTopLeftOnThePage)
{
    for (const json& c : CanvasCases("resizeSteps")) {  // a control at (10, 10), 40 by 40
        OSCControl control = Control({10, 10, 50, 50});
        const bool changed = ResizeStep(control, Named(c["edge"], kEdges), c["by"]);
        EXPECT_EQ(Json(control.Rect()), c["after"]) << c;
        EXPECT_EQ(changed, c["after"] != json({10, 10, 50, 50})) << c;
    }
}

TEST(EditGeometry, StatusTextsShowTheGeometryTheEditWillLeave)
{
    const OSCControl vol = Control({100, 200, 140, 260});
    for (const json& c : CanvasCases("statusTexts")) {
        const int resizing =
            c.contains("resizing") ? ResizeStateOf(Named(c["resizing"], kEdges)) : kNoResize;
        EXPECT_EQ(StatusText(vol, {resizing, c.value("moving", false), {5, -7}}), c["text"]);
    }
}

}  // namespace
