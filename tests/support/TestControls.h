#pragma once

#include "document/OSCPage.h"
#include "host/CRect.h"

#include <nlohmann/json.hpp>

// A control as the cases write it: {"at": [x, y, w, h]} and, where they are
// not a new control's, "type" (by name), "color", "value", "range": [min,
// max], "name", "command", "selected" and "host": [deviceId, controlNumber]. AddControl puts it at the back of
// the page; Describe writes a control back in that form.
OSCControl& AddControl(OSCPage& page, const nlohmann::json& control);
nlohmann::json Describe(const OSCControl& control);

// A rectangle as [left, top, right, bottom].
nlohmann::json Json(const CRect& r);
CRect RectOf(const nlohmann::json& ltrb);
