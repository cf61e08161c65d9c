#include "FakeToolkit.h"
#include "TestControls.h"
#include "document/ControlClipboard.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

const char kNoSpaceQuestion[] =
    "Insufficient space could be found on the current page to add the controls\n"
    "without conflicting with existing controls.\n\n"
    "Click YES to add the controls\nClick NO to cancel the paste.\n\n"
    "(Alternately, create a new Page to paste the controls into)";
const char kTooLargeNotice[] =
    "The OSC controls on the clipboard are larger then the specified screen.\n"
    "Please create a smaller layout to paste.";

// An iPhone held upright, 320 by 480.
struct Clipboard : testing::Test {
    OSCProject project;

    void SetUp() override
    {
        Toolkit().Reset();
        ClearClipboard();
        project.device = kIPhone;
        project.orientation = kVertical;
    }
    void TearDown() override { ClearClipboard(); }

    OSCPage& page() { return *project.CurrentPage(); }

    // Puts the given controls, selected, on the clipboard and empties the page.
    void CopyOnly(std::initializer_list<CRect> rects)
    {
        for (const CRect& r : rects)
            AddControl(page(), r.left, r.top, r.Width(), r.Height(), kLabel, true, "c");
        project.Copy();
        page().controls.clear();
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

TEST_F(Clipboard, CutTakesTheSelectedControlsInReverseAndPasteRestoresTheirOrder)
{
    for (int i = 0; i < 5; ++i)
        AddControl(page(), 40 * i, 100, 32, 32, kLabel, i % 2 == 1 || i == 4,
                   std::to_string(i).c_str());
    project.Cut();
    EXPECT_EQ(Names(*GetControlClipboard()), "431");
    EXPECT_EQ(Names(page().controls), "02");

    project.AddPage();
    project.Paste();
    EXPECT_EQ(Names(page().controls), "134");
    EXPECT_EQ(project.GetNumSelected(), 3);  // cut controls come back selected

    project.UnselectAll();
    project.Cut();  // nothing selected: the clipboard is emptied
    EXPECT_TRUE(GetControlClipboard()->empty());
    EXPECT_EQ(project.GetNumControls(), 3);
}

TEST_F(Clipboard, CopyLeavesThePageAndKeepsEveryField)
{
    OSCControl& original = AddControl(page(), 10, 60, 32, 32, kKnob, true, "a");
    original.value = 99;
    original.color = 7;
    AddControl(page(), 100, 100, 32, 32, kLabel, false, "b");
    project.Copy();
    ASSERT_EQ(GetControlClipboard()->size(), 1u);
    EXPECT_EQ(std::memcmp(GetControlClipboard()->front().get(), &original, sizeof original), 0);
    EXPECT_EQ(Names(page().controls), "ab");
}

// The group, eight units larger on each side, goes to the first free place
// below the title band, keeping its shape and the page's other selections.
TEST_F(Clipboard, PasteKeepsTheGroupShapeAndGoesToTheFirstFreePlace)
{
    CopyOnly({{20, 100, 52, 132}, {70, 130, 102, 162}});
    AddControl(page(), 200, 300, 32, 32, kLabel, true, "x");
    project.Paste();
    project.Paste();
    ASSERT_EQ(project.GetNumControls(), 5);
    const CRect expected[] = {{98, 48, 130, 80},
                              {148, 78, 180, 110},
                              {8, 48, 40, 80},
                              {58, 78, 90, 110},
                              {200, 300, 232, 332}};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(page().controls[i]->Rect(), expected[i]) << i;
        EXPECT_TRUE(page().controls[i]->selected) << i;
    }
    EXPECT_EQ(GetControlClipboard()->size(), 2u);
}

// A group larger than the screen is refused with a notice; one just as large
// finds no free place, so the user is asked.
TEST_F(Clipboard, AGroupLargerThanTheScreenIsRefused)
{
    const std::tuple<int, int, const char*> cases[] = {
        {304, 32, kNoSpaceQuestion},
        {305, 32, kTooLargeNotice},
        {32, 464, kNoSpaceQuestion},
        {32, 465, kTooLargeNotice},
    };
    for (const auto& [w, h, text] : cases) {
        SCOPED_TRACE(testing::Message() << w << "x" << h);
        Toolkit().Reset();
        CopyOnly({{0, 0, w, h}});
        project.Paste();
        EXPECT_TRUE(page().controls.empty());
        ASSERT_EQ(Toolkit().messageBoxes.size(), 1u);
        EXPECT_EQ(Toolkit().messageBoxes[0].text, text);
        EXPECT_EQ(Toolkit().messageBoxes[0].caption, "OSC");
        EXPECT_EQ(Toolkit().messageBoxes[0].style,
                  text == kTooLargeNotice ? toolkit::kNotice : toolkit::kYesNo);
    }
}

TEST_F(Clipboard, AFullPageAsksAndPutsTheGroupInTheCornerOnYes)
{
    CopyOnly({{50, 50, 82, 82}});
    AddControl(page(), 0, 0, 320, 480, kLabel, false, "wall");
    project.Paste();  // answered No
    EXPECT_EQ(project.GetNumControls(), 1);
    Toolkit().answers.push_back(toolkit::kAnswerYes);
    project.Paste();
    ASSERT_EQ(project.GetNumControls(), 2);
    EXPECT_EQ(page().controls[0]->Rect(), (CRect{8, 8, 40, 40}));
}

TEST_F(Clipboard, HostRecordsBecomeUnselectedControlsAndNullRecordsArePassedOver)
{
    _OSCParms records[2]{};
    std::strcpy(records[0].name, "Cutoff");
    std::strcpy(records[1].name, "Res");
    CopyOnly({{0, 0, 10, 10}});
    ExternalPasteToClipboard({&records[0], nullptr, &records[1]});
    EXPECT_EQ(Names(*GetControlClipboard()), "CutoffRes");
    project.Paste();
    EXPECT_EQ(project.GetNumControls(), 2);
    EXPECT_EQ(project.GetNumSelected(), 0);
}
