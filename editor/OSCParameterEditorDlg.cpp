#include "OSCParameterEditorDlg.h"

#include "document/ControlTables.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr qint64 kShortLowest = -32768;
constexpr qint64 kShortHighest = 32767;
constexpr qint64 kLongLowest = -2147483648LL;
constexpr qint64 kLongHighest = 2147483647LL;

struct TextRow {
    QString OSCParameterEditorDlg::*text;
    const char* label;
    const char* objectName;
    // The whole numbers the field can hold; texts have no range.
    bool numeric;
    qint64 lowest, highest;
};

const TextRow kTextRows[] = {
    {&OSCParameterEditorDlg::nameText, QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "&Name:"), "name",
     false, 0, 0},
    {&OSCParameterEditorDlg::commandText,
     QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "OSC &command:"), "command", false, 0, 0},
    {&OSCParameterEditorDlg::xText, QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "&X:"), "x", true,
     kShortLowest, kShortHighest},
    {&OSCParameterEditorDlg::yText, QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "&Y:"), "y", true,
     kShortLowest, kShortHighest},
    {&OSCParameterEditorDlg::widthText, QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "&Width:"),
     "width", true, 1, kShortHighest},
    {&OSCParameterEditorDlg::heightText, QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "&Height:"),
     "height", true, 1, kShortHighest},
    {&OSCParameterEditorDlg::minValueText,
     QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "M&inimum value:"), "minValue", true, kLongLowest,
     kLongHighest},
    {&OSCParameterEditorDlg::maxValueText,
     QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "M&aximum value:"), "maxValue", true, kLongLowest,
     kLongHighest},
};

bool HoldsNumberIn(const QString& text, const TextRow& row)
{
    bool whole = false;
    const qint64 number = text.trimmed().toLongLong(&whole, 10);
    return whole && number >= row.lowest && number <= row.highest;
}

// "&Width:" as a sentence's subject: "Width".
QString FieldName(const TextRow& row)
{
    return QCoreApplication::translate("OSCParameterEditorDlg", row.label)
        .remove(QLatin1Char('&'))
        .chopped(1);
}

}  // namespace

OSCParameterEditorDlg::OSCParameterEditorDlg(QWidget* parent) : ModalDialog(parent)
{
    setWindowTitle(tr("Control Properties"));
    auto* form = new QFormLayout;
    for (int i = 0; i < kTextCount; ++i) {
        textEdits[i] = new QLineEdit(this);
        textEdits[i]->setObjectName(QString::fromLatin1(kTextRows[i].objectName));
        form->addRow(tr(kTextRows[i].label), textEdits[i]);
    }
    typeCombo = new QComboBox(this);
    typeCombo->setObjectName(QStringLiteral("type"));
    colorCombo = new QComboBox(this);
    colorCombo->setObjectName(QStringLiteral("color"));
    // Type and colour read best beside the texts, before the numbers.
    form->insertRow(2, tr("&Type:"), typeCombo);
    form->insertRow(3, tr("C&olor:"), colorCombo);

    QDialogButtonBox* buttons = MakeButtons();
    // A button with no behaviour of its own: shown disabled, so it invites no clicks.
    buttons->addButton(tr("More..."), QDialogButtonBox::ActionRole)->setEnabled(false);

    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(buttons);
}

void OSCParameterEditorDlg::OnInitDialog()
{
    FillCombo(typeCombo, ControlTypes, kControlTypeCount, typeIndex);
    FillCombo(colorCombo, ColorTypes, kNamedColorCount, colorIndex);
    for (int i = 0; i < kTextCount; ++i)
        textEdits[i]->setText(this->*kTextRows[i].text);
}

void OSCParameterEditorDlg::OnOK()
{
    // A number the control cannot hold is refused here, before anything changes.
    for (int i = 0; i < kTextCount; ++i) {
        const TextRow& row = kTextRows[i];
        // A field shown blank, as for controls that differ in it, may stay blank.
        const bool leftBlank = textEdits[i]->text().isEmpty() && (this->*row.text).isEmpty();
        if (!row.numeric || leftBlank || HoldsNumberIn(textEdits[i]->text(), row))
            continue;
        QMessageBox::warning(this, tr("OSC Editor"),
                             tr("%1 must be a whole number from %2 to %3, not \u201c%4\u201d.")
                                 .arg(FieldName(row))
                                 .arg(row.lowest)
                                 .arg(row.highest)
                                 .arg(textEdits[i]->text()));
        textEdits[i]->setFocus();
        textEdits[i]->selectAll();
        return;
    }
    typeIndex = typeCombo->currentIndex();
    colorIndex = colorCombo->currentIndex();
    for (int i = 0; i < kTextCount; ++i)
        this->*kTextRows[i].text = textEdits[i]->text();
    ModalDialog::OnOK();
}
