#include "TouchOSCExport.h"

#include "TouchOSCArchive.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "formats/EscapedAttribute.h"
#include "formats/ExportTarget.h"
#include "host/Toolkit.h"
#include "host/VornBasics.h"

#include <filesystem>
#include <memory>
#include <new>
#include <string>
#include <system_error>
#include <thread>

char TouchOSCTypeStr[] = "type=\"%s\" ";

namespace {

// Room for the longest encoding written (256 characters) and its terminator.
constexpr int kCodeSize = 257;

// The base64 form of a name field; the field's terminator is not trusted.
void EncodeName(const char (&field)[256], char (&code)[kCodeSize])
{
    const std::string text(TextOf(field));
    OSCProject::ConvertToBase64(text.c_str(), code);
}

// Colour indexes without a name (9 and above) are written as gray.
const char* ColorWord(std::uint8_t color)
{
    return ColorTypes[color < kNamedColorCount ? color : kGray];
}

void WriteType(std::FILE* out, const char* word)
{
    std::fprintf(out, TouchOSCTypeStr, word);
}

}  // namespace

void OSCControl::ExportForTouchOSC(std::FILE* out, const OSCProject* project) const
{
    const int device = ExportDevice(*project);
    const int orientation = ExportOrientation(*project);
    char code[kCodeSize];
    EncodeName(name, code);

    std::fputs("\t\t<control ", out);
    std::fprintf(out, "name=\"%s\" ", code);
    if (orientation == kVertical) {
        // Only Vertical projects take off the title band; Horizontal ones keep it, on purpose.
        std::fprintf(out, "x=\"%d\" ", x);
        std::fprintf(out, "y=\"%d\" ", y - kTitleBandHeight);
        std::fprintf(out, "w=\"%d\" ", width);
        std::fprintf(out, "h=\"%d\" ", height);
    } else {
        // TouchOSC keeps horizontal layouts upright: the rectangle takes a quarter turn.
        std::fprintf(out, "x=\"%d\" ", ScreenH[ScreenIndex(device, kHorizontal)] - (y + height));
        std::fprintf(out, "y=\"%d\" ", x);
        std::fprintf(out, "w=\"%d\" ", height);
        std::fprintf(out, "h=\"%d\" ", width);
    }
    std::fprintf(out, "color=\"%s\" ", ColorWord(color));

    const bool reversed = maxValue < minValue;
    const float low = static_cast<float>(reversed ? maxValue : minValue);
    const float high = static_cast<float>(reversed ? minValue : maxValue);
    std::fprintf(out, "scalef=\"%.1f\" ", static_cast<double>(low));
    std::fprintf(out, "scalet=\"%.1f\" ", static_cast<double>(high));
    std::fprintf(out, "osc_cs=\"%s\" ", EscapedAttribute(TextOf(command)).c_str());

    const char* inverted = reversed ? "inverted=\"true\" " : "inverted=\"false\" ";
    switch (type) {
        case kLabel:
            // Labels and knobs name their orientation the opposite way; kept on purpose.
            WriteType(out, orientation == kVertical ? "labelh" : "labelv");
            std::fprintf(out, "text=\"%s\" ", code);
            std::fputs("size=\"12\" background=\"true\" outline=\"false\" ", out);
            break;
        case kFader: {
            const bool upright = width <= height;
            const bool vertical = orientation == kVertical ? upright : !upright;
            WriteType(out, vertical ? "faderv" : "faderh");
            std::fputs("response=\"absolute\" ", out);
            std::fputs(inverted, out);
            std::fputs("centered=\"false\" ", out);
            break;
        }
        case kKnob:
            WriteType(out, orientation == kVertical ? "rotaryv" : "rotaryh");
            std::fputs("response=\"absolute\" ", out);
            std::fputs(inverted, out);
            std::fputs("centered=\"false\" norollover=\"true\" ", out);
            break;
        case kToggle:
            WriteType(out, "toggle");
            std::fputs("local_off=\"false\" ", out);
            break;
        case kPushButton:
            WriteType(out, "push");
            std::fputs("local_off=\"false\" ", out);
            break;
        default:
            break;
    }
    std::fputs(">\n", out);
    std::fputs("\t\t</control>\n", out);
}

// Back-most first: the app draws each control over those before it.
void OSCPage::ExportTouchOSCControls(std::FILE* out, const OSCProject* project) const
{
    for (auto control = controls.rbegin(); control != controls.rend(); ++control)
        (*control)->ExportForTouchOSC(out, project);
}

void WriteTouchOSCXml(std::FILE* out, const OSCProject& project)
{
    std::fputs("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n", out);
    // The orientation words are the opposite of the editor's names on purpose.
    std::fprintf(out, "<layout version=\"12\" mode=\"%d\" orientation=\"%s\">\n\n",
                 ExportDevice(project), OrientationStr[ExportOrientation(project)]);
    char code[kCodeSize];
    for (const auto& page : project.pages) {
        EncodeName(page->name, code);
        std::fprintf(out, "\t<tabpage name=\"%s\">\n", code);
        page->ExportTouchOSCControls(out, &project);
        std::fputs("\t</tabpage>\n\n", out);
    }
    std::fputs("</layout>\n\n", out);
}

void OSCProject::ExportTouchOSCFile(VornBasics* host, const char* path)
{
    std::error_code ignored;
    const std::string folder = host->GetDataFolder() + "/OSC";
    std::filesystem::create_directory(folder, ignored);
    const std::string tempPath = folder + "/index.xml";

    std::FILE* temp = std::fopen(tempPath.c_str(), "w");
    if (!temp) {
        toolkit::MessageBox(nullptr, "File create failure", "OSC Export", toolkit::kNotice);
        return;
    }
    WriteTouchOSCXml(temp, *this);
    std::fclose(temp);

    // A failed export leaves no target at all rather than an old one.
    std::filesystem::remove(path, ignored);
    std::this_thread::sleep_for(kTargetDeletePause);

    std::FILE* xml = std::fopen(tempPath.c_str(), "rb");
    long length = 0;
    if (xml) {
        std::fseek(xml, 0, SEEK_END);
        length = std::ftell(xml);
        std::fseek(xml, 0, SEEK_SET);
    } else {
        // Kept as it always was: despite the wording the export goes on, and
        // the archive then holds an empty index.xml.
        toolkit::MessageBox(nullptr, "Failed to open temp xml file.\nOperation cancelled.",
                            "Internal Error", toolkit::kNotice);
    }
    const std::size_t size = length > 0 ? static_cast<std::size_t>(length) : 0;
    const std::unique_ptr<char[]> buffer(new (std::nothrow) char[size]);
    if (buffer) {
        const std::size_t read = xml ? std::fread(buffer.get(), 1, size, xml) : 0;
        if (!WriteTouchOSCArchive(path, buffer.get(), read)) {
            host->ShowError("Failed to create touchosc file");
            host->ShowError("  try saving again with a different file name");
        }
    }
    if (xml)
        std::fclose(xml);
    std::filesystem::remove(tempPath, ignored);
}
