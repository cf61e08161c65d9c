#include "DuplicateArrayDlg.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QVBoxLayout>

namespace {

constexpr int kMostCopies = 128;
constexpr int kLongestStep = 32767;

QLineEdit* NamedEdit(QWidget* parent, const char* name)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QString::fromLatin1(name));
    return edit;
}

QCheckBox* NamedBox(QWidget* parent, const QString& text, const char* name)
{
    auto* box = new QCheckBox(text, parent);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}

}  // namespace

DuplicateArrayDlg::DuplicateArrayDlg(QWidget* parent) : ModalDialog(parent)
{
    setWindowTitle(tr("Duplicate as Array"));
    countEdit = NamedEdit(this, "count");
    stepXEdit = NamedEdit(this, "stepX");
    stepYEdit = NamedEdit(this, "stepY");
    namesBox = NamedBox(this, tr("Number the &names"), "numberNames");
    addressesBox = NamedBox(this, tr("Number the &addresses"), "numberAddresses");
    numbersBox = NamedBox(this, tr("Number the c&ontrol numbers"), "numberControlNumbers");

    auto* form = new QFormLayout;
    form->addRow(tr("&Copies:"), countEdit);
    form->addRow(tr("&Horizontal step:"), stepXEdit);
    form->addRow(tr("&Vertical step:"), stepYEdit);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    for (QCheckBox* box : {namesBox, addressesBox, numbersBox})
        column->addWidget(box);
    column->addWidget(MakeButtons());
}

void DuplicateArrayDlg::OnInitDialog()
{
    countEdit->setText(QString::number(count));
    stepXEdit->setText(QString::number(stepX));
    stepYEdit->setText(QString::number(stepY));
    namesBox->setChecked(numberNames);
    addressesBox->setChecked(numberAddresses);
    numbersBox->setChecked(numberControlNumbers);
}

void DuplicateArrayDlg::OnOK()
{
    struct Field {
        QLineEdit* edit;
        QString name;
        int lowest, highest;
        int* number;
    };
    const Field fields[] = {{countEdit, tr("Copies"), 1, kMostCopies, &count},
                            {stepXEdit, tr("The horizontal step"), -kLongestStep, kLongestStep, &stepX},
                            {stepYEdit, tr("The vertical step"), -kLongestStep, kLongestStep, &stepY}};
    for (const Field& field : fields) {
        bool whole = false;
        const int number = field.edit->text().trimmed().toInt(&whole, 10);
        if (whole && number >= field.lowest && number <= field.highest)
            continue;
        QMessageBox::warning(this, tr("OSC Editor"),
                             tr("%1 must be a whole number from %2 to %3, not \u201c%4\u201d.")
                                 .arg(field.name)
                                 .arg(field.lowest)
                                 .arg(field.highest)
                                 .arg(field.edit->text()));
        field.edit->setFocus();
        field.edit->selectAll();
        return;
    }
    for (const Field& field : fields)
        *field.number = field.edit->text().trimmed().toInt();
    numberNames = namesBox->isChecked();
    numberAddresses = addressesBox->isChecked();
    numberControlNumbers = numbersBox->isChecked();
    ModalDialog::OnOK();
}
