#include "document/FreePlace.h"

#include "LiteralFreePlace.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <sstream>
#include <string>

namespace {

struct Screen {
    int w;
    int h;
};

// iPhone vertical, iPad vertical, iPhone horizontal, iPad horizontal.
constexpr std::array<Screen, 4> kScreens{{{320, 480}, {768, 1024}, {480, 320}, {1024, 768}}};

std::string Describe(const std::vector<CRect>& occupied, int w, int h, Screen screen)
{
    std::ostringstream out;
    out << "group " << w << "x" << h << " on " << screen.w << "x" << screen.h << ", "
        << occupied.size() << " rects:";
    for (const CRect& r : occupied)
        out << " (" << r.left << "," << r.top << "," << r.right << "," << r.bottom << ")";
    return out.str();
}

void ExpectSameAsLiteral(const std::vector<CRect>& occupied, int w, int h, Screen screen)
{
    const auto expected =
        LiteralFreePlace(occupied, w, h, screen.w, screen.h, CornerTest::kLastBlockerFirst);
    const auto found = FindFreePlace(occupied, w, h, screen.w, screen.h);
    ASSERT_EQ(found.has_value(), expected.has_value()) << Describe(occupied, w, h, screen);
    if (expected) {
        ASSERT_EQ(*found, *expected) << Describe(occupied, w, h, screen);
    }
}

class RandomPages {
public:
    explicit RandomPages(unsigned seed) : random_(seed) {}

    int Between(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(random_); }
    bool OneIn(int n) { return Between(1, n) == 1; }

    // Mostly ordinary groups, often ones that only just fit or don't.
    int GroupSide(int screenSide)
    {
        switch (Between(0, 9)) {
            case 0:
                return screenSide - Between(0, 2);
            case 1:
                return screenSide + Between(1, 3);
            case 2:
                return Between(-3, 0);
            case 3:
                return Between(1, screenSide);
            default:
                return Between(16, 120);
        }
    }

    // Controls scattered anywhere, partly off screen, some empty.
    void Scatter(std::vector<CRect>& rects, Screen screen, int count)
    {
        const int maxSide = OneIn(3) ? 300 : 80;
        for (int i = 0; i < count; ++i) {
            const int x = Between(-100, screen.w + 20);
            const int y = Between(-100, screen.h + 20);
            rects.push_back({x, y, x + Between(-5, maxSide), y + Between(-5, maxSide)});
        }
    }

    // Controls in a grid over the page or its upper part, with a few cells
    // left out, so that any free place is a tight fit.
    void Grid(std::vector<CRect>& rects, Screen screen)
    {
        const int cellW = Between(24, 100);
        const int cellH = Between(24, 100);
        const int gapX = Between(0, 12);
        const int gapY = Between(0, 12);
        const int top = Between(0, 60);
        const int bottom = OneIn(2) ? screen.h : Between(top, screen.h);
        for (int y = top; y < bottom; y += cellH) {
            for (int x = Between(-10, 0); x < screen.w; x += cellW) {
                if (!OneIn(25))
                    rects.push_back({x, y, x + cellW - gapX, y + cellH - gapY});
            }
        }
    }

    // Rectangles as wild as a damaged file can make them: any int16 position
    // and size.
    void Extremes(std::vector<CRect>& rects)
    {
        constexpr std::array<int, 7> kValues{-32768, -32767, -1, 0, 1, 32766, 32767};
        for (int i = Between(1, 4); i > 0; --i) {
            const int x = kValues[Between(0, 6)];
            const int y = kValues[Between(0, 6)];
            rects.push_back({x, y, x + kValues[Between(0, 6)], y + kValues[Between(0, 6)]});
        }
    }

    std::mt19937& Engine() { return random_; }

private:
    std::mt19937 random_;
};

}  // namespace

TEST(FreePlace, KnownPlaces)
{
    // An empty iPhone vertical page: the inflated 48 by 48 group of one
    // control goes to the first corner below the title strip.
    EXPECT_EQ(FindFreePlace({}, 48, 48, 320, 480), (CPoint{0, 40}));

    // A control across the top rows pushes the group to the row just below it;
    // touching its bottom edge is no collision.
    EXPECT_EQ(FindFreePlace({{0, 30, 320, 100}}, 48, 48, 320, 480), (CPoint{0, 100}));

    // Touching a control's left edge is no collision either.
    EXPECT_EQ(FindFreePlace({{0, 0, 100, 480}}, 48, 48, 320, 480), (CPoint{100, 40}));

    // Empty controls collide with nothing.
    EXPECT_EQ(FindFreePlace({{0, 0, 0, 480}, {0, 0, 320, -5}}, 48, 48, 320, 480), (CPoint{0, 40}));

    // The last corner tried is (screenW - w - 1, screenH - h - 1).
    EXPECT_EQ(FindFreePlace({{0, 0, 271, 480}, {0, 0, 320, 431}}, 48, 48, 320, 480),
              (CPoint{271, 431}));
    EXPECT_FALSE(FindFreePlace({{0, 0, 272, 480}}, 48, 48, 320, 480));
    EXPECT_FALSE(FindFreePlace({{0, 0, 320, 432}}, 48, 48, 320, 480));

    // A group as wide as the screen never fits: x must stay below screenW - w.
    EXPECT_FALSE(FindFreePlace({}, 320, 48, 320, 480));
    EXPECT_EQ(FindFreePlace({}, 319, 48, 320, 480), (CPoint{0, 40}));
    EXPECT_FALSE(FindFreePlace({}, 48, 440, 320, 480));
    EXPECT_EQ(FindFreePlace({}, 48, 439, 320, 480), (CPoint{0, 40}));
}

TEST(FreePlace, FullPageHasNoPlace)
{
    std::vector<CRect> controls;
    for (int y = 0; y < 768; y += 40) {
        for (int x = 0; x < 1024; x += 40)
            controls.push_back({x, y, x + 40, y + 40});
    }
    EXPECT_FALSE(FindFreePlace(controls, 48, 48, 1024, 768));
    EXPECT_FALSE(FindFreePlace(controls, 1, 1, 1024, 768));
}

TEST(FreePlace, ExtremeSizesDoNotOverflow)
{
    const std::vector<CRect> wild{{-32768, -32768, 65534, 65534}};
    EXPECT_FALSE(FindFreePlace(wild, 48, 48, 1024, 768));
    EXPECT_FALSE(FindFreePlace({}, 65534, 65534, 1024, 768));
    EXPECT_FALSE(FindFreePlace({}, INT32_MAX, INT32_MAX, 1024, 768));
    EXPECT_EQ(FindFreePlace({}, INT32_MIN, INT32_MIN, 1024, 768), (CPoint{0, 40}));
    EXPECT_FALSE(FindFreePlace({{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}}, 48, 48, 1024, 768));
    EXPECT_EQ(FindFreePlace({{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}}, 0, 5, 1024, 768),
              (CPoint{0, 40}));
    EXPECT_FALSE(
        FindFreePlace({{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}}, 1, 1, INT32_MAX, INT32_MAX));
    EXPECT_EQ(FindFreePlace({{INT32_MIN, INT32_MIN, INT32_MAX, 1000}}, 1, 1, INT32_MAX, INT32_MAX),
              (CPoint{0, 1000}));
}

TEST(FreePlace, AgreesWithTheLiteralScanOnRandomPages)
{
    RandomPages pages(20240611);
    for (int i = 0; i < 3000; ++i) {
        const Screen screen = kScreens[pages.Between(0, 3)];
        std::vector<CRect> rects;
        switch (pages.Between(0, 7)) {
            case 0:
                pages.Scatter(rects, screen, pages.Between(0, 5));
                break;
            case 1:
            case 2:
            case 3:
                pages.Scatter(rects, screen, pages.Between(0, 40));
                break;
            case 4:
            case 5:
                pages.Scatter(rects, screen, pages.Between(40, 300));
                break;
            case 6:
                pages.Grid(rects, screen);
                break;
            case 7:
                pages.Extremes(rects);
                pages.Scatter(rects, screen, pages.Between(0, 10));
                break;
        }
        std::shuffle(rects.begin(), rects.end(), pages.Engine());
        ExpectSameAsLiteral(rects, pages.GroupSide(screen.w), pages.GroupSide(screen.h), screen);
        if (HasFatalFailure())
            return;
    }
}
