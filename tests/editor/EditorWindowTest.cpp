// The editor in its frame: the rules of data/editor.json, each a test of its
// own, played by a user and a host; where the editor puts its frame and its
// canvas, how it paints its frame, and paths it cannot keep.
#include "EditorFixture.h"
#include "editor/EditorGeometry.h"

#include <fstream>

namespace {

const json kRules = EditorCases("rules");

class EditorRule : public EditorTest, public ::testing::WithParamInterface<std::size_t> {};

TEST_P(EditorRule, HoldsInEachCase)
{
    for (const json& c : kRules[GetParam()]["cases"])
        PlayCase(c);
}

std::string RuleOf(const ::testing::TestParamInfo<std::size_t>& info)
{
    return kRules[info.param]["rule"];
}

INSTANTIATE_TEST_SUITE_P(Editor, EditorRule, ::testing::Range<std::size_t>(0, kRules.size()),
                         RuleOf);

TEST(Placement, AFrameWithoutASizeTakesTheRightHalfAndTheCanvasIsCentredBesideTheListWhenItFits)
{
    for (const json& c : EditorCases("framePlacements"))
        EXPECT_EQ(Json(FramePlacement(RectOf(c["stored"]), RectOf(c["host"]))), c["frame"]) << c;
    for (const json& c : EditorCases("viewPlacements")) {
        const json& client = c["client"];
        const json& screen = c["screen"];
        EXPECT_EQ(Json(ViewPlacement(client[0], client[1], screen[0], screen[1])), c["view"]) << c;
    }
}

TEST_F(EditorTest, TheFrameIsGreyWithADarkRingAroundTheCanvasAndABlackLineBesideTheList)
{
    editor->resize(1400, 1000);
    const QImage image = editor->grab().toImage();
    const QRect view = editor->view.geometry();
    EXPECT_EQ(ColourAt(image, 199, view.bottom()), "#000000");
    EXPECT_EQ(ColourAt(image, view.left() - 1, view.top() + 5), "#0c0c0c");
    EXPECT_EQ(ColourAt(image, view.right() + 1, view.bottom() + 1), "#0c0c0c");
    EXPECT_EQ(ColourAt(image, 198, editor->height() - 2), "#808080");
}

TEST_F(EditorTest, APathLongerThan255BytesIsRefusedWithAMessageNotCut)
{
    const std::string longFolder = folder / (std::string(150, 'f') + '/' + std::string(150, 'g'));
    std::filesystem::create_directories(longFolder);
    const std::string longPath = longFolder + "/Show.VornOsc";
    std::ofstream(longPath) << "KLYF";
    ASSERT_NE(Open(longPath.c_str()), nullptr);
    EXPECT_STREQ(editor->layoutPath, "New");
    ASSERT_EQ(basics.errors.size(), 1u);
    EXPECT_NE(basics.errors[0].find("255 bytes"), std::string::npos);
    editor->modified = 1;
    Do("choose " + longPath);
    Do("command Save As");
    Expect({{"path", "New"}, {"modified", 1}});
    EXPECT_EQ(basics.errors.size(), 2u);
}

}  // namespace
