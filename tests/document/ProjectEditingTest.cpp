#include "FakeHost.h"
#include "FakeToolkit.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"

#include <gtest/gtest.h>

#include <cstring>
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

    OSCPage& page() { return *project.pages[0]; }

    OSCControl& Add(int x, int y, int w, int h, int type = kLabel, bool selected = true)
    {
        auto control = std::make_unique<OSCControl>();
        control->x = static_cast<std::int16_t>(x);
        control->y = static_cast<std::int16_t>(y);
        control->width = static_cast<std::int16_t>(w);
        control->height = static_cast<std::int16_t>(h);
        control->type = static_cast<std::uint8_t>(type);
        control->selected = selected;
        page().controls.push_back(std::move(control));
        return *page().controls.back();
    }

    std::string Order()
    {
        std::string order;
        for (const auto& control : page().controls)
            order += control->name;
        return order;
    }
};

}  // namespace

TEST_F(Editing, NewProjectIsOneLandscapeIPadPage)
{
    const OSCProject fresh;
    EXPECT_EQ(fresh.device, kIPad);
    EXPECT_EQ(fresh.orientation, kHorizontal);
    ASSERT_EQ(fresh.pages.size(), 1u);
    EXPECT_STREQ(fresh.pages[0]->name, "Page 1");
    EXPECT_EQ(fresh.currentPage, 0);
    EXPECT_EQ(fresh.GetScreenW(), 1024);
    EXPECT_EQ(fresh.GetScreenH(), 768);
}

TEST_F(Editing, ScreenSizeFollowsDeviceAndOrientationAndSurvivesDamagedBytes)
{
    const int expected[4][2] = {{320, 480}, {768, 1024}, {480, 320}, {1024, 768}};
    for (int orientation = 0; orientation < 2; ++orientation) {
        for (int device = 0; device < 2; ++device) {
            project.device = static_cast<std::uint8_t>(device);
            project.orientation = static_cast<std::uint8_t>(orientation);
            EXPECT_EQ(project.GetScreenW(), expected[device + 2 * orientation][0]);
            EXPECT_EQ(project.GetScreenH(), expected[device + 2 * orientation][1]);
        }
    }
    project.device = 200;
    project.orientation = 255;
    EXPECT_EQ(project.GetScreenW(), 1024);
}

TEST_F(Editing, SelectionAndHitTesting)
{
    Add(10, 10, 20, 20, kLabel, false);
    Add(20, 20, 20, 20, kLabel, false);
    Add(100, 100, 10, 10, kLabel, false);

    EXPECT_EQ(project.GetAt(25, 25), page().controls[0].get());  // the front-most wins
    EXPECT_EQ(project.GetAt(35, 35), page().controls[1].get());
    EXPECT_EQ(project.GetAt(40, 40), nullptr);  // right and bottom edges lie outside
    EXPECT_EQ(project.GetAt(9, 15), nullptr);

    project.SelectRange(110, 110, 40, 40);  // reversed corners are normalised
    EXPECT_EQ(project.GetNumSelected(), 1);
    EXPECT_TRUE(page().controls[2]->selected);
    project.SelectRange(0, 0, 10, 10);  // touching an edge selects nothing, unselects nothing
    EXPECT_EQ(project.GetNumSelected(), 1);
    project.SelectRange(15, 0, 15, 100);  // zero width selects nothing
    EXPECT_EQ(project.GetNumSelected(), 1);
    project.SelectRange(0, 0, 11, 11);
    EXPECT_EQ(project.GetNumSelected(), 2);

    std::vector<OSCControl*> selected;
    project.GetSelectedControls(selected);
    ASSERT_EQ(selected.size(), 2u);
    EXPECT_EQ(selected[0], page().controls[0].get());
    EXPECT_EQ(selected[1], page().controls[2].get());

    project.SelectAll();
    EXPECT_EQ(project.GetNumSelected(), 3);
    project.UnselectAll();
    EXPECT_EQ(project.GetNumSelected(), 0);
    EXPECT_EQ(project.GetNumControls(), 3);
}

TEST_F(Editing, DragKeepsOnlyTheCornerOnScreen)
{
    OSCControl& control = Add(300, 100, 20, 20);
    project.MoveSelected(18, 0);
    EXPECT_EQ(control.x, 318);
    project.MoveSelected(1, 0);
    EXPECT_EQ(control.x, 318);
    project.MoveSelected(0, 378);
    EXPECT_EQ(control.y, 478);
    project.MoveSelected(-319, 0);
    EXPECT_EQ(control.x, 318);
}

TEST_F(Editing, DragIsAllOrNothing)
{
    OSCControl& left = Add(5, 100, 20, 20);
    OSCControl& right = Add(200, 100, 20, 20);
    OSCControl& unselected = Add(0, 0, 20, 20, kLabel, false);
    project.MoveSelected(-6, 1);
    EXPECT_EQ(left.x, 5);
    EXPECT_EQ(right.x, 200);
    project.MoveSelected(-5, 1);
    EXPECT_EQ(left.x, 0);
    EXPECT_EQ(right.x, 195);
    EXPECT_EQ(left.y, 101);
    EXPECT_EQ(unselected.Rect(), (CRect{0, 0, 20, 20}));
}

TEST_F(Editing, ArrowShiftsKeepTheWholeControlOnScreen)
{
    OSCControl& control = Add(300, 0, 20, 20);
    project.ShiftRight(1);
    EXPECT_EQ(control.x, 300);
    project.ShiftUp(1);
    EXPECT_EQ(control.y, 0);
    project.ShiftLeft(1);
    EXPECT_EQ(control.x, 299);
    project.ShiftRight(1);
    EXPECT_EQ(control.x, 300);
    control.y = 459;
    project.ShiftDown(1);
    EXPECT_EQ(control.y, 460);
    project.ShiftDown(1);
    EXPECT_EQ(control.y, 460);
    project.ShiftUp(1);
    EXPECT_EQ(control.y, 459);
}

TEST_F(Editing, ShiftIsAllOrNothing)
{
    OSCControl& atEdge = Add(0, 50, 20, 20);
    OSCControl& inside = Add(50, 50, 20, 20);
    project.ShiftLeft(1);
    EXPECT_EQ(atEdge.x, 0);
    EXPECT_EQ(inside.x, 50);
}

TEST_F(Editing, NothingSelectedChangesNothing)
{
    OSCControl& a = Add(10, 10, 30, 30, kKnob, false);
    OSCControl& b = Add(50, 50, 30, 30, kToggle, false);
    a.name[0] = 'a';
    b.name[0] = 'b';
    project.MoveSelected(5, 5);
    project.ShiftLeft(1);
    project.ShiftRight(1);
    project.ShiftUp(1);
    project.ShiftDown(1);
    project.ResizeW(5, &host);
    project.ResizeH(-5, &host);
    project.ToFront();
    project.ToBack();
    project.SetColor(3);
    EXPECT_EQ(a.Rect(), (CRect{10, 10, 40, 40}));
    EXPECT_EQ(b.Rect(), (CRect{50, 50, 80, 80}));
    EXPECT_EQ(Order(), "ab");
    EXPECT_EQ(a.color + b.color, 0);
}

TEST_F(Editing, GrowingIsAllOrNothingAndAKnobKeepsEqualSides)
{
    OSCControl& knob = Add(0, 100, 60, 60, kKnob);
    OSCControl& label = Add(100, 100, 219, 20, kLabel);
    project.ResizeW(1, &host);
    EXPECT_EQ(knob.width, 61);
    EXPECT_EQ(knob.height, 61);
    EXPECT_EQ(label.width, 220);
    project.ResizeW(1, &host);  // the label would pass the right edge
    EXPECT_EQ(knob.width, 61);
    EXPECT_EQ(label.width, 220);
    project.ResizeH(2, &host);
    EXPECT_EQ(knob.width, 63);
    EXPECT_EQ(knob.height, 63);
    EXPECT_EQ(label.height, 22);
}

TEST_F(Editing, ShrinkingStopsEachControlAtItsOwnMinimum)
{
    OSCControl& label = Add(0, 100, 20, 20, kLabel);
    OSCControl& toggle = Add(100, 100, 30, 30, kToggle);
    project.ResizeW(-1, &host);
    EXPECT_EQ(label.width, 20);
    EXPECT_EQ(toggle.width, 29);

    OSCControl& knob = Add(200, 100, 60, 70, kKnob);
    project.UnselectAll();
    knob.selected = 1;
    project.ResizeH(-1, &host);
    EXPECT_EQ(knob.width, 69);
    EXPECT_EQ(knob.height, 69);
}

TEST_F(Editing, MinimumSizesFollowTheHostsLimitMode)
{
    struct Case {
        int type, w, h, mode;
        int minW, minH;
    };
    const Case cases[] = {
        {kLabel, 100, 100, 0, 20, 20},      {kLabel, 100, 100, 1, 50, 20},
        {kFader, 100, 300, 0, 20, 20},      {kFader, 100, 300, 1, 48, 200},
        {kFader, 300, 100, 1, 200, 44},     {kKnob, 100, 100, 0, 50, 50},
        {kKnob, 100, 100, 1, 48, 48},       {kToggle, 100, 100, 1, 15, 15},
        {kPushButton, 100, 100, 0, 15, 15},
    };
    for (const Case& c : cases) {
        page().controls.clear();
        host.sizeLimitMode = c.mode;
        OSCControl& control = Add(0, 50, c.w, c.h, c.type);
        const std::string where = std::string(ControlTypes[c.type]) + " mode " +
                                  std::to_string(c.mode) + " " + std::to_string(c.w) + "x" +
                                  std::to_string(c.h);
        project.ResizeW(-(c.w - c.minW), &host);
        EXPECT_EQ(control.width, c.minW) << where;
        project.ResizeW(-1, &host);
        EXPECT_EQ(control.width, c.minW) << where;

        control.width = static_cast<std::int16_t>(c.w);
        control.height = static_cast<std::int16_t>(c.h);
        project.ResizeH(-(c.h - c.minH), &host);
        EXPECT_EQ(control.height, c.minH) << where;
        project.ResizeH(-1, &host);
        EXPECT_EQ(control.height, c.minH) << where;
    }

    // A square fader counts as vertical for its limits.
    page().controls.clear();
    host.sizeLimitMode = 1;
    OSCControl& square = Add(0, 50, 250, 250, kFader);
    project.ResizeH(-51, &host);
    EXPECT_EQ(square.height, 250);
    project.ResizeW(-202, &host);
    EXPECT_EQ(square.width, 48);

    page().controls.clear();
    OSCControl& odd = Add(0, 50, 100, 100, 7);
    project.ResizeW(-50, &host);
    EXPECT_EQ(odd.width, 100);  // other types never shrink
    project.ResizeW(10, &host);
    EXPECT_EQ(odd.width, 110);
}

TEST_F(Editing, StackingMovesSelectedControlsOneByOne)
{
    for (const char* name : {"a", "b", "c", "d"}) {
        OSCControl& control = Add(0, 50, 10, 10, kLabel, false);
        control.name[0] = name[0];
    }
    page().controls[0]->selected = 1;
    page().controls[2]->selected = 1;
    project.ToFront();
    EXPECT_EQ(Order(), "cabd");  // the later one ends in front even though a was first
    project.ToBack();
    EXPECT_EQ(Order(), "bdac");

    page().controls.clear();
    Add(0, 50, 10, 10).name[0] = 'x';
    Add(0, 50, 10, 10, kLabel, false).name[0] = 'y';
    EXPECT_EQ(project.GetAt(5, 55)->name[0], 'x');
    project.ToBack();
    EXPECT_EQ(project.GetAt(5, 55)->name[0], 'y');
}

TEST_F(Editing, ColourGoesToEverySelectedControl)
{
    OSCControl& a = Add(0, 50, 10, 10);
    OSCControl& b = Add(0, 50, 10, 10, kLabel, false);
    project.SetColor(8);
    EXPECT_EQ(a.color, 8);
    EXPECT_EQ(b.color, 0);
}

TEST_F(Editing, ClearAsksAndDeletesOnlyOnYes)
{
    Add(0, 50, 10, 10).name[0] = 'a';
    Add(0, 50, 10, 10, kLabel, false).name[0] = 'b';
    Add(0, 50, 10, 10).name[0] = 'c';

    project.Clear();  // the fake answers No
    EXPECT_EQ(Order(), "abc");
    ASSERT_EQ(Toolkit().messageBoxes.size(), 1u);
    EXPECT_EQ(Toolkit().messageBoxes[0].text,
              "Are you sure you want to remove the selected controls?\n\n"
              "(This operation can't be undone.)");
    EXPECT_EQ(Toolkit().messageBoxes[0].caption, "OSC Editor");
    EXPECT_EQ(Toolkit().messageBoxes[0].style, toolkit::kYesNo);

    Toolkit().answers.push_back(toolkit::kAnswerYes);
    project.Clear();
    EXPECT_EQ(Order(), "b");
}

TEST_F(Editing, AddedPageBecomesCurrent)
{
    OSCPage* added = project.AddPage();
    ASSERT_EQ(project.pages.size(), 2u);
    EXPECT_EQ(project.pages[1].get(), added);
    EXPECT_EQ(project.currentPage, 1);
    EXPECT_STREQ(added->name, "Page 1");
    project.SetPageName("Drums");
    EXPECT_STREQ(added->name, "Drums");
    project.SetPageName(std::string(300, 'd').c_str());
    EXPECT_EQ(std::string(added->name), std::string(255, 'd'));
}

TEST_F(Editing, RemovePageAsksAndKeepsTheLastPage)
{
    project.RemovePage();
    EXPECT_EQ(project.pages.size(), 1u);
    EXPECT_TRUE(Toolkit().messageBoxes.empty());

    project.SetPageName("one");
    project.AddPage();
    project.SetPageName("two");
    project.AddPage();
    project.SetPageName("three");

    project.RemovePage();  // answered No
    EXPECT_EQ(project.pages.size(), 3u);
    ASSERT_EQ(Toolkit().messageBoxes.size(), 1u);
    EXPECT_EQ(Toolkit().messageBoxes[0].text,
              "Are you sure you want to remove the current page and associated controls?\n\n"
              "(This operation can't be undone.)");
    EXPECT_EQ(Toolkit().messageBoxes[0].caption, "OSC Editor");

    Toolkit().answers = {toolkit::kAnswerYes, toolkit::kAnswerYes};
    project.RemovePage();  // the last of three: page 2 becomes current
    ASSERT_EQ(project.pages.size(), 2u);
    EXPECT_EQ(project.currentPage, 1);
    EXPECT_STREQ(project.pages[1]->name, "two");

    project.currentPage = 0;
    project.RemovePage();  // the page that followed becomes current
    ASSERT_EQ(project.pages.size(), 1u);
    EXPECT_EQ(project.currentPage, 0);
    EXPECT_STREQ(project.pages[0]->name, "two");
}

TEST_F(Editing, SearchAndReplaceReachesEveryPage)
{
    std::strcpy(Add(0, 50, 10, 10).command, "/TRVX/ID1/SetVal/Ctl1");
    project.AddPage();
    auto other = std::make_unique<OSCControl>();
    std::strcpy(other->command, "/TRVX/ID2/SetVal/Ctl2");
    std::strcpy(other->name, "Ctl");
    project.pages[1]->controls.push_back(std::move(other));
    project.currentPage = 0;

    project.SearchAndReplace("Ctl", "C", false, true);
    EXPECT_STREQ(project.pages[0]->controls[0]->command, "/TRVX/ID1/SetVal/C1");
    EXPECT_STREQ(project.pages[1]->controls[0]->command, "/TRVX/ID2/SetVal/C2");
    EXPECT_STREQ(project.pages[1]->controls[0]->name, "Ctl");
}
