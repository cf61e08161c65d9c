#include "ToscImport.h"

#include "ToscInflate.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "formats/ImportReport.h"
#include "formats/ImportedFields.h"
#include "formats/ImportedXml.h"
#include "formats/ScreenFit.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr char kWhat[] = "the TouchOSC file";

struct Frame {
    double x = 0;
    double y = 0;
    double w = 0;
    double h = 0;
};

pugi::xml_node Property(const pugi::xml_node& node, std::string_view key)
{
    for (const pugi::xml_node property : node.child("properties").children("property")) {
        if (property.child("key").text().get() == key)
            return property;
    }
    return {};
}

std::string_view PropertyText(const pugi::xml_node& node, std::string_view key)
{
    return Property(node, key).child("value").text().get();
}

// Read in place: large files hold many of them.
double Part(const pugi::xml_node& value, const char* name)
{
    return value.child(name).text().as_double();
}

Frame FrameOf(const pugi::xml_node& node)
{
    const pugi::xml_node value = Property(node, "frame").child("value");
    return {Part(value, "x"), Part(value, "y"), Part(value, "w"), Part(value, "h")};
}

bool IsContainer(std::string_view type)
{
    return type == "GROUP" || type == "PAGER" || type == "GRID";
}

std::optional<ControlType> TypeOf(const pugi::xml_node& node, std::string_view type)
{
    if (type == "FADER")
        return kFader;
    if (type == "RADIAL" || type == "ENCODER")
        return kKnob;
    if (type == "BUTTON")
        return NumberIn(PropertyText(node, "buttonType")) == 0 ? kPushButton : kToggle;
    if (type == "LABEL" || type == "TEXT")
        return kLabel;
    return std::nullopt;
}

// The index of node among its parent's nodes.
std::size_t IndexOf(const pugi::xml_node& node)
{
    std::size_t index = 0;
    for (pugi::xml_node sibling = node.previous_sibling("node"); sibling;
         sibling = sibling.previous_sibling("node"))
        ++index;
    return index;
}

// The address of the node's first OSC message: its path's parts one after
// another; without one, the app sends to "/" + the node's name.
std::string AddressOf(const pugi::xml_node& node, const pugi::xml_node& osc, std::string_view name)
{
    if (!osc)
        return "/" + std::string(name);
    std::string address;
    for (const pugi::xml_node partial : osc.child("path").children("partial")) {
        const std::string_view type = partial.child("type").text().get();
        const std::string_view value = partial.child("value").text().get();
        if (type == "CONSTANT")
            address += value;
        else if (type == "PROPERTY")
            address += PropertyText(node, value);
        else if (type == "INDEX")
            address += std::to_string(IndexOf(node));
    }
    return address;
}

class ToscWalk {
public:
    ToscWalk(const ScreenFit& fit, const ImportLimits& limits, ImportReport& report,
             std::string& error)
        : fit_(fit), limits_(limits), report_(report), error_(error)
    {
    }

    // Walks the node's children, placed relative to its absolute frame.
    bool Children(const pugi::xml_node& node, double left, double top, OSCPage& page)
    {
        for (const pugi::xml_node child : node.child("children").children("node")) {
            const Frame frame = FrameOf(child);
            const double x = left + frame.x;
            const double y = top + frame.y;
            const std::string_view type = child.attribute("type").value();
            if (type == "PAGER" && !pagerFound_) {
                // Its groups are the pages; the first pager only, nested ones are groups.
                pagerFound_ = true;
                for (const pugi::xml_node group : child.child("children").children("node")) {
                    if (!AddPage(PropertyText(group, "name")))
                        return false;
                    const Frame inner = FrameOf(group);
                    if (!Children(group, x + inner.x, y + inner.y, *pages_.back()))
                        return false;
                }
                continue;
            }
            if (const std::optional<ControlType> control = TypeOf(child, type)) {
                if (!AddControl(child, *control, {x, y, frame.w, frame.h}, page))
                    return false;
            } else if (!IsContainer(type)) {
                report_.LeaveOut(type.empty() ? "node without a type" : type);
            }
            if (!Children(child, x, y, page))
                return false;
        }
        return true;
    }

    bool AddPage(std::string_view name)
    {
        if (pages_.size() == limits_.maxCount) {
            error_ = "the layout has more than " + std::to_string(limits_.maxCount) + " pages";
            return false;
        }
        CopyTextField(pages_.emplace_back(std::make_unique<OSCPage>())->name, name);
        return true;
    }

    std::vector<std::unique_ptr<OSCPage>>& Pages() { return pages_; }

private:
    bool AddControl(const pugi::xml_node& node, ControlType type, const Frame& frame, OSCPage& page)
    {
        if (page.controls.size() == limits_.maxCount) {
            error_ = "the layout has more than " + std::to_string(limits_.maxCount) +
                     " controls on a page";
            return false;
        }
        auto& control = *page.controls.emplace_back(std::make_unique<OSCControl>());
        control.type = type;
        const std::string_view name = PropertyText(node, "name");
        CopyTextField(control.name, name);
        const pugi::xml_node messages = node.child("messages");
        const pugi::xml_node osc = messages.child("osc");
        SetImportedAddress(control, AddressOf(node, osc, name), report_);
        if (type != kLabel) {
            // Values run from 0 to 1 unless the message scales them.
            const pugi::xml_node argument = osc.child("arguments").child("partial");
            control.minValue = argument ? ImportedLong(Part(argument, "scaleMin"), report_) : 0;
            control.maxValue = argument ? ImportedLong(Part(argument, "scaleMax"), report_) : 1;
        }
        if (const pugi::xml_node color = Property(node, "color").child("value"))
            control.color = NearestColor(Part(color, "r") * 255, Part(color, "g") * 255,
                                         Part(color, "b") * 255);
        const auto midi = messages.children("midi");
        report_.Count("MIDI message not kept", "MIDI messages not kept",
                      std::distance(midi.begin(), midi.end()));
        // The title band sits above the screen, as in the other formats.
        fit_.Place(control, frame.x, frame.y + kTitleBandHeight, frame.w, frame.h, report_);
        return true;
    }

    const ScreenFit& fit_;
    const ImportLimits& limits_;
    ImportReport& report_;
    std::string& error_;
    std::vector<std::unique_ptr<OSCPage>> pages_;
    bool pagerFound_ = false;
};

}  // namespace

bool ReadToscFile(std::string_view bytes, OSCProject& project, ImportReport& report,
                  std::string& error, const ImportLimits& limits)
{
    std::string xml;
    if (!ToscXml(bytes, xml, limits, error))
        return false;
    pugi::xml_document document;
    if (!ParseImportedXml(xml, document, kWhat, limits, error))
        return false;
    const pugi::xml_node root = document.child("lexml").child("node");
    if (!root) {
        error = "not a TouchOSC file: it holds no <lexml> element with a node";
        return false;
    }
    const Frame screen = FrameOf(root);
    const std::uint8_t device =
        NearestDevice(std::min(screen.w, screen.h), std::max(screen.w, screen.h));
    const std::uint8_t orientation = screen.w > screen.h ? kHorizontal : kVertical;
    const ScreenFit fit(screen.w, screen.h + kTitleBandHeight, device, orientation);

    ImportReport found;
    ToscWalk walk(fit, limits, found, error);
    // Nodes outside a pager sit on one page named after the root, which stays
    // first when the layout also has a pager's pages.
    auto outside = std::make_unique<OSCPage>();
    CopyTextField(outside->name, PropertyText(root, "name"));
    if (!walk.Children(root, 0, 0, *outside))
        return false;
    std::vector<std::unique_ptr<OSCPage>>& pages = walk.Pages();
    if (pages.empty() || !outside->controls.empty()) {
        if (pages.size() == limits.maxCount) {
            error = "the layout has more than " + std::to_string(limits.maxCount) + " pages";
            return false;
        }
        pages.insert(pages.begin(), std::move(outside));
    }
    fit.Report(found);
    project.device = device;
    project.orientation = orientation;
    project.pages = std::move(pages);
    project.currentPage = 0;
    report = std::move(found);
    return true;
}
