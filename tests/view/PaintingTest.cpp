// Painted pixels of known colour: each control type in and out of test mode,
// the title strip, selection frames and the feedback of a drag.
#include "CanvasFixture.h"
#include "view/DeviceContext.h"

namespace {

constexpr ColorRef kGreen = 0x00FF00, kHalf = 0x007F00, kQuarter = 0x003F00, kEighth = 0x001F00;
constexpr ColorRef kBlack = 0, kGrey = 0x3F3F3F, kWhite = 0xFFFFFF, kYellow = 0x00FFFF;

ColorRef At(const QImage& image, int x, int y)
{
    const QRgb rgb = image.pixel(x, y);
    return static_cast<ColorRef>(qRed(rgb) | qGreen(rgb) << 8 | qBlue(rgb) << 16);
}

// Rows from top to bottom of the rectangle in which some pixel is brighter
// than its background: where text was written.
int InkedRows(const QImage& image, const CRect& r)
{
    int rows = 0;
    for (int y = r.top; y < r.bottom; ++y) {
        bool inked = false;
        for (int x = r.left; x < r.right && !inked; ++x)
            inked = qGreen(image.pixel(x, y)) > 0xA0;
        rows += inked;
    }
    return rows;
}

class PaintingTest : public CanvasTest {
protected:
    OSCControl& AddGreen(ControlType type, int x, int y, int w, int h, const char* name = "")
    {
        OSCControl& c = Add(type, x, y, w, h, name);
        c.color = 1;
        return c;
    }
};

TEST_F(PaintingTest, EachControlTypeShowsItsColoursAndOnlyTestModeShowsValues)
{
    AddGreen(kLabel, 100, 100, 80, 40);
    AddGreen(kPushButton, 200, 100, 80, 40);
    AddGreen(kToggle, 300, 100, 80, 40).value = 127;
    AddGreen(kFader, 400, 100, 40, 200).value = 127;
    AddGreen(kKnob, 500, 100, 60, 40).value = 0;
    const struct {
        const char* what;
        QPoint at;
        ColorRef editing, testing;
    } cases[] = {
        {"background", {700, 600}, kBlack, kBlack},
        {"title strip", {4, 20}, kGrey, kGrey},
        {"test mode banner", {100, 28}, kGrey, 0x00007F},
        {"label", {105, 135}, kQuarter, kQuarter},
        {"button", {205, 135}, kHalf, kHalf},
        {"toggle outline", {300, 120}, kGreen, kGreen},
        {"toggle, lit in test mode", {305, 135}, kEighth, kGreen},
        {"toggle outside its lit part", {302, 135}, kEighth, kEighth},
        {"fader cap", {420, 290}, kGreen, kGreen},
        {"fader level", {420, 150}, kEighth, kGreen},
        {"fader outline", {400, 150}, kGreen, kGreen},
        {"knob ring", {506, 120}, kEighth, kEighth},
        {"knob hub", {520, 120}, kBlack, kBlack},
        {"knob pointer, lower left at its minimum", {520, 130}, kEighth, kGreen},
        {"right of the knob's circle", {550, 120}, kBlack, kBlack},
    };
    const QImage editing = Paint();
    view->testMode = 1;
    const QImage testing = Paint();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(At(editing, c.at.x(), c.at.y()), c.editing);
        EXPECT_EQ(At(testing, c.at.x(), c.at.y()), c.testing);
    }
}

TEST_F(PaintingTest, NamesWrapInsideControlsButLabelsStayOnOneLine)
{
    AddGreen(kLabel, 100, 100, 40, 60, "WWW WWW");
    AddGreen(kToggle, 200, 100, 40, 60, "WWW WWW");
    const QImage image = Paint();
    EXPECT_GT(InkedRows(image, {100, 100, 140, 118}), 5);
    EXPECT_EQ(InkedRows(image, {100, 118, 140, 160}), 0);
    EXPECT_GT(InkedRows(image, {203, 118, 237, 157}), 5) << "the second line of the name";
}

TEST_F(PaintingTest, TheFirstControlIsOnTopAndSelectionsAreFramedInWhite)
{
    AddGreen(kPushButton, 100, 100, 80, 80).selected = 1;
    Add(kPushButton, 150, 150, 80, 80).color = 2;  // blue, underneath
    const QImage image = Paint();
    EXPECT_EQ(At(image, 170, 170), kHalf);
    EXPECT_EQ(At(image, 200, 200), 0x7F0000u);
    EXPECT_EQ(At(image, 100, 140), kWhite);
    EXPECT_EQ(At(image, 179, 140), kWhite);
    EXPECT_EQ(At(image, 180, 140), kBlack) << "the frame stays inside the rectangle";
    EXPECT_EQ(At(image, 178, 140), kHalf) << "and is one pixel wide";
    EXPECT_EQ(At(image, 229, 200), 0x7F0000u) << "unselected: no frame";
}

TEST_F(PaintingTest, DragsShowYellowFramesWhereTheyWillEnd)
{
    AddGreen(kToggle, 100, 100, 40, 40).selected = 1;
    Press({600, 400});
    Move({700, 500});
    QImage image = Paint();
    EXPECT_EQ(At(image, 600, 450), kYellow);
    EXPECT_EQ(At(image, 699, 450), kYellow);
    EXPECT_EQ(At(image, 650, 499), kYellow);
    Release({700, 500});

    Press({110, 110});
    Move({110, 310});
    image = Paint();
    EXPECT_EQ(At(image, 100, 320), kYellow);
    EXPECT_EQ(At(image, 120, 130), kEighth) << "the control stays until the release";
    Release({110, 310});
}

TEST_F(PaintingTest, APageThatIsMissingPaintsOnlyTheTitleStrip)
{
    project.pages.clear();
    view->testMode = 1;
    const QImage image = Paint();
    EXPECT_EQ(At(image, 4, 20), kGrey);
    EXPECT_EQ(At(image, 100, 28), 0x00007Fu);
    EXPECT_EQ(At(image, 500, 400), kBlack);
}

}  // namespace
