#include "ImportedFields.h"

#include "ImportReport.h"
#include "document/ControlTables.h"
#include "document/OSCControl.h"
#include "document/TextField.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

namespace {

template <typename Number>
Number Clamped(double value, ImportReport& report)
{
    constexpr double low = std::numeric_limits<Number>::min();
    constexpr double high = std::numeric_limits<Number>::max();
    const double rounded = std::isnan(value) ? 0 : std::round(value);
    if (rounded < low || rounded > high || std::isnan(value)) {
        report.Count("number clamped to the editor's fields",
                     "numbers clamped to the editor's fields");
        return static_cast<Number>(std::isnan(value) ? 0 : rounded < low ? low : high);
    }
    return static_cast<Number>(rounded);
}

// Reads a whole number at the front of text, advancing past it.
bool TakeNumber(std::string_view& text, long long& number)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end == text.data())
        return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

bool TakePrefix(std::string_view& text, std::string_view prefix)
{
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

}  // namespace

void SetImportedAddress(OSCControl& control, std::string_view address, ImportReport& report)
{
    CopyTextField(control.command, address);
    std::string_view rest = TextOf(control.command);
    long long device = 0;
    long long number = 0;
    if (TakePrefix(rest, "/TRVX/ID") && TakeNumber(rest, device) &&
        TakePrefix(rest, "/SetVal/Ctl") && TakeNumber(rest, number) && rest.empty()) {
        control.deviceId = ImportedShort(static_cast<double>(device), report);
        control.controlNumber = ImportedShort(static_cast<double>(number), report);
    }
}

double NumberIn(std::string_view text)
{
    const std::string terminated(text);
    char* end = nullptr;
    const double value = std::strtod(terminated.c_str(), &end);
    return end == terminated.c_str() ? 0 : value;
}

std::int16_t ImportedShort(double value, ImportReport& report)
{
    return Clamped<std::int16_t>(value, report);
}

std::int32_t ImportedLong(double value, ImportReport& report)
{
    return Clamped<std::int32_t>(value, report);
}

std::uint8_t NearestColor(double red, double green, double blue)
{
    std::uint8_t nearest = 0;
    double best = std::numeric_limits<double>::infinity();
    for (int i = 0; i < kNamedColorCount; ++i) {
        const std::uint32_t word = Colors[i];
        const double dr = red - static_cast<double>(word & 0xFF);
        const double dg = green - static_cast<double>((word >> 8) & 0xFF);
        const double db = blue - static_cast<double>((word >> 16) & 0xFF);
        const double distance = dr * dr + dg * dg + db * db;
        if (distance < best) {
            best = distance;
            nearest = static_cast<std::uint8_t>(i);
        }
    }
    return nearest;
}
