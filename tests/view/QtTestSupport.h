#pragma once

#include "tests/support/TestControls.h"
#include "tests/support/TestFiles.h"

#include <QImage>

#include <string>

// What the test programs of the canvas and the editor share.

using nlohmann::json;

// A pixel as "#rrggbb", or "outside" the image.
std::string ColourAt(const QImage& image, int x, int y);
