#include "ToscExport.h"

#include "ToscDeflate.h"
#include "ToscXmlWriter.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "formats/ExportTarget.h"
#include "host/Toolkit.h"
#include "host/VornBasics.h"

#include <cstdio>

namespace {

using enum ToscField;

// The properties the app writes for each type of node, in its order (by key),
// with the values it gives a new node where the layout has nothing to say.
constexpr const char* kBlack = "<r>0</r><g>0</g><b>0</b><a>1</a>";
constexpr const char* kClear = "<r>0</r><g>0</g><b>0</b><a>0</a>";
constexpr const char* kWhite = "<r>1</r><g>1</g><b>1</b><a>1</a>";
constexpr const char* kGridColor = "<r>0</r><g>0</g><b>0</b><a>0.25</a>";

constexpr ToscProperty kFrameProperty{'r', "frame", kFrame};
constexpr ToscProperty kNameProperty{'s', "name", kName};
constexpr ToscProperty kColorProperty{'c', "color", kColor};
constexpr ToscProperty kUnlocked{'b', "locked", kFixed, "0"};
constexpr ToscProperty kUpright{'i', "orientation", kFixed, "0"};
constexpr ToscProperty kPlainOutline{'i', "outlineStyle", kFixed, "0"};
constexpr ToscProperty kFirstPointer{'i', "pointerPriority", kFixed, "0"};
constexpr ToscProperty kUsualShape{'i', "shape", kFixed, "1"};
constexpr ToscProperty kVisible{'b', "visible", kFixed, "1"};

// The root group: the screen.
constexpr ToscProperty kRootProperties[] = {
    {'b', "background", kFixed, "1"},
    {'c', "color", kFixed, kBlack},
    {'f', "cornerRadius", kFixed, "1"},
    kFrameProperty,
    {'b', "grabFocus", kFixed, "0"},
    {'b', "interactive", kFixed, "0"},
    kUnlocked,
    kNameProperty,
    kUpright,
    {'b', "outline", kFixed, "1"},
    kPlainOutline,
    kFirstPointer,
    kUsualShape,
    kVisible,
};

// Its tab bar stands where the editor shows its title band, and is as high;
// the pages sit below it.
static_assert(kTitleBandHeight == 40);
constexpr ToscProperty kPagerProperties[] = {
    {'b', "background", kFixed, "1"},
    {'c', "color", kFixed, kBlack},
    {'f', "cornerRadius", kFixed, "1"},
    kFrameProperty,
    {'b', "grabFocus", kFixed, "0"},
    {'b', "interactive", kFixed, "1"},
    kUnlocked,
    kNameProperty,
    kUpright,
    {'b', "outline", kFixed, "1"},
    kPlainOutline,
    kFirstPointer,
    kUsualShape,
    {'b', "tabLabels", kFixed, "1"},
    {'b', "tabbar", kFixed, "1"},
    {'b', "tabbarDoubleTap", kFixed, "0"},
    {'i', "tabbarSize", kFixed, "40"},
    {'i', "textSizeOff", kFixed, "14"},
    {'i', "textSizeOn", kFixed, "15"},
    kVisible,
};

constexpr ToscProperty kPageProperties[] = {
    {'b', "background", kFixed, "1"},
    {'c', "color", kFixed, kClear},
    {'f', "cornerRadius", kFixed, "1"},
    kFrameProperty,
    {'b', "grabFocus", kFixed, "0"},
    {'b', "interactive", kFixed, "0"},
    kUnlocked,
    kNameProperty,
    kUpright,
    {'b', "outline", kFixed, "0"},
    kPlainOutline,
    kFirstPointer,
    kUsualShape,
    {'c', "tabColorOff", kFixed, "<r>0.25</r><g>0.25</g><b>0.25</b><a>1</a>"},
    {'c', "tabColorOn", kFixed, "<r>0.5</r><g>0.5</g><b>0.5</b><a>1</a>"},
    {'s', "tabLabel", kTabLabel},
    {'c', "textColorOff", kFixed, kWhite},
    {'c', "textColorOn", kFixed, "<r>1</r><g>0.93</g><b>0</b><a>1</a>"},
    kVisible,
};

// A label shows its text in its colour, on no background.
constexpr ToscProperty kLabelProperties[] = {
    {'b', "background", kFixed, "0"},
    kColorProperty,
    {'f', "cornerRadius", kFixed, "6"},
    {'i', "font", kFixed, "0"},
    kFrameProperty,
    {'b', "grabFocus", kFixed, "1"},
    {'b', "interactive", kFixed, "0"},
    kUnlocked,
    kNameProperty,
    kUpright,
    {'b', "outline", kFixed, "0"},
    kPlainOutline,
    kFirstPointer,
    kUsualShape,
    {'i', "textAlignH", kFixed, "2"},
    {'i', "textAlignV", kFixed, "2"},
    {'b', "textClip", kFixed, "1"},
    {'c', "textColor", kColor},
    {'i', "textLength", kFixed, "0"},
    {'i', "textSize", kFixed, "14"},
    kVisible,
};

constexpr ToscProperty kFaderProperties[] = {
    {'b', "background", kFixed, "1"},
    {'b', "bar", kFixed, "1"},
    {'i', "barDisplay", kFixed, "0"},
    {'b', "centered", kFixed, "0"},
    kColorProperty,
    {'f', "cornerRadius", kFixed, "6"},
    {'b', "cursor", kFixed, "1"},
    {'i', "cursorDisplay", kFixed, "0"},
    kFrameProperty,
    {'b', "grabFocus", kFixed, "1"},
    {'b', "grid", kFixed, "1"},
    {'c', "gridColor", kFixed, kGridColor},
    {'i', "gridSteps", kFixed, "10"},
    {'b', "interactive", kFixed, "1"},
    kUnlocked,
    kNameProperty,
    {'i', "orientation", kOrientation},
    {'b', "outline", kFixed, "1"},
    kPlainOutline,
    kFirstPointer,
    {'i', "response", kFixed, "0"},
    {'i', "responseFactor", kFixed, "100"},
    kUsualShape,
    kVisible,
};

constexpr ToscProperty kRadialProperties[] = {
    {'b', "background", kFixed, "1"},
    {'b', "centered", kFixed, "0"},
    kColorProperty,
    {'f', "cornerRadius", kFixed, "6"},
    kFrameProperty,
    {'b', "grabFocus", kFixed, "1"},
    {'b', "grid", kFixed, "1"},
    {'c', "gridColor", kFixed, kGridColor},
    {'i', "gridSteps", kFixed, "10"},
    {'b', "interactive", kFixed, "1"},
    {'b', "inverted", kFixed, "0"},
    kUnlocked,
    kNameProperty,
    kUpright,
    {'b', "outline", kFixed, "1"},
    kPlainOutline,
    kFirstPointer,
    {'i', "response", kFixed, "0"},
    {'i', "responseFactor", kFixed, "100"},
    kUsualShape,
    kVisible,
};

constexpr ToscProperty kButtonProperties[] = {
    {'b', "background", kFixed, "1"},
    {'i', "buttonType", kButtonType},
    kColorProperty,
    {'f', "cornerRadius", kFixed, "6"},
    kFrameProperty,
    {'b', "grabFocus", kFixed, "1"},
    {'b', "interactive", kFixed, "1"},
    kUnlocked,
    kNameProperty,
    kUpright,
    {'b', "outline", kFixed, "0"},
    kPlainOutline,
    kFirstPointer,
    {'b', "press", kFixed, "1"},
    {'b', "release", kFixed, "1"},
    kUsualShape,
    {'b', "valuePosition", kFixed, "0"},
    kVisible,
};

// The app's orientations: a fader fills towards the top, or towards the right.
constexpr int kTowardsTop = 0;
constexpr int kTowardsRight = 1;
// Its button types.
constexpr int kMomentary = 0;
constexpr int kToggleOnRelease = 1;

// Room for one control's node, so that a large layout's text grows seldom.
constexpr std::size_t kNodeBytes = 4096;

void WriteControl(ToscXmlWriter& writer, const OSCControl& control)
{
    ToscNodeFields fields;
    fields.name = TextOf(control.name);
    fields.x = control.x;
    fields.y = control.y - kTitleBandHeight;
    fields.width = control.width;
    fields.height = control.height;
    fields.color = control.color;
    switch (control.type) {
        case kLabel:
            writer.OpenNode("LABEL", kLabelProperties, fields);
            writer.Value("text", fields.name, true);
            writer.Value("touch", "false");
            writer.EndValues();
            writer.CloseNode();
            return;
        case kFader:
            // Vertical or horizontal as the canvas draws it.
            fields.orientation = control.width < control.height ? kTowardsTop : kTowardsRight;
            writer.OpenNode("FADER", kFaderProperties, fields);
            break;
        case kKnob:
            writer.OpenNode("RADIAL", kRadialProperties, fields);
            break;
        case kToggle:
            fields.buttonType = kToggleOnRelease;
            writer.OpenNode("BUTTON", kButtonProperties, fields);
            break;
        case kPushButton:
            fields.buttonType = kMomentary;
            writer.OpenNode("BUTTON", kButtonProperties, fields);
            break;
        default:  // a type the editor does not know has nothing to stand for it
            return;
    }
    writer.Value("x", "0");
    writer.Value("touch", "false");
    writer.EndValues();
    writer.OscMessage(TextOf(control.command), control.minValue, control.maxValue);
    writer.CloseNode();
}

}  // namespace

std::string WriteToscXml(const OSCProject& project)
{
    const int index = ScreenIndex(ExportDevice(project), ExportOrientation(project));
    ToscNodeFields screen;
    screen.width = ScreenW[index];
    screen.height = ScreenH[index];
    std::string xml;
    xml.reserve(kNodeBytes *
                (static_cast<std::size_t>(project.GetNumControls()) + project.pages.size() + 2));
    ToscXmlWriter writer(xml, project);
    writer.Begin();
    screen.name = "group";  // as the app names a new document's root
    writer.OpenNode("GROUP", kRootProperties, screen);
    writer.Value("touch", "false");
    writer.EndValues();
    writer.OpenChildren();
    screen.name = "pager1";
    writer.OpenNode("PAGER", kPagerProperties, screen);
    writer.Value("page", "0");
    writer.Value("touch", "false");
    writer.EndValues();
    writer.OpenChildren();
    for (const auto& page : project.pages) {
        // Below the tab bar, as the app places a pager's pages.
        ToscNodeFields fields = screen;
        fields.name = fields.tabLabel = TextOf(page->name);
        fields.y = kTitleBandHeight;
        fields.height -= kTitleBandHeight;
        writer.OpenNode("GROUP", kPageProperties, fields);
        writer.Value("touch", "false");
        writer.EndValues();
        writer.OpenChildren();
        // Back-most first: the app draws each node over those before it.
        for (auto control = page->controls.rbegin(); control != page->controls.rend(); ++control)
            WriteControl(writer, **control);
        writer.CloseChildren();
        writer.CloseNode();
    }
    writer.CloseChildren();
    writer.CloseNode();
    writer.CloseChildren();
    writer.CloseNode();
    writer.End();
    return xml;
}

void OSCProject::ExportToscFile(VornBasics* host, const char* path)
{
    const std::string xml = WriteToscXml(*this);
    std::FILE* out = std::fopen(path, "wb");
    if (!out) {
        toolkit::MessageBox(nullptr, "File create failure", "OSC Export", toolkit::kNotice);
        return;
    }
    const bool written = WriteDeflated(xml, out);
    if (std::fclose(out) != 0 || !written) {
        // Half a file would only fail in the app.
        std::remove(path);
        if (host) {
            host->ShowError("Failed to create tosc file");
            host->ShowError("  try saving again with a different file name");
        }
    }
}
