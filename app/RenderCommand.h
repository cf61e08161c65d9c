#pragma once

#include "CommandArguments.h"

#include <string>

// vornosc render: one page of a layout painted by the canvas into a PNG the
// size of the device's screen, with no display needed.
int RunRender(const CommandArguments& arguments);
std::string RenderHelp();
extern const char kRenderSynopsis[];
