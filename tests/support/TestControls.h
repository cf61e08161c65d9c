#pragma once

#include "document/OSCPage.h"
#include "document/OSCProject.h"
#include "host/CRect.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

// A control as the cases write it: {"at": [x, y, w, h]} and, where they are
// not a new control's, "type" (by name), "color", "value", "range": [min,
// max], "name", "command", "selected" and "host": [deviceId, controlNumber].
// AddControl puts it at the back of the page; Describe writes a control back
// in that form.
OSCControl& AddControl(OSCPage& page, const nlohmann::json& control);
nlohmann::json Describe(const OSCControl& control);

// Texts as the cases write them: a byte that is no part of UTF-8 is spelled
// \xHH, as layouts from other tools hold such bytes. SpellAll spells every
// string and key of a JSON value.
std::string BytesOf(std::string_view spelled);
std::string Spelled(std::string_view bytes);
nlohmann::json SpellAll(const nlohmann::json& value);

// What undo must give back of a layout: its file's bytes, the screen, the
// current page and the selection of every page.
std::string LayoutState(OSCProject& project, VornBasics* host);

// A rectangle as [left, top, right, bottom].
nlohmann::json Json(const CRect& r);
CRect RectOf(const nlohmann::json& ltrb);
