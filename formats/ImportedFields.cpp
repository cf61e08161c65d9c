#include "ImportedFields.h"

#include "ImportReport.h"
#include "document/ControlTables.h"
#include "document/OSCControl.h"
#include "document/TextField.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

namespace {

// The colour indexes by name, as ColorTypes lists them.
enum NamedColor : std::uint8_t {
    kRed = 0,
    kGreen = 1,
    kBlue = 2,
    kYellow = 3,
    kPurple = 4,
    kOrange = 6,
    kBrown = 7,
    kPink = 8,
};

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
    // Plain decimals, as nearly all are, are read without a copy; whatever
    // from_chars does not take whole (signs, spaces, hexadecimal) strtod reads.
    double number = 0;
    const char* const last = text.data() + text.size();
    if (const auto [stop, error] = std::from_chars(text.data(), last, number);
        error == std::errc() && stop == last && !text.empty())
        return number;
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

std::uint8_t ColorByHue(double red, double green, double blue)
{
    const auto channel = [](double value) {
        return std::isnan(value) ? 0.0 : std::clamp(value, 0.0, 255.0);
    };
    const double r = channel(red), g = channel(green), b = channel(blue);
    const double high = std::max({r, g, b});
    const double spread = high - std::min({r, g, b});
    const double brightness = high / 255;
    if (brightness < 0.12 || spread < 0.2 * high)
        return kGray;
    double hue = high == r   ? 60 * (g - b) / spread
                 : high == g ? 120 + 60 * (b - r) / spread
                             : 240 + 60 * (r - g) / spread;
    if (hue < 0)
        hue += 360;
    // Each band holds the hues below its bound; the last is red again.
    struct Band {
        double below;
        NamedColor color;
    };
    constexpr Band kBands[] = {{15, kRed},   {45, kOrange},  {75, kYellow}, {165, kGreen},
                               {265, kBlue}, {315, kPurple}, {345, kPink},  {360, kRed}};
    for (const Band& band : kBands) {
        if (hue < band.below)
            return band.color == kOrange && brightness < 0.6 ? kBrown : band.color;
    }
    return kRed;
}
