// The editor in its frame: the rules of data/editor.json, each a test of its
// own, played by a user and a host; and where the editor puts its frame and
// its canvas.
#include "EditorFixture.h"
#include "editor/EditorGeometry.h"

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

}  // namespace
