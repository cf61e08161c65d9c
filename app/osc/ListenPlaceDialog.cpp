#include "ListenPlaceDialog.h"

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

ListenPlaceDialog::ListenPlaceDialog(const QString& title, const QString& onText, bool on,
                                     const std::string& host, int port, QWidget* parent)
    : QDialog(parent),
      on_(new QCheckBox(onText, this)),
      interface_(
          new QLineEdit(host.empty() ? kAllInterfaces : QString::fromStdString(host), this)),
      port_(new QSpinBox(this)),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(title);
    on_->setObjectName(QStringLiteral("on"));
    on_->setChecked(on);
    interface_->setObjectName(QStringLiteral("interface"));
    interface_->setToolTip(
        tr("\u201call\u201d, or the address of one of this computer's interfaces"));
    port_->setObjectName(QStringLiteral("port"));
    port_->setRange(1, 65535);
    port_->setValue(port);

    auto* form = new QFormLayout;
    form->addRow(on_);
    form->addRow(tr("&Interface:"), interface_);
    form->addRow(tr("&Port:"), port_);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(buttons_);

    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(interface_, &QLineEdit::textChanged, this, &ListenPlaceDialog::UpdateOk);
    UpdateOk();
}

void ListenPlaceDialog::AcceptName(const QString& name)
{
    names_.append(name);
    UpdateOk();
}

bool ListenPlaceDialog::On() const
{
    return on_->isChecked();
}

std::string ListenPlaceDialog::Host() const
{
    const QString host = interface_->text().trimmed();
    return host == kAllInterfaces ? std::string() : host.toStdString();
}

int ListenPlaceDialog::Port() const
{
    return port_->value();
}

void ListenPlaceDialog::UpdateOk()
{
    const QString host = interface_->text().trimmed();
    buttons_->button(QDialogButtonBox::Ok)
        ->setEnabled(host == kAllInterfaces || names_.contains(host, Qt::CaseInsensitive) ||
                     !QHostAddress(host).isNull());
}
