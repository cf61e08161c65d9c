#include "ModalDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QShowEvent>

ModalDialog::ModalDialog(QWidget* parent) : QDialog(parent) {}

void ModalDialog::OnOK()
{
    accept();
}

QDialogButtonBox* ModalDialog::MakeButtons()
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &ModalDialog::OnOK);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return buttons;
}

void ModalDialog::FillCombo(QComboBox* combo, const char* const* names, int count, int selected)
{
    combo->clear();
    for (int i = 0; i < count; ++i)
        combo->addItem(QString::fromUtf8(names[i]));
    // An index past the list, as a damaged layout may hold, selects nothing.
    combo->setCurrentIndex(selected);
}

void ModalDialog::showEvent(QShowEvent* event)
{
    // A show the window system makes, as after minimising, must not undo edits.
    if (!event->spontaneous())
        OnInitDialog();
    QDialog::showEvent(event);
}
