#include "VornOscSearchAndReplace.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

VornOscSearchAndReplace::VornOscSearchAndReplace(QWidget* parent) : ModalDialog(parent)
{
    setWindowTitle(tr("Search and Replace"));
    searchEdit = new QLineEdit(this);
    searchEdit->setObjectName(QStringLiteral("search"));
    searchEdit->setMaxLength(kMaxTextLength);
    replaceEdit = new QLineEdit(this);
    replaceEdit->setObjectName(QStringLiteral("replace"));
    replaceEdit->setMaxLength(kMaxTextLength);
    nameBox = new QCheckBox(tr("In control &names"), this);
    nameBox->setObjectName(QStringLiteral("inControlName"));
    commandBox = new QCheckBox(tr("In OSC &commands"), this);
    commandBox->setObjectName(QStringLiteral("inControlCommand"));

    auto* form = new QFormLayout;
    form->addRow(tr("&Search for:"), searchEdit);
    form->addRow(tr("&Replace with:"), replaceEdit);
    form->addRow(nameBox);
    form->addRow(commandBox);

    QDialogButtonBox* buttons = MakeButtons();
    okButton = buttons->button(QDialogButtonBox::Ok);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(buttons);

    connect(searchEdit, &QLineEdit::textChanged, this, &VornOscSearchAndReplace::OnEnChangeSearch);
    connect(replaceEdit, &QLineEdit::textChanged, this,
            &VornOscSearchAndReplace::OnEnChangeReplace);
    connect(nameBox, &QCheckBox::toggled, this, &VornOscSearchAndReplace::OnBnClickedIncontrolname);
    connect(commandBox, &QCheckBox::toggled, this,
            &VornOscSearchAndReplace::OnBnClickedIncontrolcommand);
}

void VornOscSearchAndReplace::OnInitDialog()
{
    searchEdit->setText(searchText);
    replaceEdit->setText(replaceText);
    nameBox->setChecked(inControlName);
    commandBox->setChecked(inControlCommand);
    UpdateControls();
}

void VornOscSearchAndReplace::OnOK()
{
    searchText = searchEdit->text();
    replaceText = replaceEdit->text();
    inControlName = nameBox->isChecked();
    inControlCommand = commandBox->isChecked();
    ModalDialog::OnOK();
}

void VornOscSearchAndReplace::UpdateControls()
{
    // The widgets, not the fields: the fields change only on OK. An empty
    // replacement is allowed, it deletes what was found.
    okButton->setEnabled(!searchEdit->text().isEmpty() &&
                         (nameBox->isChecked() || commandBox->isChecked()));
}

void VornOscSearchAndReplace::OnEnChangeSearch()
{
    UpdateControls();
}

void VornOscSearchAndReplace::OnEnChangeReplace()
{
    UpdateControls();
}

void VornOscSearchAndReplace::OnBnClickedIncontrolname()
{
    UpdateControls();
}

void VornOscSearchAndReplace::OnBnClickedIncontrolcommand()
{
    UpdateControls();
}
