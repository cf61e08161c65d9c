#include "OscSettingsDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

OscSettingsDialog::OscSettingsDialog(const OscTarget& target, QWidget* parent)
    : QDialog(parent),
      host_(new QLineEdit(QString::fromStdString(target.host), this)),
      port_(new QSpinBox(this)),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("OSC Target"));
    host_->setObjectName(QStringLiteral("host"));
    port_->setObjectName(QStringLiteral("port"));
    port_->setRange(1, 65535);
    port_->setValue(target.port);

    auto* form = new QFormLayout;
    form->addRow(tr("&Host:"), host_);
    form->addRow(tr("&Port:"), port_);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(buttons_);

    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(host_, &QLineEdit::textChanged, this, &OscSettingsDialog::UpdateOk);
    UpdateOk();
}

OscTarget OscSettingsDialog::Target() const
{
    return {host_->text().toStdString(), port_->value()};
}

void OscSettingsDialog::UpdateOk()
{
    // One rule for hosts: the one the saved "HOST:PORT" text is read back with.
    std::string ignored;
    const bool valid = ParseOscTarget(ToString(Target()), ignored).has_value();
    buttons_->button(QDialogButtonBox::Ok)->setEnabled(valid);
}
