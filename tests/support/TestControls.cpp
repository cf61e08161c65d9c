#include "TestControls.h"

#include "document/TextField.h"

#include <algorithm>
#include <string>
#include <vector>

using nlohmann::json;

namespace {
const std::vector<std::string> kTypes = {"label", "fader", "knob", "toggle", "button"};
}

OSCControl& AddControl(OSCPage& page, const json& control)
{
    OSCControl& c = *page.controls.emplace_back(std::make_unique<OSCControl>());
    const json& at = control["at"];
    c.x = at[0], c.y = at[1], c.width = at[2], c.height = at[3];
    const json type = control.value("type", json("label"));
    c.type = type.is_number() ? type.get<int>()
                              : std::find(kTypes.begin(), kTypes.end(), type) - kTypes.begin();
    c.color = control.value("color", 0);
    c.value = control.value("value", 0);
    const json range = control.value("range", json({0, 127}));
    c.minValue = range[0], c.maxValue = range[1];
    CopyTextField(c.name, control.value("name", ""));
    CopyTextField(c.command, control.value("command", ""));
    c.selected = control.value("selected", false);
    const json host = control.value("host", json({0, 0}));
    c.deviceId = host[0], c.controlNumber = host[1];
    return c;
}

json Describe(const OSCControl& c)
{
    json d = {{"at", {c.x, c.y, c.width, c.height}}};
    const auto note = [&d](const char* key, const json& value, const json& unset) {
        if (value != unset)
            d[key] = value;
    };
    note("type", c.type < kTypes.size() ? json(kTypes[c.type]) : json(c.type), "label");
    note("color", c.color, 0);
    note("value", c.value, 0);
    note("range", {c.minValue, c.maxValue}, {0, 127});
    note("name", c.name, "");
    note("command", c.command, "");
    note("selected", c.selected != 0, false);
    note("host", {c.deviceId, c.controlNumber}, {0, 0});
    return d;
}

json Json(const CRect& r)
{
    return {r.left, r.top, r.right, r.bottom};
}

CRect RectOf(const json& ltrb)
{
    return {ltrb[0], ltrb[1], ltrb[2], ltrb[3]};
}
