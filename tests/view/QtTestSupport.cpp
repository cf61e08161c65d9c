#include "QtTestSupport.h"

json Json(const CRect& r)
{
    return {r.left, r.top, r.right, r.bottom};
}

CRect RectOf(const json& ltrb)
{
    return {ltrb[0], ltrb[1], ltrb[2], ltrb[3]};
}

std::string ColourAt(const QImage& image, int x, int y)
{
    if (!image.valid(x, y))
        return "outside";
    return image.pixelColor(x, y).name().toStdString();
}
