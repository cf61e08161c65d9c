#include "PreviewDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHostAddress>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

const QString kAllInterfaces = QStringLiteral("all");

}  // namespace

PreviewDialog::PreviewDialog(const PreviewPlace& place, QWidget* parent)
    : QDialog(parent),
      on_(new QCheckBox(tr("&Show the layout on phones and tablets on this network"), this)),
      interface_(new QLineEdit(
          place.host.empty() ? kAllInterfaces : QString::fromStdString(place.host), this)),
      port_(new QSpinBox(this)),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Phone Preview"));
    on_->setObjectName(QStringLiteral("on"));
    on_->setChecked(place.on);
    interface_->setObjectName(QStringLiteral("interface"));
    interface_->setToolTip(
        tr("\u201call\u201d, or the address of one of this computer's interfaces"));
    port_->setObjectName(QStringLiteral("port"));
    port_->setRange(1, 65535);
    port_->setValue(place.port);

    auto* form = new QFormLayout;
    form->addRow(on_);
    form->addRow(tr("&Interface:"), interface_);
    form->addRow(tr("&Port:"), port_);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(buttons_);

    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(interface_, &QLineEdit::textChanged, this, &PreviewDialog::UpdateOk);
    UpdateOk();
}

PreviewPlace PreviewDialog::Place() const
{
    const QString host = interface_->text().trimmed();
    return {on_->isChecked(), host == kAllInterfaces ? std::string() : host.toStdString(),
            port_->value()};
}

void PreviewDialog::UpdateOk()
{
    const QString host = interface_->text().trimmed();
    buttons_->button(QDialogButtonBox::Ok)
        ->setEnabled(host == kAllInterfaces || !QHostAddress(host).isNull());
}
