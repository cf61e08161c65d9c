#include "OSCParameterEditorDlg.h"

#include "document/ControlTables.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

struct TextRow {
    QString OSCParameterEditorDlg::*text;
    const char* label;
    const char* objectName;
};

const TextRow kTextRows[] = {
    {&OSCParameterEditorDlg::nameText, QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "&Name:"),
     "name"},
    {&OSCParameterEditorDlg::commandText,
     QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "OSC &command:"), "command"},
    {&OSCParameterEditorDlg::xText, QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "&X:"), "x"},
    {&OSCParameterEditorDlg::yText, QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "&Y:"), "y"},
    {&OSCParameterEditorDlg::widthText, QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "&Width:"),
     "width"},
    {&OSCParameterEditorDlg::heightText, QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "&Height:"),
     "height"},
    {&OSCParameterEditorDlg::minValueText,
     QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "M&inimum value:"), "minValue"},
    {&OSCParameterEditorDlg::maxValueText,
     QT_TRANSLATE_NOOP("OSCParameterEditorDlg", "M&aximum value:"), "maxValue"},
};

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
    typeIndex = typeCombo->currentIndex();
    colorIndex = colorCombo->currentIndex();
    for (int i = 0; i < kTextCount; ++i)
        this->*kTextRows[i].text = textEdits[i]->text();
    ModalDialog::OnOK();
}
