#include "OscSettingsDialog.h"

#include "app/network/ServiceBrowser.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { kName, kAddress, kPort };

}  // namespace

OscSettingsDialog::OscSettingsDialog(const OscTarget& target, QWidget* parent,
                                     ServiceBrowser* receivers)
    : QDialog(parent),
      host_(new QLineEdit(QString::fromStdString(target.host), this)),
      port_(new QSpinBox(this)),
      receivers_(receivers),
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
    if (receivers_ != nullptr) {
        list_ = new QTreeWidget(this);
        list_->setObjectName(QStringLiteral("receivers"));
        list_->setHeaderLabels({tr("Name"), tr("Address"), tr("Port")});
        list_->setRootIsDecorated(false);
        list_->setSortingEnabled(true);
        list_->sortByColumn(kName, Qt::AscendingOrder);
        list_->header()->setStretchLastSection(false);
        list_->header()->setSectionResizeMode(kName, QHeaderView::Stretch);
        listState_ = new QLabel(this);
        listState_->setObjectName(QStringLiteral("receiversState"));
        listState_->setWordWrap(true);
        auto* caption = new QLabel(tr("OSC &receivers on this network:"), this);
        caption->setBuddy(list_);
        column->addWidget(caption);
        column->addWidget(list_);
        column->addWidget(listState_);
        connect(receivers_, &ServiceBrowser::changed, this, &OscSettingsDialog::ListReceivers);
        connect(list_, &QTreeWidget::currentItemChanged, this, &OscSettingsDialog::Pick);
        connect(list_, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);
        ListReceivers();
        resize(520, 360);
    }
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

void OscSettingsDialog::ListReceivers()
{
    // The list is made anew; what the user picked stays picked without being picked again.
    const QTreeWidgetItem* current = list_->currentItem();
    const QStringList picked =
        current != nullptr
            ? QStringList{current->text(kName), current->text(kAddress), current->text(kPort)}
            : QStringList();
    const QSignalBlocker quiet(list_);
    list_->clear();
    for (const FoundService& receiver : receivers_->Services()) {
        const QStringList texts{receiver.name, receiver.address, QString::number(receiver.port)};
        auto* item = new QTreeWidgetItem(list_, texts);
        if (texts == picked)
            list_->setCurrentItem(item);
    }
    const QString problem = receivers_->Problem();
    listState_->setText(!problem.isEmpty()           ? problem
                        : list_->topLevelItemCount() ? QString()
                                                     : tr("None found yet."));
}

void OscSettingsDialog::Pick()
{
    const QTreeWidgetItem* item = list_->currentItem();
    if (item == nullptr)
        return;
    host_->setText(item->text(kAddress));
    port_->setValue(item->text(kPort).toInt());
}
