#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TestControls.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>

namespace {

// A project on an iPhone held upright, 320 by 480.
struct Editing : testing::Test {
    OSCProject project;
    FakeHost host;

    void SetUp() override
    {
        Toolkit().Reset();
        project.device = kIPhone;
        project.orientation = kVertical;
    }

    OSCPage& page() { return *project.CurrentPage(); }

    std::string Order()
    {
        std::string order;
        for (const auto& control : page().controls)
            order += control->name;
        return order;
    }

    void ExpectAsked(const char* text, const char* caption)
    {
        ASSERT_EQ(Toolkit().messageBoxes.size(), 1u);
        EXPECT_EQ(Toolkit().messageBoxes[0].text, text);
        EXPECT_EQ(Toolkit().messageBoxes[0].caption, caption);
        EXPECT_EQ(Toolkit().messageBoxes[0].style, toolkit::kYesNo);
    }
};

}  // namespace

TEST_F(Editing, ScreenSizeFollowsDeviceAndOrientationAndSurvivesDamagedBytes)
{
    const int cases[][4] = {{kIPhone, kVertical, 320, 480},
                            {kIPad, kVertical, 768, 1024},
                            {kIPhone, kHorizontal, 480, 320},
                            {kIPad, kHorizontal, 1024, 768},
                            {200, 255, 1024, 768}};
    for (const auto& [device, orientation, w, h] : cases) {
        SCOPED_TRACE(testing::Message() << "device " << device << ", orientation " << orientation);
        project.device = static_cast<std::uint8_t>(device);
        project.orientation = static_cast<std::uint8_t>(orientation);
        EXPECT_EQ(project.GetScreenW(), w);
        EXPECT_EQ(project.GetScreenH(), h);
    }
}

TEST_F(Editing, TheFrontMostControlUnderThePointerIsHitAndRightAndBottomEdgesLieOutside)
{
    AddControl(page(), 10, 20, 20, 20, kLabel, false, "a");
    AddControl(page(), 15, 25, 20, 20, kLabel, false, "b");
    const std::pair<CPoint, const char*> cases[] = {
        {{9, 25}, ""},   {{10, 25}, "a"}, {{29, 25}, "a"}, {{30, 25}, "b"},
        {{34, 25}, "b"}, {{35, 25}, ""},  {{12, 19}, ""},  {{12, 20}, "a"},
        {{12, 39}, "a"}, {{12, 40}, ""},  {{20, 44}, "b"}, {{20, 45}, ""},
    };
    for (const auto& [point, name] : cases) {
        SCOPED_TRACE(testing::Message() << point.x << "," << point.y);
        const OSCControl* hit = project.GetAt(point.x, point.y);
        EXPECT_STREQ(hit ? hit->name : "", name);
    }
}

TEST_F(Editing, ARangeSelectsTheControlsItSharesAPointWith)
{
    AddControl(page(), 10, 10, 20, 20, kLabel, false, "a");
    AddControl(page(), 100, 100, 10, 10, kLabel, false, "b");
    const std::tuple<CRect, const char*> cases[] = {
        {{110, 110, 40, 40}, "b"},  // reversed corners are normalised
        {{0, 0, 10, 10}, ""},       // touching an edge is not sharing a point
        {{15, 0, 15, 100}, ""},     // nor is a range without width
        {{0, 0, 11, 11}, "a"},     {{-5, -5, 500, 500}, "ab"},
    };
    for (const auto& [range, names] : cases) {
        SCOPED_TRACE(names);
        project.UnselectAll();
        project.SelectRange(range.left, range.top, range.right, range.bottom);
        std::vector<OSCControl*> selected;
        project.GetSelectedControls(selected);
        std::string selectedNames;
        for (const OSCControl* control : selected)
            selectedNames += control->name;
        EXPECT_EQ(selectedNames, names);
        EXPECT_EQ(project.GetNumSelected(), static_cast<int>(selectedNames.size()));
    }
    project.SelectAll();
    EXPECT_EQ(project.GetNumSelected(), 2);
    EXPECT_EQ(project.GetNumControls(), 2);
}

// A drag keeps each selected control's corner on the screen; the arrow keys
// keep the whole control. A second selected control moves along, or not.
TEST_F(Editing, MovesStopAtTheScreenEdgeForTheWholeSelection)
{
    using Move = std::function<void(OSCProject&)>;
    const auto drag = [](int dx, int dy) -> Move {
        return [=](OSCProject& p) { p.MoveSelected(dx, dy); };
    };
    const Move right = [](OSCProject& p) { p.ShiftRight(2); };
    const Move down = [](OSCProject& p) { p.ShiftDown(2); };
    const Move left = [](OSCProject& p) { p.ShiftLeft(2); };
    const Move up = [](OSCProject& p) { p.ShiftUp(2); };
    const std::tuple<const char*, Move, CPoint, CPoint> cases[] = {
        {"drag right", drag(18, 0), {300, 100}, {318, 100}},
        {"drag too far right", drag(19, 0), {300, 100}, {300, 100}},
        {"drag down", drag(0, 8), {300, 470}, {300, 478}},
        {"drag too far down", drag(0, 9), {300, 470}, {300, 470}},
        {"drag left", drag(-2, 0), {2, 100}, {0, 100}},
        {"drag too far left", drag(-3, 0), {2, 100}, {2, 100}},
        {"drag up", drag(0, -2), {2, 2}, {2, 0}},
        {"drag too far up", drag(0, -3), {2, 2}, {2, 2}},
        {"shift right", right, {298, 100}, {300, 100}},
        {"shift too far right", right, {299, 100}, {299, 100}},
        {"shift down", down, {0, 458}, {0, 460}},
        {"shift too far down", down, {0, 459}, {0, 459}},
        {"shift left", left, {2, 100}, {0, 100}},
        {"shift too far left", left, {1, 100}, {1, 100}},
        {"shift up", up, {100, 2}, {100, 0}},
        {"shift too far up", up, {100, 1}, {100, 1}},
    };
    for (const auto& [what, move, from, to] : cases) {
        SCOPED_TRACE(what);
        page().controls.clear();
        OSCControl& control = AddControl(page(), from.x, from.y, 20, 20, kLabel, true);
        OSCControl& companion = AddControl(page(), 150, 200, 20, 20, kLabel, true);
        OSCControl& unselected = AddControl(page(), 150, 200, 20, 20);
        move(project);
        EXPECT_EQ(control.Rect().TopLeft(), to);
        EXPECT_EQ(companion.Rect().TopLeft(), (CPoint{150 + to.x - from.x, 200 + to.y - from.y}));
        EXPECT_EQ(unselected.Rect().TopLeft(), (CPoint{150, 200}));
    }
}

// Growing is all or nothing and stops at the screen edge; shrinking stops each
// control at its own minimum, which the host's size limit mode picks. A knob
// keeps equal sides.
TEST_F(Editing, ResizingKeepsEachControlBetweenItsMinimumAndTheScreenEdge)
{
    struct Case {
        int type, w, h, mode;
        int minW, minH;
    };
    const Case cases[] = {
        {kLabel, 100, 100, 0, 20, 20},  {kLabel, 100, 100, 1, 50, 20},
        {kFader, 100, 300, 0, 20, 20},  {kFader, 100, 300, 1, 48, 200},
        {kFader, 300, 100, 1, 200, 44}, {kFader, 250, 250, 1, 48, 200},  // square is upright
        {kKnob, 100, 100, 0, 50, 50},   {kKnob, 100, 100, 1, 48, 48},
        {kToggle, 100, 100, 1, 15, 15}, {kPushButton, 100, 100, 0, 15, 15},
        {7, 100, 100, 0, 100, 100},  // other types never shrink
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << ControlTypes[c.type % kControlTypeCount] << " type " << c.type << " mode "
                     << c.mode << " " << c.w << "x" << c.h);
        page().controls.clear();
        host.sizeLimitMode = c.mode;
        OSCControl& control = AddControl(page(), 0, 50, c.w, c.h, c.type, true);
        const bool knob = c.type == kKnob;
        project.ResizeW(c.minW - c.w - 1, &host);
        EXPECT_EQ(control.width, c.w);
        project.ResizeW(c.minW - c.w, &host);
        EXPECT_EQ(control.width, c.minW);
        EXPECT_EQ(control.height, knob ? c.minW : c.h);

        std::tie(control.width, control.height) = std::make_tuple(c.w, c.h);
        project.ResizeH(c.minH - c.h - 1, &host);
        EXPECT_EQ(control.height, c.h);
        project.ResizeH(c.minH - c.h, &host);
        EXPECT_EQ(control.height, c.minH);
        EXPECT_EQ(control.width, knob ? c.minH : c.w);
    }

    page().controls.clear();
    OSCControl& knob = AddControl(page(), 0, 100, 60, 60, kKnob, true);
    OSCControl& label = AddControl(page(), 100, 400, 219, 79, kLabel, true);
    AddControl(page(), 0, 0, 10, 10, kLabel, false);
    project.ResizeW(1, &host);
    project.ResizeH(1, &host);
    EXPECT_EQ(knob.Rect(), (CRect{0, 100, 62, 162}));
    EXPECT_EQ(label.Rect(), (CRect{100, 400, 320, 480}));
    project.ResizeW(1, &host);  // the label would pass the right edge
    project.ResizeH(1, &host);  // and the bottom edge
    EXPECT_EQ(knob.Rect(), (CRect{0, 100, 62, 162}));
    EXPECT_EQ(page().controls[2]->Rect(), (CRect{0, 0, 10, 10}));
}

// Each selected control jumps to the front (or back) in turn.
TEST_F(Editing, StackingAndColourChangeOnlyTheSelectedControls)
{
    for (const char* name : {"a", "b", "c", "d"})
        AddControl(page(), 0, 50, 10, 10, kLabel, *name == 'a' || *name == 'c', name);
    project.ToFront();
    EXPECT_EQ(Order(), "cabd");
    project.ToBack();
    EXPECT_EQ(Order(), "bdac");
    project.SetColor(8);
    for (const auto& control : page().controls)
        EXPECT_EQ(control->color, control->selected ? 8 : 0) << control->name;
}

TEST_F(Editing, ClearAsksAndDeletesTheSelectedControlsOnlyOnYes)
{
    for (const char* name : {"a", "b", "c"})
        AddControl(page(), 0, 50, 10, 10, kLabel, *name != 'b', name);
    project.Clear();  // the fake answers No
    EXPECT_EQ(Order(), "abc");
    ExpectAsked(
        "Are you sure you want to remove the selected controls?\n\n"
        "(This operation can't be undone.)",
        "OSC Editor");
    Toolkit().answers.push_back(toolkit::kAnswerYes);
    project.Clear();
    EXPECT_EQ(Order(), "b");
}

TEST_F(Editing, AnAddedPageBecomesCurrentAndRemovingAsksAndKeepsTheLastPage)
{
    project.RemovePage();
    EXPECT_TRUE(Toolkit().messageBoxes.empty());
    project.SetPageName("one");
    for (const char* name : {"two", "three"}) {
        const OSCPage* added = project.AddPage();
        EXPECT_EQ(added, project.pages.back().get());
        EXPECT_EQ(project.CurrentPage(), added);
        project.SetPageName(name);
    }
    project.RemovePage();  // answered No
    EXPECT_EQ(project.pages.size(), 3u);
    ExpectAsked(
        "Are you sure you want to remove the current page and associated controls?\n\n"
        "(This operation can't be undone.)",
        "OSC Editor");

    Toolkit().answers = {toolkit::kAnswerYes, toolkit::kAnswerYes};
    project.RemovePage();  // the last of three: the one before becomes current
    EXPECT_EQ(project.currentPage, 1);
    EXPECT_STREQ(page().name, "two");
    project.currentPage = 0;
    project.RemovePage();  // the page that followed becomes current
    ASSERT_EQ(project.pages.size(), 1u);
    EXPECT_EQ(project.currentPage, 0);
    EXPECT_STREQ(page().name, "two");
}

// Case-sensitive, the first occurrence in each chosen field, on every page,
// cut to the field.
TEST_F(Editing, SearchAndReplaceChangesTheFirstOccurrenceInTheChosenFieldsOfEveryPage)
{
    std::strcpy(AddControl(page(), 0, 50, 10, 10, kLabel, false, "CtlCtl").command, "/ID1/Ctl1");
    project.AddPage();
    std::memset(AddControl(page(), 0, 50, 10, 10).name, 'x', 200);
    std::strcpy(page().controls[0]->command, "/ID2/Ctl2");

    project.SearchAndReplace("ctl", "C", true, true);
    project.SearchAndReplace("Ctl", "C", false, true);
    project.SearchAndReplace("x", std::string(100, 'y'), true, false);
    project.SearchAndReplace("/", "", false, false);
    EXPECT_STREQ(project.pages[0]->controls[0]->name, "CtlCtl");
    EXPECT_STREQ(project.pages[0]->controls[0]->command, "/ID1/C1");
    EXPECT_STREQ(project.pages[1]->controls[0]->command, "/ID2/C2");
    EXPECT_EQ(std::string(project.pages[1]->controls[0]->name),
              std::string(100, 'y') + std::string(155, 'x'));
}
