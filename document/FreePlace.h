#pragma once

#include "host/CPoint.h"
#include "host/CRect.h"

#include <optional>
#include <vector>

// Where a pasted group of width w and height h goes: the first top-left corner,
// scanning rows from y = 40 down (y < screenH - h) and, in each row, x from 0
// right (x < screenW - w), at which the group shares no point with any of the
// occupied rectangles. None when every place collides.
std::optional<CPoint> FindFreePlace(const std::vector<CRect>& occupied, int w, int h, int screenW,
                                    int screenH);
