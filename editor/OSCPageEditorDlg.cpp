#include "OSCPageEditorDlg.h"

#include "document/ControlTables.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

OSCPageEditorDlg::OSCPageEditorDlg(QWidget* parent) : ModalDialog(parent)
{
    setWindowTitle(tr("Page Properties"));
    nameEdit = new QLineEdit(this);
    nameEdit->setObjectName(QStringLiteral("pageName"));
    deviceCombo = new QComboBox(this);
    deviceCombo->setObjectName(QStringLiteral("device"));
    orientationCombo = new QComboBox(this);
    orientationCombo->setObjectName(QStringLiteral("orientation"));

    auto* form = new QFormLayout;
    form->addRow(tr("Page &name:"), nameEdit);
    form->addRow(tr("&Device:"), deviceCombo);
    form->addRow(tr("&Orientation:"), orientationCombo);
    form->addRow(new QLabel(tr("Device and orientation apply to every page."), this));

    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(MakeButtons());
}

void OSCPageEditorDlg::OnInitDialog()
{
    FillCombo(deviceCombo, DeviceNames, kDeviceCount, deviceIndex);
    FillCombo(orientationCombo, OrientationNames, kOrientationCount, orientationIndex);
    nameEdit->setText(pageName);
}

void OSCPageEditorDlg::OnOK()
{
    deviceIndex = deviceCombo->currentIndex();
    orientationIndex = orientationCombo->currentIndex();
    pageName = nameEdit->text();
    ModalDialog::OnOK();
}
