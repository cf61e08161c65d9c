#include "ReceivedValues.h"

#include "OSCProject.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

std::int32_t ValueFor(const OSCControl& control, const ReceivedValue& value)
{
    switch (value.kind) {
        case ReceivedValue::kOn:
            return control.maxValue;
        case ReceivedValue::kOff:
            return control.minValue;
        default: {
            const double low = std::min(control.minValue, control.maxValue);
            const double high = std::max(control.minValue, control.maxValue);
            return static_cast<std::int32_t>(std::lround(std::clamp(value.number, low, high)));
        }
    }
}

}  // namespace

ValuesSet SetValuesAt(OSCProject& project, std::string_view address, const ReceivedValue& value)
{
    ValuesSet set;
    if (value.kind == ReceivedValue::kNumber && std::isnan(value.number))
        return set;
    const OSCPage* current = project.CurrentPage();
    for (const auto& page : project.pages) {
        for (const auto& control : page->controls) {
            const std::string_view command(control->command,
                                           strnlen(control->command, sizeof control->command));
            if (command != address)
                continue;
            control->value = ValueFor(*control, value);
            ++set.controls;
            set.onCurrentPage = set.onCurrentPage || page.get() == current;
        }
    }
    return set;
}
