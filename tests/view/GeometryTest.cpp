// The canvas's arithmetic against its numbers: each rule of data/canvas.json
// names the function it checks and lists its cases.
#include "tests/view/QtTestSupport.h"
#include "view/ControlGeometry.h"
#include "view/EditGeometry.h"
#include "view/ScrollGeometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>

namespace {

const std::vector<std::string> kEdges = {"top", "bottom", "left", "right"};
const std::vector<std::string> kScrollCodes = {"line forward", "page forward",   "line back",
                                               "page back",    "thumb position", "thumb track"};

// The index of name in names: an edge or a scroll code by its name.
int Named(const json& name, const std::vector<std::string>& names)
{
    return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
}

// A page with a control named Vol on [l, t, r, b] holding value, and another.
OSCPage Page(const json& ltrb, int value = 0, const json& second = {100, 143, 150, 183})
{
    OSCPage page;
    for (const CRect r : {RectOf(ltrb), RectOf(second)})
        AddControl(page, {{"at", {r.left, r.top, r.Width(), r.Height()}}, {"name", "Vol"}});
    page.controls[0]->value = value;
    return page;
}

const std::map<std::string, std::function<json(const json&)>> kFunctions = {
    {"ScrollStep",  // on a range of 0 to 100, 60 to a page
     [](const json& c) {
         const auto step = ScrollStep(Named(c["code"], kScrollCodes), c.value("thumb", 0),
                                      c["position"], 100, 60);
         return step ? json(*step) : json();
     }},
    {"FaderLevelRect",
     [](const json& c) {
         return Json(FaderLevelRect(RectOf(c["control"]), c["range"][0], c["range"][1], c["value"],
                                    c.value("testMode", true)));
     }},
    {"KnobPointerLine",
     [](const json& c) {
         const json scroll = c.value("scroll", json({0, 0}));
         const KnobPointer line =
             KnobPointerLine(*Page(c["control"], c["value"]).controls[0], scroll[0], scroll[1]);
         return json({line.from.x, line.from.y, line.to.x, line.to.y});
     }},
    {"FindEditEdge",  // on a control at (100, 100), 50 by 40, and one 3 units below it
     [](const json& c) {
         const OSCPage page = Page({100, 100, 150, 140});
         OSCControl* control = nullptr;
         int edge = -1;
         const bool found = FindEditEdge(page, {c["point"][0], c["point"][1]}, &control, &edge);
         const json index = control == page.controls[0].get()   ? json(0)
                            : control == page.controls[1].get() ? json(1)
                                                                : json();
         return json({found, index, edge != -1 ? json(kEdges.at(edge)) : json()});
     }},
    {"ResizeStep",  // a control at (10, 10), 40 by 40
     [](const json& c) {
         OSCPage page = Page({10, 10, 50, 50});
         OSCControl& control = *page.controls[0];
         const bool changed = ResizeStep(control, Named(c["edge"], kEdges), c["by"]);
         return json({Json(control.Rect()), changed});
     }},
    {"StatusText",  // a control at (100, 200), 40 by 60, and an offset of (5, -7)
     [](const json& c) {
         const int resizing =
             c.contains("resizing") ? ResizeStateOf(Named(c["resizing"], kEdges)) : kNoResize;
         return StatusText(*Page({100, 200, 140, 260}).controls[0],
                           {resizing, c.value("moving", false), {5, -7}});
     }},
};

const json kRules = Cases(DATA_DIR "/canvas.json", "geometry");

class Geometry : public ::testing::TestWithParam<std::size_t> {};

TEST_P(Geometry, GivesEachCaseItsResult)
{
    const json& rule = kRules[GetParam()];
    for (const json& c : rule["cases"])
        EXPECT_EQ(kFunctions.at(rule["function"])(c), c["result"]) << c;
}

INSTANTIATE_TEST_SUITE_P(Canvas, Geometry, ::testing::Range<std::size_t>(0, kRules.size()),
                         [](const auto& info) {
                             return kRules[info.param]["rule"].template get<std::string>();
                         });

}  // namespace
