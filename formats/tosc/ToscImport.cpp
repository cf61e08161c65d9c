#include "ToscImport.h"

#include "ToscInflate.h"
#include "ToscNode.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "formats/DrawingOrder.h"
#include "formats/ImportReport.h"
#include "formats/ImportedFields.h"
#include "formats/ImportedXml.h"
#include "formats/ScreenFit.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr char kWhat[] = "the TouchOSC file";

bool IsContainer(std::string_view type)
{
    return type == "GROUP" || type == "PAGER" || type == "GRID";
}

std::optional<ControlType> TypeOf(const ToscNode& node)
{
    const std::string_view type = node.type;
    if (type == "FADER")
        return kFader;
    if (type == "RADIAL" || type == "ENCODER")
        return kKnob;
    if (type == "BUTTON")
        return node.momentary ? kPushButton : kToggle;
    if (type == "LABEL" || type == "TEXT")
        return kLabel;
    return std::nullopt;
}

// The nodes a hidden node takes out of sight: itself and all it holds, but for
// the groups that only hold them. Walked without recursion, as nothing limits
// how deep a hidden part of the file nests.
long long HiddenNodes(const pugi::xml_node& hidden)
{
    long long count = 0;
    std::vector<pugi::xml_node> left{hidden};
    while (!left.empty()) {
        const pugi::xml_node node = left.back();
        left.pop_back();
        count += IsContainer(node.attribute("type").value()) ? 0 : 1;
        for (const pugi::xml_node child : node.child("children").children("node"))
            left.push_back(child);
    }
    return count;
}

// The address of the node's first OSC message: its path's parts one after
// another; without one, the app sends to "/" + the node's name. A part may name
// a property of the node, or the name of the node that holds it.
std::string AddressOf(const ToscNode& node, const ToscNode& parent, const pugi::xml_node& osc,
                      std::size_t index)
{
    if (!osc)
        return "/" + std::string(node.name);
    std::string address;
    for (const pugi::xml_node partial : osc.child("path").children("partial")) {
        const auto [type, value] = TextsOf(partial, std::array{"type", "value"});
        if (type == "CONSTANT")
            address += value;
        else if (type == "PROPERTY" && value == "parent.name")
            address += parent.name;
        else if (type == "PROPERTY")
            address += value == "name" ? node.name : PropertyText(node, value);
        else if (type == "INDEX")
            address += std::to_string(index);
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

    // Walks the node's children, placed relative to its absolute frame, in the
    // order the app draws them. depth: how deep the node's element sits.
    bool Children(const ToscNode& parent, double left, double top, int depth, OSCPage& page)
    {
        // Only nodes are walked into, so only their nesting needs a limit.
        const int childDepth = depth + 2;
        if (childDepth >= limits_.maxDepth && parent.children.child("node")) {
            error_ = TooDeep(kWhat, limits_);
            return false;
        }
        std::size_t index = 0;
        for (const pugi::xml_node element : parent.children.children("node")) {
            const ToscNode node(element);
            const double x = left + node.frame.x;
            const double y = top + node.frame.y;
            if (node.hidden) {
                report_.LeaveOut("hidden control", "hidden controls", HiddenNodes(element));
            } else if (node.type == "PAGER" && !pagerFound_) {
                // Its groups are the pages; the first pager only, nested ones are groups.
                pagerFound_ = true;
                if (!Pages(node, x, y, childDepth))
                    return false;
            } else {
                if (const std::optional<ControlType> type = TypeOf(node)) {
                    if (!AddControl(node, parent, *type, x, y, index, page))
                        return false;
                } else if (!IsContainer(node.type)) {
                    report_.LeaveOut(node.type.empty() ? "node without a type" : node.type);
                }
                if (!Children(node, x, y, childDepth, page))
                    return false;
            }
            ++index;
        }
        return true;
    }

    std::vector<std::unique_ptr<OSCPage>>& Pages() { return pages_; }

private:
    bool AddPage(std::string_view name)
    {
        if (pages_.size() == limits_.maxCount) {
            error_ = "the layout has more than " + std::to_string(limits_.maxCount) + " pages";
            return false;
        }
        CopyTextField(pages_.emplace_back(std::make_unique<OSCPage>())->name, name);
        return true;
    }

    // A pager's groups, each a page named as its tab shows it.
    bool Pages(const ToscNode& pager, double left, double top, int depth)
    {
        if (depth + 2 >= limits_.maxDepth && pager.children.child("node")) {
            error_ = TooDeep(kWhat, limits_);
            return false;
        }
        for (const pugi::xml_node element : pager.children.children("node")) {
            const ToscNode group(element);
            if (group.hidden) {
                report_.LeaveOut("hidden control", "hidden controls", HiddenNodes(element));
                continue;
            }
            if (!AddPage(group.tabLabel.empty() ? group.name : group.tabLabel) ||
                !Children(group, left + group.frame.x, top + group.frame.y, depth + 2,
                          *pages_.back()))
                return false;
        }
        return true;
    }

    bool AddControl(const ToscNode& node, const ToscNode& parent, ControlType type, double x,
                    double y, std::size_t index, OSCPage& page)
    {
        if (page.controls.size() == limits_.maxCount) {
            error_ = "the layout has more than " + std::to_string(limits_.maxCount) +
                     " controls on a page";
            return false;
        }
        auto& control = *page.controls.emplace_back(std::make_unique<OSCControl>());
        control.type = type;
        // A label shows its text; its name is only what the app's editor calls it.
        const std::string_view shown = type == kLabel ? ShownText(node) : std::string_view();
        CopyTextField(control.name, shown.empty() ? node.name : shown);
        pugi::xml_node osc;
        long long midi = 0;
        for (const pugi::xml_node message : node.Part("messages").children()) {
            const std::string_view kind = message.name();
            osc = !osc && kind == "osc" ? message : osc;
            midi += kind == "midi" ? 1 : 0;
        }
        SetImportedAddress(control, AddressOf(node, parent, osc, index), report_);
        if (type != kLabel) {
            // Values run from 0 to 1 unless the message scales them.
            const pugi::xml_node argument = osc.child("arguments").child("partial");
            const auto [low, high] = PartsOf(argument, std::array{"scaleMin", "scaleMax"});
            control.minValue = argument ? ImportedLong(low, report_) : 0;
            control.maxValue = argument ? ImportedLong(high, report_) : 1;
        }
        if (node.color) {
            const auto [red, green, blue] = PartsOf(node.color, std::array{"r", "g", "b"});
            control.color = ColorByHue(red * 255, green * 255, blue * 255);
        }
        report_.Count("MIDI message not kept", "MIDI messages not kept", midi);
        // The title band sits above the screen, as in the other formats.
        fit_.Place(control, x, y + kTitleBandHeight, node.frame.w, node.frame.h, report_);
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
    // Text embedded in its element makes fewer nodes to build and walk.
    if (!ParseXml(xml, document, kWhat, error, pugi::parse_default | pugi::parse_embed_pcdata))
        return false;
    const pugi::xml_node element = document.child("lexml").child("node");
    if (!element) {
        error = "not a TouchOSC file: it holds no <lexml> element with a node";
        return false;
    }
    const ToscNode root(element);
    const ToscFrame& screen = root.frame;
    const std::uint8_t device =
        NearestDevice(std::min(screen.w, screen.h), std::max(screen.w, screen.h));
    const std::uint8_t orientation = screen.w > screen.h ? kHorizontal : kVertical;
    const ScreenFit fit(screen.w, screen.h + kTitleBandHeight, device, orientation);

    ImportReport found;
    ToscWalk walk(fit, limits, found, error);
    // Nodes outside a pager sit on one page named after the root, which stays
    // first when the layout also has a pager's pages.
    auto outside = std::make_unique<OSCPage>();
    CopyTextField(outside->name, root.name);
    constexpr int kRootDepth = 1;  // inside <lexml>
    if (!walk.Children(root, 0, 0, kRootDepth, *outside))
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
    StackAsDrawn(pages);
    project.device = device;
    project.orientation = orientation;
    project.pages = std::move(pages);
    project.currentPage = 0;
    report = std::move(found);
    return true;
}
