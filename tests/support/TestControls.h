#pragma once

#include "document/OSCPage.h"
#include "document/TextField.h"

#include <cstdint>
#include <memory>

// Puts a new control at the back of page, with its rectangle, type, selection
// and name, and returns it.
inline OSCControl& AddControl(OSCPage& page, int x, int y, int w, int h, int type = 0,
                              bool selected = false, const char* name = "")
{
    OSCControl& control = *page.controls.emplace_back(std::make_unique<OSCControl>());
    control.x = static_cast<std::int16_t>(x);
    control.y = static_cast<std::int16_t>(y);
    control.width = static_cast<std::int16_t>(w);
    control.height = static_cast<std::int16_t>(h);
    control.type = static_cast<std::uint8_t>(type);
    control.selected = selected;
    CopyTextField(control.name, name);
    return control;
}
