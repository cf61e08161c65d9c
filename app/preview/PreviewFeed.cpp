#include "PreviewFeed.h"

#include "document/ControlTables.h"
#include "document/TextField.h"

#include <nlohmann/json.hpp>

#include <cstring>

namespace {

using Json = nlohmann::ordered_json;

std::string Text(const Json& json)
{
    // Layout texts are bytes; a name that is not UTF-8 shows with U+FFFD.
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string NameOf(const std::array<char, 256>& name)
{
    return {name.data(), ::strnlen(name.data(), name.size() - 1)};
}

Json LayoutMessage(const std::optional<LayoutSnapshot>& layout)
{
    Json pages = Json::array();
    int width = 0, height = 0, current = 0;
    if (layout) {
        const int screen = ScreenIndex(layout->device, layout->orientation);
        width = ScreenW[screen];
        height = ScreenH[screen];
        current = layout->currentPage;
        for (const PageCopy& page : layout->pages)
            pages.push_back(NameOf(page.name));
    }
    return {{"kind", "layout"},
            {"width", width},
            {"height", height},
            {"pages", pages},
            {"current", current}};
}

Json ControlJson(const OSCControl& control)
{
    return {{"type", control.type},    {"color", control.color},
            {"x", control.x},          {"y", control.y},
            {"width", control.width},  {"height", control.height},
            {"min", control.minValue}, {"max", control.maxValue},
            {"value", control.value},  {"name", std::string(TextOf(control.name))}};
}

Json PageMessage(const LayoutSnapshot& layout, int index)
{
    Json controls = Json::array();
    for (const OSCControl& control : layout.pages[index].controls)
        controls.push_back(ControlJson(control));
    return {{"kind", "page"}, {"page", index}, {"controls", controls}};
}

// Equal in all that a browser draws but the value.
bool DrawnAlike(const OSCControl& a, const OSCControl& b)
{
    return a.type == b.type && a.color == b.color && a.x == b.x && a.y == b.y &&
           a.width == b.width && a.height == b.height && a.minValue == b.minValue &&
           a.maxValue == b.maxValue && TextOf(a.name) == TextOf(b.name);
}

bool DrawnAlike(const PageCopy& a, const PageCopy& b)
{
    if (a.controls.size() != b.controls.size())
        return false;
    for (std::size_t i = 0; i < a.controls.size(); ++i) {
        if (!DrawnAlike(a.controls[i], b.controls[i]))
            return false;
    }
    return true;
}

}  // namespace

std::vector<std::string> PreviewFeed::Update(const std::optional<LayoutSnapshot>& now)
{
    std::vector<std::string> messages;
    const std::optional<LayoutSnapshot> before = std::exchange(told_, now);
    const Json layout = LayoutMessage(now);
    if (!before || layout != LayoutMessage(before))
        messages.push_back(Text(layout));
    if (!now)
        return messages;
    for (std::size_t page = 0; page < now->pages.size(); ++page) {
        const PageCopy& shown = now->pages[page];
        const bool known = before && page < before->pages.size();
        if (!known || !DrawnAlike(before->pages[page], shown)) {
            messages.push_back(Text(PageMessage(*now, static_cast<int>(page))));
            continue;
        }
        Json values = Json::array();
        for (std::size_t i = 0; i < shown.controls.size(); ++i) {
            if (shown.controls[i].value != before->pages[page].controls[i].value)
                values.push_back({i, shown.controls[i].value});
        }
        if (!values.empty())
            messages.push_back(Text({{"kind", "values"}, {"page", page}, {"values", values}}));
    }
    return messages;
}

std::vector<std::string> PreviewFeed::Everything() const
{
    std::vector<std::string> messages{Text(LayoutMessage(told_))};
    if (told_) {
        for (std::size_t page = 0; page < told_->pages.size(); ++page)
            messages.push_back(Text(PageMessage(*told_, static_cast<int>(page))));
    }
    return messages;
}
