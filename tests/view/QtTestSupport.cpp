#include "QtTestSupport.h"

std::string ColourAt(const QImage& image, int x, int y)
{
    if (!image.valid(x, y))
        return "outside";
    return image.pixelColor(x, y).name().toStdString();
}
