#pragma once

#include <QRect>

// Where the index-th of cascaded frames goes in a work area: two thirds of its
// width and height, each next frame a step lower and further right, so that
// every title bar shows, starting again at the top-left corner before a
// frame would leave the area.
QRect CascadePlace(const QRect& workArea, int index, int step);
