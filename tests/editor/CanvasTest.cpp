// The names the canvas of an editor paints. What the mouse and the scroll bars
// do on it, and its other pixels, are rules of data/editor.json.
#include "EditorFixture.h"

namespace {

// Rows of r in which some pixel's channel is brighter than the green
// controls' backgrounds: where text was written, in white when red shows.
int InkedRows(const QImage& image, const CRect& r, int (*channel)(QRgb) = qGreen)
{
    int rows = 0;
    for (int y = r.top; y < r.bottom; ++y) {
        bool inked = false;
        for (int x = r.left; x < r.right && !inked; ++x)
            inked = channel(image.pixel(x, y)) > 0xA0;
        rows += inked;
    }
    return rows;
}

TEST_F(EditorTest, NamesWrapInWhiteInsideControlsButLabelsStayOnOneLineInTheirColour)
{
    Lay(json::parse(R"({"controls": [
        {"at": [100, 100, 40, 60], "name": "WWW WWW", "color": 1},
        {"type": "toggle", "at": [200, 100, 40, 60], "name": "WWW WWW", "color": 1}]})"));
    const QImage image = Paint();
    EXPECT_GT(InkedRows(image, {100, 100, 140, 118}), 5);
    EXPECT_EQ(InkedRows(image, {100, 118, 140, 160}), 0);
    EXPECT_EQ(InkedRows(image, {100, 100, 140, 160}, qRed), 0) << "a label's text is green";
    EXPECT_GT(InkedRows(image, {203, 118, 237, 157}), 5) << "the second line of the name";
    EXPECT_GT(InkedRows(image, {203, 100, 237, 157}, qRed), 5) << "a name is white";
}

}  // namespace
