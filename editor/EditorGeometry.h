#pragma once

#include "host/CRect.h"

// Where the canvas goes in an editor of client size cx by cy: right of the
// 200-pixel page list strip, centred in what is left when the screen fits,
// at the strip's edge and the top when it does not.
CRect ViewPlacement(int cx, int cy, int screenW, int screenH);

// Where a new editor's frame goes: where it last stood when that had a size,
// otherwise the right half of the host window, a little short of its right
// edge and a quarter short of its bottom.
CRect FramePlacement(const CRect& stored, const CRect& hostClient);
