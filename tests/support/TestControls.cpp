#include "TestControls.h"

#include "document/LayoutFile.h"
#include "document/TextField.h"
#include "document/Utf8Text.h"

#include <algorithm>
#include <cstdio>
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
    CopyTextField(c.name, BytesOf(control.value("name", "")));
    CopyTextField(c.command, BytesOf(control.value("command", "")));
    c.selected = control.value("selected", false);
    const json host = control.value("host", json({0, 0}));
    c.deviceId = host[0], c.controlNumber = host[1];
    c.reserved1 = control.value("reserved1", 0);
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
    note("name", Spelled(TextOf(c.name)), "");
    note("command", Spelled(TextOf(c.command)), "");
    note("selected", c.selected != 0, false);
    note("host", {c.deviceId, c.controlNumber}, {0, 0});
    return d;
}

std::string BytesOf(std::string_view spelled)
{
    std::string bytes;
    for (std::size_t at = 0; at < spelled.size(); ++at) {
        if (spelled.substr(at, 2) == "\\x" && at + 4 <= spelled.size()) {
            bytes +=
                static_cast<char>(std::stoi(std::string(spelled.substr(at + 2, 2)), nullptr, 16));
            at += 3;
        } else {
            bytes += spelled[at];
        }
    }
    return bytes;
}

std::string Spelled(std::string_view bytes)
{
    if (IsValidUtf8(bytes))
        return std::string(bytes);
    std::string spelled;
    for (const char byte : bytes) {
        char code[5];
        std::snprintf(code, sizeof code, "\\x%02X", static_cast<unsigned char>(byte));
        spelled += static_cast<unsigned char>(byte) < 0x80 ? std::string(1, byte) : code;
    }
    return spelled;
}

json SpellAll(const json& value)
{
    if (value.is_string())
        return Spelled(value.get<std::string>());
    if (value.is_array()) {
        json spelled = json::array();
        for (const json& item : value)
            spelled.push_back(SpellAll(item));
        return spelled;
    }
    if (value.is_object()) {
        json spelled = json::object();
        for (const auto& [key, item] : value.items())
            spelled[Spelled(key)] = SpellAll(item);
        return spelled;
    }
    return value;
}

json Json(const CRect& r)
{
    return {r.left, r.top, r.right, r.bottom};
}

CRect RectOf(const json& ltrb)
{
    return {ltrb[0], ltrb[1], ltrb[2], ltrb[3]};
}

std::string LayoutState(OSCProject& project, VornBasics* host)
{
    std::string state = WriteLayoutFile(project, host);
    state += {static_cast<char>(project.device), static_cast<char>(project.orientation)};
    state += std::to_string(project.currentPage) + ':';
    for (const auto& page : project.pages) {
        for (const auto& control : page->controls)
            state += control->selected != 0 ? '1' : '0';
        state += '|';
    }
    return state;
}
