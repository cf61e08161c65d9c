#include "PropertyCommands.h"

#include "OSCPageEditorDlg.h"
#include "OSCParameterEditorDlg.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "document/TextField.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <iterator>
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

namespace {

// The text every control gives, or blank when they differ.
template <typename TextOfControl>
QString SharedText(const std::vector<OSCControl*>& controls, TextOfControl textOf)
{
    const QString first = textOf(*controls.front());
    for (const OSCControl* control : controls) {
        if (textOf(*control) != first)
            return {};
    }
    return first;
}

int SharedIndex(const std::vector<OSCControl*>& controls, std::uint8_t OSCControl::*field)
{
    for (const OSCControl* control : controls) {
        if (control->*field != controls.front()->*field)
            return -1;
    }
    return controls.front()->*field;
}

}  // namespace

ControlPropertiesOutcome EditSelectionProperties(OSCProject& project, const DialogRunner& run)
{
    std::vector<OSCControl*> selected;
    project.GetSelectedControls(selected);
    if (selected.size() < 2)
        return ControlPropertiesOutcome::kUnchanged;

    OSCParameterEditorDlg dialog;
    dialog.setWindowTitle(QObject::tr("Properties of Selection"));
    const auto number = [](auto OSCControl::*field) {
        return [field](const OSCControl& c) { return QString::number(c.*field); };
    };
    struct Field {
        QString OSCParameterEditorDlg::*text;
        std::function<QString(const OSCControl&)> textOf;
        std::function<void(OSCControl&, const QString&)> store;
    };
    const Field fields[] = {
        {&OSCParameterEditorDlg::nameText, [](const OSCControl& c) { return FieldText(c.name); },
         [](OSCControl& c, const QString& t) { StoreText(c.name, t); }},
        {&OSCParameterEditorDlg::commandText,
         [](const OSCControl& c) { return FieldText(c.command); },
         [](OSCControl& c, const QString& t) { StoreText(c.command, t); }},
        {&OSCParameterEditorDlg::xText, number(&OSCControl::x),
         [](OSCControl& c, const QString& t) { c.x = ShortOf(t); }},
        {&OSCParameterEditorDlg::yText, number(&OSCControl::y),
         [](OSCControl& c, const QString& t) { c.y = ShortOf(t); }},
        {&OSCParameterEditorDlg::widthText, number(&OSCControl::width),
         [](OSCControl& c, const QString& t) { c.width = ShortOf(t); }},
        {&OSCParameterEditorDlg::heightText, number(&OSCControl::height),
         [](OSCControl& c, const QString& t) { c.height = ShortOf(t); }},
        {&OSCParameterEditorDlg::minValueText, number(&OSCControl::minValue),
         [](OSCControl& c, const QString& t) { c.minValue = NumberOf(t); }},
        {&OSCParameterEditorDlg::maxValueText, number(&OSCControl::maxValue),
         [](OSCControl& c, const QString& t) { c.maxValue = NumberOf(t); }},
    };
    QString shown[std::size(fields)];
    for (std::size_t i = 0; i < std::size(fields); ++i)
        dialog.*fields[i].text = shown[i] = SharedText(selected, fields[i].textOf);
    const int type = dialog.typeIndex = SharedIndex(selected, &OSCControl::type);
    const int color = dialog.colorIndex = SharedIndex(selected, &OSCControl::color);
    if (run(dialog) != QDialog::Accepted)
        return ControlPropertiesOutcome::kUnchanged;

    for (OSCControl* control : selected) {
        for (std::size_t i = 0; i < std::size(fields); ++i) {
            if (dialog.*fields[i].text != shown[i])
                fields[i].store(*control, dialog.*fields[i].text);
        }
        if (dialog.typeIndex != type)
            control->type = static_cast<std::uint8_t>(dialog.typeIndex);
        if (dialog.colorIndex != color)
            control->color = static_cast<std::uint8_t>(dialog.colorIndex);
        if (control->type == kKnob && control->width != control->height)
            control->width = control->height = std::min(control->width, control->height);
    }
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
