#include "ControlRecords.h"

#include "document/ControlTables.h"
#include "document/IgnoringCase.h"
#include "document/OSCProject.h"
#include "document/TextField.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

struct Defaults {
    std::int16_t width, height;
    std::int32_t minValue, maxValue;
};

// Indexed by control type: label, fader, knob, toggle, push button.
constexpr Defaults kDefaults[kControlTypeCount] = {
    {120, 30, 0, 0}, {40, 160, 0, 127}, {60, 60, 0, 127}, {60, 40, 0, 1}, {60, 40, 0, 1}};

// Inserted controls stand for controls of this host device.
constexpr std::int16_t kInsertedDevice = 1;
constexpr int kHighestNumber = std::numeric_limits<std::int16_t>::max();

const char* const kFields[] = {"name",  "device", "control", "x",   "y",
                               "width", "height", "min",     "max", "type"};

std::int64_t IntegerField(const nlohmann::json& item, const char* field, std::int64_t low,
                          std::int64_t high)
{
    const nlohmann::json& value = item.at(field);
    if (!value.is_number_integer())
        throw std::invalid_argument(std::string("\"") + field + "\" is not a whole number");
    const auto number = value.get<std::int64_t>();
    if (number < low || number > high)
        throw std::invalid_argument(std::string("\"") + field + "\" is out of range " +
                                    std::to_string(low) + " to " + std::to_string(high));
    return number;
}

std::uint8_t TypeField(const nlohmann::json& item)
{
    const nlohmann::json& value = item.at("type");
    if (value.is_string()) {
        for (int type = 0; type < kControlTypeCount; ++type) {
            if (EqualsIgnoringCase(value.get<std::string>(), ControlTypes[type]))
                return static_cast<std::uint8_t>(type);
        }
        throw std::invalid_argument("\"type\" is not Label, Fader, Knob, Toggle or Push Button");
    }
    return static_cast<std::uint8_t>(IntegerField(item, "type", 0, kControlTypeCount - 1));
}

_OSCParms RecordOf(const nlohmann::json& item)
{
    if (!item.is_object())
        throw std::invalid_argument("it is not an object");
    for (const char* field : kFields) {
        if (!item.contains(field))
            throw std::invalid_argument(std::string("\"") + field + "\" is missing");
    }
    constexpr std::int64_t kShortLow = std::numeric_limits<std::int16_t>::min();
    constexpr std::int64_t kShortHigh = std::numeric_limits<std::int16_t>::max();
    constexpr std::int64_t kLongLow = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t kLongHigh = std::numeric_limits<std::int32_t>::max();
    if (!item.at("name").is_string())
        throw std::invalid_argument("\"name\" is not text");
    _OSCParms record{};
    CopyTextField(record.name, item.at("name").get<std::string>());
    record.deviceNumber = static_cast<std::int16_t>(IntegerField(item, "device", 0, kShortHigh));
    record.controlNumber = static_cast<std::int16_t>(IntegerField(item, "control", 0, kShortHigh));
    record.x = static_cast<std::int16_t>(IntegerField(item, "x", kShortLow, kShortHigh));
    record.y = static_cast<std::int16_t>(IntegerField(item, "y", kShortLow, kShortHigh));
    record.width = static_cast<std::int16_t>(IntegerField(item, "width", 1, kShortHigh));
    record.height = static_cast<std::int16_t>(IntegerField(item, "height", 1, kShortHigh));
    record.minValue = static_cast<std::int32_t>(IntegerField(item, "min", kLongLow, kLongHigh));
    record.maxValue = static_cast<std::int32_t>(IntegerField(item, "max", kLongLow, kLongHigh));
    record.type = TypeField(item);
    return record;
}

// The number n of a name "<kind> n", or 0 for any other name.
int NumberInName(std::string_view name, std::string_view kind)
{
    if (name.size() <= kind.size() + 1 || !name.starts_with(kind) || name[kind.size()] != ' ')
        return 0;
    int number = 0;
    for (const char digit : name.substr(kind.size() + 1)) {
        if (digit < '0' || digit > '9' || number > kHighestNumber / 10)
            return 0;
        number = number * 10 + (digit - '0');
    }
    return number;
}

}  // namespace

_OSCParms RecordForNewControl(int type, const OSCProject& layout)
{
    int nameNumber = 0;
    int controlNumber = 0;
    for (const auto& page : layout.pages) {
        for (const auto& control : page->controls) {
            nameNumber =
                std::max(nameNumber, NumberInName(TextOf(control->name), ControlTypes[type]));
            if (control->deviceId == kInsertedDevice)
                controlNumber = std::max<int>(controlNumber, control->controlNumber);
        }
    }
    const Defaults& defaults = kDefaults[type];
    _OSCParms record{};
    CopyTextField(record.name, std::string(ControlTypes[type]) + ' ' +
                                   std::to_string(std::min(nameNumber + 1, kHighestNumber)));
    record.deviceNumber = kInsertedDevice;
    record.controlNumber = static_cast<std::int16_t>(std::min(controlNumber + 1, kHighestNumber));
    record.width = defaults.width;
    record.height = defaults.height;
    record.minValue = defaults.minValue;
    record.maxValue = defaults.maxValue;
    record.type = static_cast<std::uint8_t>(type);
    return record;
}

std::optional<std::vector<_OSCParms>> ReadParameterRecords(std::string_view json,
                                                           std::string& error)
{
    const nlohmann::json list = nlohmann::json::parse(json, nullptr, false);
    if (list.is_discarded() || !list.is_array()) {
        error = "it is not a JSON list of parameters";
        return std::nullopt;
    }
    if (list.empty()) {
        error = "the list is empty";
        return std::nullopt;
    }
    std::vector<_OSCParms> records;
    for (std::size_t i = 0; i < list.size(); ++i) {
        try {
            records.push_back(RecordOf(list[i]));
        } catch (const std::invalid_argument& fault) {
            error = "in parameter " + std::to_string(i + 1) + ", " + fault.what();
            return std::nullopt;
        }
    }
    return records;
}
