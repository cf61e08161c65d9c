#include "FakeHost.h"
#include "FakeToolkit.h"
#include "document/ControlClipboard.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

const char* const kNoSpaceQuestion =
    "Insufficient space could be found on the current page to add the controls\n"
    "without conflicting with existing controls.\n\n"
    "Click YES to add the controls\nClick NO to cancel the paste.\n\n"
    "(Alternately, create a new Page to paste the controls into)";

struct Clipboard : testing::Test {
    OSCProject project;

    void SetUp() override
    {
        Toolkit().Reset();
        ClearClipboard();
        project.device = kIPhone;
        project.orientation = kVertical;  // 320 by 480
    }
    void TearDown() override { ClearClipboard(); }

    OSCPage& page() { return *project.CurrentPage(); }

    OSCControl& Add(const char* name, int x, int y, int w = 32, int h = 32, bool selected = false)
    {
        auto control = std::make_unique<OSCControl>();
        std::strcpy(control->name, name);
        control->x = static_cast<std::int16_t>(x);
        control->y = static_cast<std::int16_t>(y);
        control->width = static_cast<std::int16_t>(w);
        control->height = static_cast<std::int16_t>(h);
        control->selected = selected;
        page().controls.push_back(std::move(control));
        return *page().controls.back();
    }

    static std::string Names(const ControlList& controls)
    {
        std::string names;
        for (const auto& control : controls)
            names += control->name;
        return names;
    }
};

}  // namespace

TEST_F(Clipboard, CutTakesSelectedControlsInReverseAndPasteRestoresTheirOrder)
{
    for (int i = 0; i < 5; ++i)
        Add(std::to_string(i).c_str(), 40 * i, 100, 32, 32, i == 1 || i == 3 || i == 4);
    project.Cut();
    EXPECT_EQ(Names(*GetControlClipboard()), "431");
    EXPECT_EQ(Names(page().controls), "02");

    project.AddPage();
    project.Paste();
    EXPECT_EQ(Names(page().controls), "134");
    for (const auto& control : page().controls)
        EXPECT_TRUE(control->selected);  // cut controls come back selected
}

TEST_F(Clipboard, CopyKeepsThePageAndEveryField)
{
    OSCControl& original = Add("a", 10, 60, 32, 32, true);
    original.value = 99;
    original.color = 7;
    Add("b", 100, 100);
    project.Copy();
    ASSERT_EQ(GetControlClipboard()->size(), 1u);
    const OSCControl& copy = *GetControlClipboard()->front();
    EXPECT_NE(&copy, &original);
    EXPECT_EQ(std::memcmp(&copy, &original, sizeof copy), 0);
    EXPECT_EQ(Names(page().controls), "ab");
}

TEST_F(Clipboard, CutOrCopyWithNothingSelectedEmptiesTheClipboard)
{
    Add("a", 0, 100, 32, 32, true);
    project.Copy();
    page().controls[0]->selected = 0;
    project.Cut();
    EXPECT_TRUE(GetControlClipboard()->empty());
    EXPECT_EQ(page().controls.size(), 1u);
}

TEST_F(Clipboard, PasteOnAnEmptyPageGoesBelowTheTitleBand)
{
    Add("a", 100, 100, 32, 32, true);
    project.Copy();
    page().controls.clear();
    project.Paste();
    ASSERT_EQ(page().controls.size(), 1u);
    EXPECT_EQ(page().controls[0]->x, 8);
    EXPECT_EQ(page().controls[0]->y, 48);
}

TEST_F(Clipboard, GroupWiderThanTheScreenIsRefused)
{
    Add("a", 0, 100, 100, 32, true);
    Add("b", 214, 100, 100, 32, true);  // 314 wide, 330 with margins
    project.Copy();
    page().controls.clear();
    project.Paste();
    EXPECT_TRUE(page().controls.empty());
    ASSERT_EQ(Toolkit().messageBoxes.size(), 1u);
    EXPECT_EQ(Toolkit().messageBoxes[0].text,
              "The OSC controls on the clipboard are larger then the specified screen.\n"
              "Please create a smaller layout to paste.");
    EXPECT_EQ(Toolkit().messageBoxes[0].caption, "OSC");
    EXPECT_EQ(Toolkit().messageBoxes[0].style, toolkit::kNotice);

    project.orientation = kHorizontal;  // 480 wide
    project.Paste();
    EXPECT_EQ(page().controls.size(), 2u);
}

TEST_F(Clipboard, FullPageAsksAndPlacesTheGroupAtTheCornerOnYes)
{
    Add("a", 50, 50, 32, 32, true);
    project.Copy();
    page().controls.clear();
    Add("wall", 0, 0, 320, 480);

    project.Paste();  // answered No
    EXPECT_EQ(page().controls.size(), 1u);
    ASSERT_EQ(Toolkit().messageBoxes.size(), 1u);
    EXPECT_EQ(Toolkit().messageBoxes[0].text, kNoSpaceQuestion);
    EXPECT_EQ(Toolkit().messageBoxes[0].caption, "OSC");
    EXPECT_EQ(Toolkit().messageBoxes[0].style, toolkit::kYesNo);

    Toolkit().answers.push_back(toolkit::kAnswerYes);
    project.Paste();
    ASSERT_EQ(page().controls.size(), 2u);
    EXPECT_EQ(page().controls[0]->x, 8);
    EXPECT_EQ(page().controls[0]->y, 8);
}

TEST_F(Clipboard, PastingTwiceMakesIndependentCopiesClearOfEachOther)
{
    Add("a", 0, 100, 32, 32, true);
    project.Copy();
    page().controls.clear();
    project.Paste();
    project.Paste();
    ASSERT_EQ(page().controls.size(), 2u);
    EXPECT_EQ(GetControlClipboard()->size(), 1u);
    const CRect second = page().controls[0]->Rect();
    const CRect first = page().controls[1]->Rect();
    EXPECT_EQ(first, (CRect{8, 48, 40, 80}));
    EXPECT_EQ(second, (CRect{48, 48, 80, 80}));  // eight units clear of the first
    page().controls[0]->x = 0;
    EXPECT_EQ(page().controls[1]->x, 8);
}

TEST_F(Clipboard, PasteKeepsOtherSelectionsAndTheGroupShape)
{
    Add("a", 20, 100, 32, 32, true);
    Add("b", 70, 130, 32, 32, true);
    project.Copy();
    page().controls.clear();
    OSCControl& other = Add("x", 200, 300);
    other.selected = 1;
    project.Paste();
    ASSERT_EQ(page().controls.size(), 3u);
    EXPECT_EQ(Names(page().controls), "abx");
    EXPECT_EQ(page().controls[0]->Rect(), (CRect{8, 48, 40, 80}));
    EXPECT_EQ(page().controls[1]->Rect(), (CRect{58, 78, 90, 110}));
    EXPECT_TRUE(page().controls[2]->selected);
}

TEST_F(Clipboard, HostRecordsBecomeUnselectedGrayControls)
{
    _OSCParms records[2]{};
    std::strcpy(records[0].name, "Cutoff");
    records[0].deviceNumber = 2;
    records[0].controlNumber = 74;
    records[0].x = -3;
    records[0].y = 60;
    records[0].width = 50;
    records[0].height = 50;
    records[0].type = kKnob;
    std::strcpy(records[1].name, "Res");
    records[1].width = records[1].height = 40;
    Add("old", 0, 100, 32, 32, true);
    project.Copy();

    ExternalPasteToClipboard({&records[0], nullptr, &records[1]});
    const ControlList& clipboard = *GetControlClipboard();
    ASSERT_EQ(clipboard.size(), 2u);
    EXPECT_STREQ(clipboard[0]->name, "Cutoff");
    EXPECT_STREQ(clipboard[0]->command, "/TRVX/ID2/SetVal/Ctl74");
    EXPECT_EQ(clipboard[0]->x, 0);
    EXPECT_EQ(clipboard[0]->color, kGray);
    EXPECT_EQ(clipboard[0]->selected, 0);
    EXPECT_STREQ(clipboard[1]->name, "Res");

    project.Paste();
    EXPECT_EQ(project.GetNumSelected(), 1);  // only the old control
}
