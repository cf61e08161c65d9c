#include "LemurExport.h"

#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "formats/EscapedAttribute.h"
#include "formats/ExportTarget.h"
#include "host/Toolkit.h"

#include <cstdint>
#include <string_view>

namespace {

struct LemurScreen {
    int width;
    int height;
};

// Lemur's usable screen by device, whatever the orientation.
constexpr LemurScreen kLemurScreens[kDeviceCount] = {{480, 276}, {1024, 724}};

// Written into a control that has no name, by type.
constexpr const char* kDefaultNames[kControlTypeCount] = {"text", "Fader", "Knob", "Toggle",
                                                          "Button"};

// Lemur reads a colour as 0xRRGGBB: the editor's word (red in the low byte)
// with red and blue swapped.
int LemurColor(std::uint8_t color)
{
    const std::uint32_t word = ColorOf(color);
    return static_cast<int>((word & 0xFF) << 16 | (word & 0xFF00) | (word >> 16 & 0xFF));
}

void WriteXParameter(std::FILE* out, const char* value, const std::string& address, float low,
                     float high)
{
    std::fprintf(out,
                 "\t<PARAM name=\"x=\" value=\"%s\" send=\"29\" osc_target=\"0\" "
                 "osc_trigger=\"1\" osc_message=\"%s\" midi_target=\"-1\" midi_trigger=\"1\" "
                 "midi_message=\"0x90,0x90,0,0\" midi_scale=\"0,16383\" osc_scale=\"%.6f,%.6f\" "
                 "kbmouse_target=\"-1\" kbmouse_trigger=\"1\" kbmouse_message=\"0,0,0\" "
                 "kbmouse_scale=\"0,1,0,1\"/> \n",
                 value, address.c_str(), static_cast<double>(low), static_cast<double>(high));
}

void WriteFaderZParameter(std::FILE* out)
{
    std::fputs(
        "\t<PARAM name=\"z=\" value=\"0.000000\" send=\"17\" osc_target=\"0\" osc_trigger=\"1\" "
        "osc_message=\"/Fader/z\" midi_target=\"-1\" midi_trigger=\"1\" "
        "midi_message=\"0x90,0x90,0,0\" midi_scale=\"0,16383\" osc_scale=\"0.000000,1.000000\" "
        "kbmouse_target=\"-1\" kbmouse_trigger=\"1\" kbmouse_message=\"0,0,0\" "
        "kbmouse_scale=\"0,1,0,1\"/> \n",
        out);
}

void WriteVariable(std::FILE* out, const char* expression, const char* address)
{
    std::fprintf(out,
                 "\t<VARIABLE name=\"%s\" send=\"0\" osc_target=\"0\" osc_trigger=\"1\" "
                 "osc_message=\"%s\" midi_target=\"-1\" midi_trigger=\"1\" "
                 "midi_message=\"0x90,0x90,0,0\" midi_scale=\"0,16383\" kbmouse_target=\"-1\" "
                 "kbmouse_trigger=\"1\" kbmouse_message=\"0,0,0\" kbmouse_scale=\"0,1,0,1\"/> \n",
                 expression, address);
}

// The message paths of the variables that move a fader or a knob.
struct MotionAddresses {
    const char* value;
    const char* attraction;
    const char* friction;
    const char* speed;
};
constexpr MotionAddresses kFaderMotion = {"/Fader/value", "/Fader/attraction", "/Fader/friction",
                                          "/Fader/speed"};
constexpr MotionAddresses kKnobMotion = {"/Knob/value", "/Knob/attraction", "/Knob/friction",
                                         "/Knob/speed"};

void WriteMotionVariables(std::FILE* out, const MotionAddresses& addresses)
{
    WriteVariable(out, "value=x", addresses.value);
    WriteVariable(out, "attraction=1", addresses.attraction);
    WriteVariable(out, "friction=0.9", addresses.friction);
    WriteVariable(out, "speed=1", addresses.speed);
}

}  // namespace

void OSCControl::ExportForLemur(std::FILE* out)
{
    if (type >= kControlTypeCount) {
        // An unknown type leaves only the end tag; kept as it was.
        std::fputs("\t</WINDOW>\n\n", out);
        return;
    }
    // The document keeps the default name: Lemur needs a text for every control.
    if (name[0] == '\0')
        CopyTextField(name, kDefaultNames[type]);

    const std::string escaped = EscapedAttribute(TextOf(name));
    const char* const text = escaped.c_str();
    const int top = y - kTitleBandHeight;
    const int color = LemurColor(this->color);
    const std::string address = EscapedAttribute(TextOf(command));
    const float low = static_cast<float>(minValue);
    const float high = static_cast<float>(maxValue);

    // The window lines differ in small ways (the Label's ">\n", one colour for
    // Label and Fader); Lemur reads them as they are.
    switch (type) {
        case kLabel:
            std::fprintf(out,
                         "\t<WINDOW class=\"Text\" text=\"%s\" x=\"%d\" y=\"%d\" width=\"%d\" "
                         "height=\"%d\" id=\"5\" state=\"241\" group=\"0\" font=\"tahoma,12,0\" "
                         "send=\"1\" osc_target=\"-2\" midi_target=\"-2\" kbmouse_target=\"-2\" "
                         "color=\"%d\" content=\"%s\">\n",
                         text, x, top, width, height, color, text);
            WriteVariable(out, "light=0", "/Text/light");
            break;
        case kFader:
            std::fprintf(out,
                         "\t<WINDOW class=\"Fader\" text=\"%s\" x=\"%d\" y=\"%d\" width=\"%d\" "
                         "height=\"%d\" id=\"6\" state=\"1\" group=\"0\" font=\"tahoma,10,0\" "
                         "send=\"1\" osc_target=\"-2\" midi_target=\"-2\" kbmouse_target=\"-2\" "
                         "capture=\"1\" color=\"%d\" cursor=\"0\" grid=\"0\" grid_steps=\"1\" "
                         "label=\"0\" physic=\"1\" precision=\"3\" unit=\"\" value=\"0\" "
                         "zoom=\"0.000000\"> \n",
                         text, x, top, width, height, color);
            WriteXParameter(out, "0.000000", address, low, high);
            WriteFaderZParameter(out);
            WriteMotionVariables(out, kFaderMotion);
            break;
        case kKnob:
            std::fprintf(
                out,
                "\t<WINDOW class=\"Knob\" text=\"%s\" x=\"%d\" y=\"%d\" width=\"%d\" "
                "height=\"%d\" id=\"2\" state=\"1\" group=\"0\" font=\"tahoma,10,0\" "
                "send=\"1\" osc_target=\"-2\" midi_target=\"-2\" kbmouse_target=\"-2\" "
                "color=\"%d,8328968\" cursor=\"0\" grid=\"0\" grid_steps=\"1\" label=\"0\" "
                "mode=\"1\" physic=\"1\" precision=\"3\" type=\"0\" unit=\"\" "
                "value=\"0\"> \n",
                text, x, top, width, height, color);
            WriteXParameter(out, "0.700000", address, low, high);
            WriteMotionVariables(out, kKnobMotion);
            break;
        case kToggle:
            std::fprintf(out,
                         "\t<WINDOW class=\"Switches\" text=\"%s\" x=\"%d\" y=\"%d\" width=\"%d\" "
                         "height=\"%d\" id=\"3\" state=\"1\" group=\"0\" font=\"tahoma,10,0\" "
                         "send=\"1\" osc_target=\"-2\" midi_target=\"-2\" kbmouse_target=\"-2\" "
                         "capture=\"1\" color=\"%d,8328968\" column=\"1\" label=\"0\" "
                         "multicolor=\"0\" multilabel=\"0\" paint=\"0\" radio=\"0\" row=\"1\"> \n",
                         text, x, top, width, height, color);
            WriteXParameter(out, "0.000000", address, low, high);
            WriteVariable(out, "light=0", "/Switches/light");
            break;
        case kPushButton:
            std::fprintf(out,
                         "\t<WINDOW class=\"CustomButton\" text=\"%s\" x=\"%d\" y=\"%d\" "
                         "width=\"%d\" height=\"%d\" id=\"4\" state=\"241\" group=\"0\" "
                         "font=\"tahoma,12,0\" send=\"1\" osc_target=\"-2\" midi_target=\"-2\" "
                         "kbmouse_target=\"-2\" behavior=\"0\" bitmap=\"0,0\" capture=\"1\" "
                         "color=\"%d,8328968\" label_off=\"%s\" label_on=\"%s\" "
                         "outline=\"1\"> \n",
                         text, x, top, width, height, color, text, text);
            WriteXParameter(out, "0.000000", address, low, high);
            WriteVariable(out, "light=0", "/CustomButton/light");
            break;
        default:
            break;
    }
    std::fputs("\t</WINDOW>\n\n", out);
}

// Back-most first: the app draws each control over those before it.
void OSCPage::ExportLemurControls(std::FILE* out)
{
    for (auto control = controls.rbegin(); control != controls.rend(); ++control)
        (*control)->ExportForLemur(out);
}

void WriteLemurJzml(std::FILE* out, OSCProject& project)
{
    const LemurScreen screen = kLemurScreens[ExportDevice(project)];
    std::fputs("<JZML>\n", out);
    std::fprintf(out,
                 "<PROJECT version=\"3210\" width=\"%d\" height=\"%d\" osc_target=\"-2\" "
                 "midi_target=\"-2\" kbmouse_target=\"-2\"/>\n",
                 screen.width, screen.height);
    for (const auto& page : project.pages) {
        std::fprintf(out,
                     "<WINDOW class=\"JAZZINTERFACE\" text=\"%s\" x=\"0\" y=\"0\" width=\"%d\" "
                     "height=\"%d\" state=\"1\" group=\"0\" font=\"tahoma,11,0\" >\n",
                     EscapedAttribute(TextOf(page->name)).c_str(), screen.width, screen.height);
        page->ExportLemurControls(out);
        std::fputs("</WINDOW>\n", out);
    }
    std::fputs("</JZML>\n", out);
}

void OSCProject::ExportLemurFile(VornBasics*, const char* path)
{
    std::FILE* out = std::fopen(path, "w");
    if (!out) {
        toolkit::MessageBox(nullptr, "File create failure", "OSC Export", toolkit::kNotice);
        return;
    }
    WriteLemurJzml(out, *this);
    std::fclose(out);
}
