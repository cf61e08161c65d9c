#include "OscInputDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

const QString kAllInterfaces = QStringLiteral("all");

}  // namespace

OscInputDialog::OscInputDialog(const OscInput& input, QWidget* parent)
    : QDialog(parent),
      on_(new QCheckBox(tr("&Listen for OSC in test mode"), this)),
      interface_(new QLineEdit(
          input.host.empty() ? kAllInterfaces : QString::fromStdString(input.host), this)),
      port_(new QSpinBox(this)),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("OSC Input"));
    on_->setObjectName(QStringLiteral("on"));
    on_->setChecked(input.on);
    interface_->setObjectName(QStringLiteral("interface"));
    interface_->setToolTip(
        tr("\u201call\u201d, or the address of one of this computer's interfaces"));
    port_->setObjectName(QStringLiteral("port"));
    port_->setRange(1, 65535);
    port_->setValue(input.port);

    auto* form = new QFormLayout;
    form->addRow(on_);
    form->addRow(tr("&Interface:"), interface_);
    form->addRow(tr("&Port:"), port_);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(buttons_);

    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(interface_, &QLineEdit::textChanged, this, &OscInputDialog::UpdateOk);
    UpdateOk();
}

OscInput OscInputDialog::Input() const
{
    const QString host = interface_->text().trimmed();
    return {on_->isChecked(), host == kAllInterfaces ? std::string() : host.toStdString(),
            port_->value()};
}

void OscInputDialog::UpdateOk()
{
    const OscInput input = Input();
    std::string ignored;
    const bool valid =
        input.host.empty() || ParseOscTarget(ToString(OscTarget{input.host, input.port}), ignored);
    buttons_->button(QDialogButtonBox::Ok)->setEnabled(valid);
}
