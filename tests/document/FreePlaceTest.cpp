#include "document/FreePlace.h"

#include "LiteralFreePlace.h"
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace {

// The rectangles of a failing case, as the known places write them.
nlohmann::json Rects(const std::vector<CRect>& rects)
{
    nlohmann::json out = nlohmann::json::array();
    for (const CRect& r : rects)
        out.push_back({r.left, r.top, r.right, r.bottom});
    return out;
}

struct Screen {
    int w;
    int h;
};

// Pages of every kind the literal scan can be asked about.
class RandomPages {
public:
    int Between(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(random_); }
    bool OneIn(int n) { return Between(1, n) == 1; }

    // Mostly ordinary groups, often ones that only just fit or don't.
    int GroupSide(int screenSide)
    {
        const int sides[] = {screenSide - Between(0, 2), screenSide + Between(1, 3), Between(-3, 0),
                             Between(1, screenSide)};
        const int pick = Between(0, 9);
        return pick < 4 ? sides[pick] : Between(16, 120);
    }

    // Controls scattered anywhere, partly off screen, some empty.
    void Scatter(std::vector<CRect>& rects, Screen screen, int count)
    {
        const int maxSide = OneIn(3) ? 300 : 80;
        for (int i = 0; i < count; ++i) {
            const int x = Between(-100, screen.w + 20), y = Between(-100, screen.h + 20);
            rects.push_back({x, y, x + Between(-5, maxSide), y + Between(-5, maxSide)});
        }
    }

    // A grid over the page or its upper part with a few cells left out, so
    // that any free place is a tight fit.
    void Grid(std::vector<CRect>& rects, Screen screen)
    {
        const int cellW = Between(24, 100), cellH = Between(24, 100);
        const int gapX = Between(0, 12), gapY = Between(0, 12), top = Between(0, 60);
        const int bottom = OneIn(2) ? screen.h : Between(top, screen.h);
        for (int y = top; y < bottom; y += cellH) {
            for (int x = Between(-10, 0); x < screen.w; x += cellW) {
                if (!OneIn(25))
                    rects.push_back({x, y, x + cellW - gapX, y + cellH - gapY});
            }
        }
    }

    // Rectangles as wild as a damaged file can make them: any int16 corner and size.
    void Extremes(std::vector<CRect>& rects)
    {
        constexpr std::array<int, 7> kValues{-32768, -32767, -1, 0, 1, 32766, 32767};
        const auto any = [&] { return kValues[Between(0, 6)]; };
        for (int i = Between(1, 4); i > 0; --i) {
            const int x = any(), y = any();
            rects.push_back({x, y, x + any(), y + any()});
        }
    }

    std::mt19937 random_{20240611};
};

}  // namespace

// Touching an edge is no collision, empty rectangles collide with nothing, and
// the last corner tried is (screenW - w - 1, screenH - h - 1).
TEST(FreePlace, TheFirstCornerFromRowFortyWhereTheGroupSharesNoPointIsChosen)
{
    for (const nlohmann::json& c : Cases(DATA_DIR "/free-place.json", "knownPlaces")) {
        SCOPED_TRACE(c["what"].get<std::string>());
        std::vector<CRect> occupied;
        for (const auto& r : c["occupied"])
            occupied.push_back({r[0], r[1], r[2], r[3]});
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
    constexpr std::array<Screen, 4> kScreens{{{320, 480}, {768, 1024}, {480, 320}, {1024, 768}}};
    RandomPages pages;
    for (int i = 0; i < 3000; ++i) {
        const Screen screen = kScreens[pages.Between(0, 3)];
        std::vector<CRect> rects;
        const int kind = pages.Between(0, 7);
        if (kind == 6)
            pages.Grid(rects, screen);
        if (kind == 7)
            pages.Extremes(rects);
        const int counts[][2] = {{0, 5},    {0, 40},   {0, 40}, {0, 40},
                                 {40, 300}, {40, 300}, {0, 0},  {0, 10}};
        pages.Scatter(rects, screen, pages.Between(counts[kind][0], counts[kind][1]));
        std::shuffle(rects.begin(), rects.end(), pages.random_);
        const int w = pages.GroupSide(screen.w), h = pages.GroupSide(screen.h);
        ASSERT_EQ(FindFreePlace(rects, w, h, screen.w, screen.h),
                  LiteralFreePlace(rects, w, h, screen.w, screen.h, CornerTest::kLastBlockerFirst))
            << "group " << w << "x" << h << " on " << screen.w << "x" << screen.h << ": "
            << Rects(rects).dump();
    }
}
