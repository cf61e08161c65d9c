#include "LemurImport.h"

#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "formats/DrawingOrder.h"
#include "formats/ImportReport.h"
#include "formats/ImportedFields.h"
#include "formats/ImportedXml.h"
#include "formats/ScreenFit.h"

#include <cmath>
#include <iterator>
#include <memory>
#include <optional>

namespace {

constexpr char kWhat[] = "the Lemur file";

// Lemur's screens by device, as the editor's export writes them.
struct LemurScreen {
    double width;
    double height;
};
constexpr LemurScreen kLemurScreens[kDeviceCount] = {{480, 276}, {1024, 724}};

// Objects that hold others and are no control themselves.
bool IsContainer(std::string_view kind)
{
    return kind == "Container" || kind == "Tab";
}

std::optional<ControlType> TypeOf(const pugi::xml_node& window, std::string_view kind)
{
    if (kind == "Fader")
        return kFader;
    if (kind == "Knob")
        return kKnob;
    if (kind == "CustomButton")
        return NumberIn(AttributeText(window, "behavior")) == 1 ? kToggle : kPushButton;
    if (kind == "Switches")
        return kToggle;
    if (kind == "Pads")
        return kPushButton;
    if (kind == "Text")
        return kLabel;
    return std::nullopt;
}

// Lemur writes 0xRRGGBB; of an "on,off" pair the first is the colour shown.
std::uint8_t ColorOf(std::string_view text)
{
    const double value = NumberIn(text.substr(0, text.find(',')));
    constexpr double kWhite = 0xFFFFFF;
    const auto word = static_cast<std::uint32_t>(value >= 0 && value <= kWhite ? value
                                                 : value > kWhite              ? kWhite
                                                                               : 0);
    return ColorByHue(word >> 16 & 0xFF, word >> 8 & 0xFF, word & 0xFF);
}

// Scripts are behaviour the editor has no place for.
void CountScripts(const pugi::xml_node& node, ImportReport& report)
{
    const auto scripts = node.children("SCRIPT");
    report.Count("script not kept", "scripts not kept",
                 std::distance(scripts.begin(), scripts.end()));
}

// Where the page's rectangles go, and what walking it found so far.
struct PageWalk {
    const ScreenFit& fit;
    const ImportLimits& limits;
    ImportReport& report;
    OSCPage& page;
    std::string& error;
};

// The address the object sends to: its x parameter's message, or by default
// "/" + its name + "/x".
std::string AddressOf(const pugi::xml_node& window, const pugi::xml_node& x)
{
    const pugi::xml_attribute message = x.attribute("osc_message");
    return message ? std::string(message.value())
                   : "/" + std::string(AttributeText(window, "text")) + "/x";
}

void SetRange(OSCControl& control, const pugi::xml_node& x, ImportReport& report)
{
    const std::string_view scale = AttributeText(x, "osc_scale");
    const std::size_t comma = scale.find(',');
    control.minValue = 0;
    control.maxValue = 1;  // what Lemur sends without a scale
    if (comma != std::string_view::npos) {
        control.minValue = ImportedLong(NumberIn(scale.substr(0, comma)), report);
        control.maxValue = ImportedLong(NumberIn(scale.substr(comma + 1)), report);
    }
}

// Pads and Switches are grids of cells, each a button of its own in the app;
// other objects are one cell. A side the file does not give is one cell long.
struct Grid {
    double rows = 1;
    double columns = 1;
};

Grid GridOf(const pugi::xml_node& window, std::string_view kind)
{
    if (kind != "Pads" && kind != "Switches")
        return {};
    const auto cells = [&](const char* side) {
        const double count = std::floor(NumberIn(AttributeText(window, side)));
        return count >= 1 ? count : 1;
    };
    return {cells("row"), cells("column")};
}

// Adds the object's controls: one, or one per cell of a grid, row by row,
// named and addressed after the object with the cell's number.
bool AddControls(const pugi::xml_node& window, std::string_view kind, ControlType type, double x,
                 double y, PageWalk& walk)
{
    const Grid grid = GridOf(window, kind);
    const double cells = grid.rows * grid.columns;
    if (cells > static_cast<double>(walk.limits.maxCount - walk.page.controls.size())) {
        walk.error = "the layout has more than " + std::to_string(walk.limits.maxCount) +
                     " controls on a page";
        return false;
    }
    const std::string_view name = AttributeText(window, "text");
    const pugi::xml_node parameter = window.find_child_by_attribute("PARAM", "name", "x=");
    const std::string address = AddressOf(window, parameter);
    const double width = NumberIn(AttributeText(window, "width")) / grid.columns;
    const double height = NumberIn(AttributeText(window, "height")) / grid.rows;
    const auto count = static_cast<std::size_t>(cells);
    for (std::size_t cell = 0; cell < count; ++cell) {
        auto& control = *walk.page.controls.emplace_back(std::make_unique<OSCControl>());
        control.type = type;
        const std::string number = count == 1 ? "" : std::to_string(cell + 1);
        if (type == kLabel) {
            // A text sends nothing.
            CopyTextField(control.name, AttributeText(window, "content"));
        } else {
            CopyTextField(control.name,
                          count == 1 ? std::string(name) : std::string(name) + " " + number);
            SetImportedAddress(control, count == 1 ? address : address + "/" + number, walk.report);
            SetRange(control, parameter, walk.report);
        }
        if (window.attribute("color"))
            control.color = ColorOf(AttributeText(window, "color"));
        const auto column = static_cast<double>(cell % static_cast<std::size_t>(grid.columns));
        const auto row = static_cast<double>(cell / static_cast<std::size_t>(grid.columns));
        // The inverse of the export, which takes the title band off.
        walk.fit.Place(control, x + column * width, y + kTitleBandHeight + row * height, width,
                       height, walk.report);
    }
    if (count > 1) {
        walk.report.Note(std::string(kind) + " " + std::string(name) + ": " +
                         std::to_string(count) + (type == kToggle ? " toggles" : " buttons"));
    }
    return true;
}

bool WalkWindows(const pugi::xml_node& parent, double left, double top, PageWalk& walk)
{
    for (const pugi::xml_node window : parent.children("WINDOW")) {
        const std::string_view kind = AttributeText(window, "class");
        const double x = left + NumberIn(AttributeText(window, "x"));
        const double y = top + NumberIn(AttributeText(window, "y"));
        CountScripts(window, walk.report);
        if (const std::optional<ControlType> type = TypeOf(window, kind)) {
            if (!AddControls(window, kind, *type, x, y, walk))
                return false;
        } else if (!IsContainer(kind)) {
            walk.report.LeaveOut(kind.empty() ? "object without a class" : kind);
        }
        // Children sit relative to the object that holds them.
        if (!WalkWindows(window, x, y, walk))
            return false;
    }
    return true;
}

}  // namespace

bool ReadLemurFile(std::string_view bytes, OSCProject& project, ImportReport& report,
                   std::string& error, const ImportLimits& limits)
{
    if (bytes.size() > limits.maxXmlBytes) {
        error = std::string(kWhat) + " is larger than " + SizeText(limits.maxXmlBytes);
        return false;
    }
    std::string xml(bytes);
    pugi::xml_document document;
    if (!ParseImportedXml(xml, document, kWhat, limits, error))
        return false;
    const pugi::xml_node root = document.child("JZML");
    if (!root) {
        error = "not a Lemur file: it holds no <JZML> element";
        return false;
    }
    const pugi::xml_node screen = root.child("PROJECT");
    const double width = screen.attribute("width") ? NumberIn(AttributeText(screen, "width"))
                                                   : kLemurScreens[kIPad].width;
    const double height = screen.attribute("height") ? NumberIn(AttributeText(screen, "height"))
                                                     : kLemurScreens[kIPad].height;
    std::uint8_t device = kIPhone;
    double best = 0;
    for (int d = 0; d < kDeviceCount; ++d) {
        const double distance =
            std::abs(width - kLemurScreens[d].width) + std::abs(height - kLemurScreens[d].height);
        if (d == 0 || distance < best) {
            best = distance;
            device = static_cast<std::uint8_t>(d);
        }
    }
    const std::uint8_t orientation = width >= height ? kHorizontal : kVertical;
    // The export takes the title band off the editor's screen.
    const ScreenFit fit(width, height + kTitleBandHeight, device, orientation);

    ImportReport found;
    CountScripts(root, found);
    std::vector<std::unique_ptr<OSCPage>> pages;
    for (const pugi::xml_node interface : root.children("WINDOW")) {
        CountScripts(interface, found);
        if (AttributeText(interface, "class") != "JAZZINTERFACE") {
            found.LeaveOut(AttributeText(interface, "class"));
            continue;
        }
        if (pages.size() == limits.maxCount) {
            error = "the layout has more than " + std::to_string(limits.maxCount) + " pages";
            return false;
        }
        auto& page = *pages.emplace_back(std::make_unique<OSCPage>());
        CopyTextField(page.name, AttributeText(interface, "text"));
        PageWalk walk{fit, limits, found, page, error};
        if (!WalkWindows(interface, 0, 0, walk))
            return false;
    }
    if (pages.empty()) {
        error = "the layout has no page";
        return false;
    }
    fit.Report(found);
    StackAsDrawn(pages);
    project.device = device;
    project.orientation = orientation;
    project.pages = std::move(pages);
    project.currentPage = 0;
    report = std::move(found);
    return true;
}
