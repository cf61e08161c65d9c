// Painted pixels of known colour: each control type in and out of test mode,
// the title strip, selection frames and the feedback of a drag.
#include "CanvasFixture.h"

namespace {

// A pixel as "#rrggbb".
std::string At(const QImage& image, int x, int y)
{
    return image.pixelColor(x, y).name().toStdString();
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
    const QImage editing = Paint();
    view->testMode = 1;
    const QImage testing = Paint();
    for (const json& c : CanvasCases("pixels")) {
        const int x = c["at"][0], y = c["at"][1];
        EXPECT_EQ(At(editing, x, y), c["editing"]) << c["what"];
        EXPECT_EQ(At(testing, x, y), c["testing"]) << c["what"];
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
    EXPECT_EQ(At(image, 170, 170), "#007f00");
    EXPECT_EQ(At(image, 200, 200), "#00007f");
    EXPECT_EQ(At(image, 100, 140), "#ffffff");
    EXPECT_EQ(At(image, 179, 140), "#ffffff");
    EXPECT_EQ(At(image, 180, 140), "#000000") << "the frame stays inside the rectangle";
    EXPECT_EQ(At(image, 178, 140), "#007f00") << "and is one pixel wide";
    EXPECT_EQ(At(image, 229, 200), "#00007f") << "unselected: no frame";
}

TEST_F(PaintingTest, DragsShowYellowFramesWhereTheyWillEnd)
{
    AddGreen(kToggle, 100, 100, 40, 40).selected = 1;
    Press({600, 400});
    Move({700, 500});
    QImage image = Paint();
    EXPECT_EQ(At(image, 600, 450) + At(image, 699, 450) + At(image, 650, 499),
              "#ffff00#ffff00#ffff00");
    Release({700, 500});

    Press({110, 110});
    Move({110, 310});
    image = Paint();
    EXPECT_EQ(At(image, 100, 320), "#ffff00");
    EXPECT_EQ(At(image, 120, 130), "#001f00") << "the control stays until the release";
    Release({110, 310});
}

TEST_F(PaintingTest, APageThatIsMissingPaintsOnlyTheTitleStrip)
{
    project.pages.clear();
    view->testMode = 1;
    const QImage image = Paint();
    EXPECT_EQ(At(image, 4, 20) + At(image, 100, 28) + At(image, 500, 400), "#3f3f3f#7f0000#000000");
}

}  // namespace
