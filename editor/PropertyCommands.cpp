#include "PropertyCommands.h"

#include "OSCPageEditorDlg.h"
#include "OSCParameterEditorDlg.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "document/TextField.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace {

template <std::size_t N>
QString FieldText(const char (&field)[N])
{
    const std::string_view text = TextOf(field);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A text left as the dialog showed it keeps its bytes, even bytes that are not
// UTF-8 and showed as replacement characters.
template <std::size_t N>
void StoreText(char (&field)[N], const QString& text)
{
    if (text == FieldText(field))
        return;
    const QByteArray bytes = text.toUtf8();
    CopyTextField(field,
                  std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

// atoi's reading: leading blanks, a sign, digits up to the first other
// character; no number at all reads as 0.
std::int32_t NumberOf(const QString& text)
{
    return static_cast<std::int32_t>(std::strtol(text.toUtf8().constData(), nullptr, 10));
}

std::int16_t ShortOf(const QString& text)
{
    return static_cast<std::int16_t>(NumberOf(text));
}

}  // namespace

ControlPropertiesOutcome EditControlProperties(OSCProject& project, const DialogRunner& run)
{
    std::vector<OSCControl*> selected;
    project.GetSelectedControls(selected);
    if (selected.empty())
        return ControlPropertiesOutcome::kEditPage;
    // There is no editing of several controls at once.
    if (selected.size() > 1)
        return ControlPropertiesOutcome::kUnchanged;

    OSCControl& control = *selected.front();
    OSCParameterEditorDlg dialog;
    dialog.nameText = FieldText(control.name);
    dialog.commandText = FieldText(control.command);
    dialog.xText = QString::number(control.x);
    dialog.yText = QString::number(control.y);
    dialog.widthText = QString::number(control.width);
    dialog.heightText = QString::number(control.height);
    dialog.minValueText = QString::number(control.minValue);
    dialog.maxValueText = QString::number(control.maxValue);
    dialog.controlPtr = &control;
    dialog.typeIndex = control.type;
    dialog.colorIndex = control.color;
    if (run(dialog) != QDialog::Accepted)
        return ControlPropertiesOutcome::kUnchanged;

    // The dialog took only numbers the fields hold; off-screen places and a
    // minimum above the maximum are the user's to keep.
    StoreText(control.name, dialog.nameText);
    StoreText(control.command, dialog.commandText);
    control.x = ShortOf(dialog.xText);
    control.y = ShortOf(dialog.yText);
    control.width = ShortOf(dialog.widthText);
    control.height = ShortOf(dialog.heightText);
    control.minValue = NumberOf(dialog.minValueText);
    control.maxValue = NumberOf(dialog.maxValueText);
    control.type = static_cast<std::uint8_t>(dialog.typeIndex);
    control.color = static_cast<std::uint8_t>(dialog.colorIndex);
    // A knob keeps equal sides.
    if (control.type == kKnob && control.width != control.height)
        control.width = control.height = std::min(control.width, control.height);
    return ControlPropertiesOutcome::kChanged;
}

PagePropertiesOutcome EditPageProperties(OSCProject& project, const DialogRunner& run)
{
    OSCPage& page = *project.CurrentPage();
    OSCPageEditorDlg dialog;
    dialog.pageName = FieldText(page.name);
    dialog.deviceIndex = project.device;
    dialog.orientationIndex = project.orientation;
    if (run(dialog) != QDialog::Accepted)
        return {};

    PagePropertiesOutcome outcome;
    // Even an OK that changes nothing counts as a change.
    outcome.modified = true;
    if (dialog.pageName != FieldText(page.name)) {
        StoreText(page.name, dialog.pageName);
        outcome.renamed = true;
    }
    // The screen is the layout's, so it changes for every page.
    project.device = static_cast<std::uint8_t>(dialog.deviceIndex);
    project.orientation = static_cast<std::uint8_t>(dialog.orientationIndex);
    return outcome;
}
