#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TestControls.h"
#include "TestFiles.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <cstring>
#include <functional>
#include <map>
#include <string>

namespace {

using nlohmann::json;

json EditingCases(const char* rule)
{
    return Cases(DATA_DIR "/editing.json", rule);
}

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
    for (const json& c : EditingCases("screens")) {
        SCOPED_TRACE(c.dump());
        project.device = c["device"];
        project.orientation = c["orientation"];
        EXPECT_EQ(project.GetScreenW(), c["size"][0]);
        EXPECT_EQ(project.GetScreenH(), c["size"][1]);
    }
}

TEST_F(Editing, TheFrontMostControlUnderThePointerIsHitAndRightAndBottomEdgesLieOutside)
{
    AddControl(page(), 10, 20, 20, 20, kLabel, false, "a");
    AddControl(page(), 15, 25, 20, 20, kLabel, false, "b");
    for (const json& c : EditingCases("hits")) {
        SCOPED_TRACE(c.dump());
        const OSCControl* hit = project.GetAt(c["point"][0], c["point"][1]);
        EXPECT_EQ(hit ? hit->name : "", c["hit"]);
    }
}

TEST_F(Editing, ARangeSelectsTheControlsItSharesAPointWith)
{
    AddControl(page(), 10, 10, 20, 20, kLabel, false, "a");
    AddControl(page(), 100, 100, 10, 10, kLabel, false, "b");
    for (const json& c : EditingCases("ranges")) {
        SCOPED_TRACE(c["what"].get<std::string>());
        project.UnselectAll();
        project.SelectRange(c["range"][0], c["range"][1], c["range"][2], c["range"][3]);
        std::vector<OSCControl*> selected;
        project.GetSelectedControls(selected);
        std::string selectedNames;
        for (const OSCControl* control : selected)
            selectedNames += control->name;
        EXPECT_EQ(selectedNames, c["selects"]);
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
    using Move = std::function<void(OSCProject&, int dx, int dy)>;
    const std::map<std::string, Move> moves{
        {"drag", [](OSCProject& p, int dx, int dy) { p.MoveSelected(dx, dy); }},
        {"right", [](OSCProject& p, int dx, int) { p.ShiftRight(dx); }},
        {"down", [](OSCProject& p, int, int dy) { p.ShiftDown(dy); }},
        {"left", [](OSCProject& p, int dx, int) { p.ShiftLeft(-dx); }},
        {"up", [](OSCProject& p, int, int dy) { p.ShiftUp(-dy); }}};
    for (const json& c : EditingCases("moves")) {
        SCOPED_TRACE(c["what"].get<std::string>());
        const CPoint from{c["from"][0], c["from"][1]}, to{c["to"][0], c["to"][1]};
        page().controls.clear();
        OSCControl& control = AddControl(page(), from.x, from.y, 20, 20, kLabel, true);
        OSCControl& companion = AddControl(page(), 150, 200, 20, 20, kLabel, true);
        OSCControl& unselected = AddControl(page(), 150, 200, 20, 20);
        moves.at(c["move"])(project, c["by"][0], c["by"][1]);
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
    for (const json& row : EditingCases("minimumSizes")) {
        SCOPED_TRACE(row.dump());
        const struct {
            int type, w, h, mode, minW, minH;
        } c{row["type"], row["size"][0],    row["size"][1],
            row["mode"], row["minimum"][0], row["minimum"][1]};
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
