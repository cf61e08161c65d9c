#include "document/FreePlace.h"

#include "LiteralFreePlace.h"
#include "TestControls.h"
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace {

std::mt19937 randomPages(20240611);

int Between(int lo, int hi)
{
    return std::uniform_int_distribution<int>(lo, hi)(randomPages);
}

// Mostly ordinary groups, often ones that only just fit or don't.
int GroupSide(int screenSide)
{
    const int sides[] = {screenSide - Between(0, 2), screenSide + Between(1, 3), Between(-3, 0),
                         Between(1, screenSide)};
    const int pick = Between(0, 9);
    return pick < 4 ? sides[pick] : Between(16, 120);
}

// Controls scattered anywhere, partly off screen, some empty.
void Scatter(std::vector<CRect>& rects, int screenW, int screenH, int count)
{
    const int maxSide = Between(1, 3) == 1 ? 300 : 80;
    for (int i = 0; i < count; ++i) {
        const int x = Between(-100, screenW + 20), y = Between(-100, screenH + 20);
        rects.push_back({x, y, x + Between(-5, maxSide), y + Between(-5, maxSide)});
    }
}

// A grid over the page or its upper part with a few cells left out, so that
// any free place is a tight fit.
void Grid(std::vector<CRect>& rects, int screenW, int screenH)
{
    const int cellW = Between(24, 100), cellH = Between(24, 100);
    const int gapX = Between(0, 12), gapY = Between(0, 12), top = Between(0, 60);
    const int bottom = Between(1, 2) == 1 ? screenH : Between(top, screenH);
    for (int y = top; y < bottom; y += cellH) {
        for (int x = Between(-10, 0); x < screenW; x += cellW) {
            if (Between(1, 25) != 1)
                rects.push_back({x, y, x + cellW - gapX, y + cellH - gapY});
        }
    }
}

// Rectangles as wild as a damaged file can make them: any int16 corner and size.
void Extremes(std::vector<CRect>& rects)
{
    static constexpr std::array<int, 7> kValues{-32768, -32767, -1, 0, 1, 32766, 32767};
    const auto any = [] { return kValues[Between(0, 6)]; };
    for (int i = Between(1, 4); i > 0; --i) {
        const int x = any(), y = any();
        rects.push_back({x, y, x + any(), y + any()});
    }
}

}  // namespace

// Touching an edge is no collision, empty rectangles collide with nothing, and
// the last corner tried is (screenW - w - 1, screenH - h - 1).
TEST(FreePlace, TheFirstCornerFromRowFortyWhereTheGroupSharesNoPointIsChosen)
{
    for (const nlohmann::json& c : Cases(DATA_DIR "/free-place.json", "knownPlaces")) {
        SCOPED_TRACE(c["what"].get<std::string>());
        std::vector<CRect> occupied;
        for (const auto& r : c["occupied"])
            occupied.push_back(RectOf(r));
        std::optional<CPoint> expected;
        if (!c["place"].is_null())
            expected = CPoint{c["place"][0], c["place"][1]};
        EXPECT_EQ(
            FindFreePlace(occupied, c["group"][0], c["group"][1], c["screen"][0], c["screen"][1]),
            expected);
    }
}

TEST(FreePlace, AgreesWithTheLiteralScanOnRandomPages)
{
    constexpr int kScreens[][2] = {{320, 480}, {768, 1024}, {480, 320}, {1024, 768}};
    // Scattered controls by the handful, by the dozen and by the hundred, or a
    // grid, or a few wild rectangles among them.
    constexpr int kCounts[][2] = {{0, 5},    {0, 40},   {0, 40}, {0, 40},
                                  {40, 300}, {40, 300}, {0, 0},  {0, 10}};
    for (int i = 0; i < 3000; ++i) {
        const auto [screenW, screenH] = kScreens[Between(0, 3)];
        std::vector<CRect> rects;
        const int kind = Between(0, 7);
        if (kind == 6)
            Grid(rects, screenW, screenH);
        if (kind == 7)
            Extremes(rects);
        Scatter(rects, screenW, screenH, Between(kCounts[kind][0], kCounts[kind][1]));
        std::shuffle(rects.begin(), rects.end(), randomPages);
        const int w = GroupSide(screenW), h = GroupSide(screenH);
        nlohmann::json page = nlohmann::json::array();
        for (const CRect& r : rects)
            page.push_back(Json(r));
        ASSERT_EQ(FindFreePlace(rects, w, h, screenW, screenH),
                  LiteralFreePlace(rects, w, h, screenW, screenH, CornerTest::kLastBlockerFirst))
            << "group " << w << "x" << h << " on " << screenW << "x" << screenH << ": " << page;
    }
}
