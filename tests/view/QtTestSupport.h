#pragma once

#include "document/OSCPage.h"
#include "host/CRect.h"
#include "tests/support/TestFiles.h"

#include <QImage>

#include <string>

// What the test programs of the canvas and the editor share.

using nlohmann::json;

json Json(const CRect& r);
CRect RectOf(const json& ltrb);
// A control as the cases write it: {"at": [x, y, w, h]} and, where they are
// not a new control's, "type" (by name), "color", "value", "range": [min,
// max], "name", "command" and "selected".
OSCControl& AddControl(OSCPage& page, const json& control);
json Describe(const OSCControl& control);
// A pixel as "#rrggbb".
std::string ColourAt(const QImage& image, int x, int y);
