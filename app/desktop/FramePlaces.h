#pragma once

#include <QRect>

// Where the index-th of cascaded frames goes in a work area: two thirds of its
// width and height, each next frame a step lower and further right, so that
// every title bar shows, starting again at the top-left corner before a
// frame would leave the area.
QRect CascadePlace(const QRect& workArea, int index, int step);

// Where the index-th of count tiled frames goes in a work area: frames in a
// grid of near-square rows and columns, read row by row, each at least two
// thirds of the area's width and height (the whole of it along an axis with
// one row or column). Tiles that large overlap: the frames spread evenly from
// the area's top-left corner to its bottom-right one, so that each later frame
// raised leaves the start of every earlier frame's title bar showing.
QRect TilePlace(const QRect& workArea, int index, int count);
