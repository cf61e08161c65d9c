#include "TouchOSCImport.h"

#include "TouchOSCArchive.h"
#include "document/ControlTables.h"
#include "document/IgnoringCase.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "formats/DrawingOrder.h"
#include "formats/ImportReport.h"
#include "formats/ImportedFields.h"
#include "formats/ImportedXml.h"
#include "formats/ScreenFit.h"

#include <charconv>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

namespace {

constexpr std::pair<const char*, ControlType> kTypes[] = {
    {"labelh", kLabel}, {"labelv", kLabel},  {"faderh", kFader},
    {"faderv", kFader}, {"rotaryh", kKnob},  {"rotaryv", kKnob},
    {"encoder", kKnob}, {"toggle", kToggle}, {"push", kPushButton},
};

struct Screen {
    double width;
    double height;
};

// The upright screens of the layout's modes: phone, tablet, tall phone.
constexpr Screen kModeScreens[] = {{320, 480}, {768, 1024}, {320, 568}};
constexpr int kCustomMode = 3;

int Base64Value(char c)
{
    if (c >= 'A' && c <= 'Z')
        return c - 'A';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 26;
    if (c >= '0' && c <= '9')
        return c - '0' + 52;
    if (c == '+')
        return 62;
    if (c == '/')
        return 63;
    return -1;
}

// The bytes of well-formed base64 (whole quartets, padding only at the end);
// nothing for anything else.
std::optional<std::string> DecodedBase64(std::string_view code)
{
    if (code.size() % 4 != 0)
        return std::nullopt;
    std::size_t padding = 0;
    while (padding < 2 && padding < code.size() && code[code.size() - 1 - padding] == '=')
        ++padding;
    std::string bytes;
    unsigned bits = 0;
    int held = 0;
    for (std::size_t i = 0; i < code.size() - padding; ++i) {
        const int value = Base64Value(code[i]);
        if (value < 0)
            return std::nullopt;
        bits = (bits << 6) | static_cast<unsigned>(value);
        held += 6;
        if (held >= 8) {
            held -= 8;
            bytes.push_back(static_cast<char>((bits >> held) & 0xFF));
        }
    }
    return bytes;
}

// The length of the well-formed UTF-8 character at the front of text; 0 if none.
std::size_t CharacterLength(std::string_view text)
{
    const auto byte = [&](std::size_t at) {
        return at < text.size() ? static_cast<unsigned char>(text[at]) : 0u;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80)
        return 1;
    std::size_t length = 0;
    unsigned low = 0x80;  // the second byte's range depends on the lead
    unsigned high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : low;    // no overlong forms
        high = lead == 0xED ? 0x9F : high;  // no surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : low;
        high = lead == 0xF4 ? 0x8F : high;  // nothing above U+10FFFF
    }
    for (std::size_t k = 1; k < length; ++k) {
        const unsigned next = byte(k);
        if (next < (k == 1 ? low : 0x80) || next > (k == 1 ? high : 0xBF))
            return 0;
    }
    return length;
}

// Valid UTF-8 holding no control character (C0, DEL or C1).
bool IsPlainText(std::string_view text)
{
    while (!text.empty()) {
        const auto lead = static_cast<unsigned char>(text[0]);
        const std::size_t length = CharacterLength(text);
        const bool c1 = lead == 0xC2 && length == 2 && static_cast<unsigned char>(text[1]) < 0xA0;
        if (length == 0 || lead < 0x20 || lead == 0x7F || c1)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

// Texts are base64 of UTF-8 in files the app's editor wrote and plain in older
// ones: a value is decoded only when that gives plain text.
std::string TextOfField(std::string_view value)
{
    if (const auto decoded = DecodedBase64(value); decoded && IsPlainText(*decoded))
        return *decoded;
    return std::string(value);
}

// An address is plain when it starts as OSC addresses do.
std::string AddressOfField(std::string_view value)
{
    return value.starts_with('/') ? std::string(value) : TextOfField(value);
}

std::optional<ControlType> TypeOf(std::string_view word)
{
    for (const auto& [name, type] : kTypes) {
        if (word == name)
            return type;
    }
    return std::nullopt;
}

std::uint8_t ColorNamed(std::string_view word, ImportReport& report)
{
    for (int i = 0; i < kNamedColorCount; ++i) {
        if (EqualsIgnoringCase(word, ColorTypes[i]))
            return static_cast<std::uint8_t>(i);
    }
    report.Count("unknown colour made red", "unknown colours made red");
    return 0;
}

double Number(const pugi::xml_node& node, const char* name)
{
    return NumberIn(AttributeText(node, name));
}

// Where the layout's rectangles go: the file's screen, the editor's device and
// orientation, and the fit between them.
struct Placement {
    Screen upright;  // the file's screen, upright
    std::uint8_t device;
    std::uint8_t orientation;
};

bool PlacementOf(const pugi::xml_node& layout, Placement& placement, std::string& error)
{
    const std::string_view modeText = AttributeText(layout, "mode");
    int mode = 0;
    const char* const end = modeText.data() + modeText.size();
    const auto [stop, fault] = std::from_chars(modeText.data(), end, mode);
    if (!modeText.empty() &&
        (fault != std::errc() || stop != end || mode < 0 || mode > kCustomMode)) {
        error = "the layout's mode \"" + std::string(modeText) + "\" is none of 0, 1, 2 or 3";
        return false;
    }
    if (mode == kCustomMode) {
        placement.upright = {Number(layout, "w"), Number(layout, "h")};
        if (!(placement.upright.width >= 1 && placement.upright.height >= 1 &&
              placement.upright.width <= 32767 && placement.upright.height <= 32767)) {
            error = "the layout's custom screen size (w, h) is missing or out of range";
            return false;
        }
        placement.device = NearestDevice(placement.upright.width, placement.upright.height);
    } else {
        placement.upright = kModeScreens[mode];
        placement.device = mode == 1 ? kIPad : kIPhone;
    }
    // The file names orientations the opposite way to the editor.
    placement.orientation =
        AttributeText(layout, "orientation") == "vertical" ? kHorizontal : kVertical;
    return true;
}

std::unique_ptr<OSCControl> ControlOf(const pugi::xml_node& element, ControlType type,
                                      std::string_view pageName, const Placement& placement,
                                      const ScreenFit& fit, ImportReport& report)
{
    auto control = std::make_unique<OSCControl>();
    control->type = type;
    const std::string name = TextOfField(AttributeText(element, "name"));
    const std::string text = TextOfField(AttributeText(element, "text"));
    CopyTextField(control->name, type == kLabel && !text.empty() ? text : name);

    const pugi::xml_attribute address = element.attribute("osc_cs");
    SetImportedAddress(
        *control,
        address ? AddressOfField(address.value()) : "/" + std::string(pageName) + "/" + name,
        report);

    // The inverse of the editor's own export: upright layouts lose the title
    // band there, turned ones are stored a quarter turn round.
    const double x = Number(element, "x"), y = Number(element, "y");
    const double w = Number(element, "w"), h = Number(element, "h");
    if (placement.orientation == kVertical)
        fit.Place(*control, x, y + kTitleBandHeight, w, h, report);
    else
        fit.Place(*control, y, placement.upright.width - x - w, h, w, report);

    if (element.attribute("color"))
        control->color = ColorNamed(AttributeText(element, "color"), report);
    if (element.attribute("scalef") || element.attribute("scalet")) {
        control->minValue = ImportedLong(Number(element, "scalef"), report);
        control->maxValue = ImportedLong(Number(element, "scalet"), report);
        if (AttributeText(element, "inverted") == "true")
            std::swap(control->minValue, control->maxValue);
    }
    const auto midi = element.children("midi");
    report.Count("MIDI setting not kept", "MIDI settings not kept",
                 std::distance(midi.begin(), midi.end()));
    return control;
}

std::string TooMany(const char* what, const ImportLimits& limits)
{
    return std::string("the layout has more than ") + std::to_string(limits.maxCount) + " " + what;
}

}  // namespace

bool ReadTouchOSCXml(std::string& xml, OSCProject& project, ImportReport& report,
                     std::string& error, const ImportLimits& limits)
{
    pugi::xml_document document;
    if (!ParseImportedXml(xml, document, "index.xml", limits, error))
        return false;
    const pugi::xml_node layout = document.child("layout");
    if (!layout) {
        error = "index.xml holds no <layout> element";
        return false;
    }
    Placement placement{};
    if (!PlacementOf(layout, placement, error))
        return false;
    const Screen shown = placement.orientation == kVertical
                             ? placement.upright
                             : Screen{placement.upright.height, placement.upright.width};
    const ScreenFit fit(shown.width, shown.height, placement.device, placement.orientation);

    ImportReport found;
    std::vector<std::unique_ptr<OSCPage>> pages;
    for (const pugi::xml_node tabpage : layout.children("tabpage")) {
        if (pages.size() == limits.maxCount) {
            error = TooMany("pages", limits);
            return false;
        }
        auto page = std::make_unique<OSCPage>();
        const std::string pageName = TextOfField(AttributeText(tabpage, "name"));
        CopyTextField(page->name, pageName);
        for (const pugi::xml_node element : tabpage.children("control")) {
            const std::string_view word = AttributeText(element, "type");
            const std::optional<ControlType> type = TypeOf(word);
            if (!type) {
                found.LeaveOut(word.empty() ? "control without a type" : word);
                continue;
            }
            if (page->controls.size() == limits.maxCount) {
                error = TooMany("controls on a page", limits);
                return false;
            }
            page->controls.push_back(ControlOf(element, *type, pageName, placement, fit, found));
        }
        pages.push_back(std::move(page));
    }
    if (pages.empty()) {
        error = "the layout has no page";
        return false;
    }
    fit.Report(found);
    StackAsDrawn(pages);
    project.device = placement.device;
    project.orientation = placement.orientation;
    project.pages = std::move(pages);
    project.currentPage = 0;
    report = std::move(found);
    return true;
}

bool ReadTouchOSCFile(std::string_view bytes, OSCProject& project, ImportReport& report,
                      std::string& error, const ImportLimits& limits)
{
    std::string xml;
    return ReadTouchOSCArchive(bytes, xml, limits, error) &&
           ReadTouchOSCXml(xml, project, report, error, limits);
}
