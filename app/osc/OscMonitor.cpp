#include "OscMonitor.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QTime>
#include <QVBoxLayout>

namespace {

constexpr int kMaxRows = 200;

enum Column { kAddress, kValue, kTime, kColumnCount };

}  // namespace

OscMonitor::OscMonitor(QWidget* parent)
    : QWidget(parent), table_(new QTableWidget(0, kColumnCount, this))
{
    table_->setHorizontalHeaderLabels({tr("Address"), tr("Value"), tr("Time")});
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setSectionResizeMode(kAddress, QHeaderView::Stretch);
    table_->horizontalHeader()->setSectionResizeMode(kValue, QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setSectionResizeMode(kTime, QHeaderView::ResizeToContents);

    auto* clear = new QPushButton(tr("Clear"), this);
    clear->setObjectName(QStringLiteral("clear"));
    connect(clear, &QPushButton::clicked, table_, [this] { table_->setRowCount(0); });

    auto* column = new QVBoxLayout(this);
    column->addWidget(table_);
    column->addWidget(clear, 0, Qt::AlignRight);
}

void OscMonitor::AddSent(const QString& address, std::int32_t value, const QTime& time)
{
    AddRow(address, QString::number(value), time);
}

void OscMonitor::AddError(const QString& text, const QTime& time)
{
    AddRow(text, QString(), time);
    for (int column = 0; column < kColumnCount; ++column)
        table_->item(0, column)->setForeground(Qt::red);
}

int OscMonitor::Count() const
{
    return table_->rowCount();
}

QString OscMonitor::AddressAt(int row) const
{
    return table_->item(row, kAddress)->text();
}

QString OscMonitor::ValueAt(int row) const
{
    return table_->item(row, kValue)->text();
}

void OscMonitor::AddRow(const QString& address, const QString& value, const QTime& time)
{
    table_->insertRow(0);
    table_->setItem(0, kAddress, new QTableWidgetItem(address));
    table_->setItem(0, kValue, new QTableWidgetItem(value));
    table_->setItem(0, kTime, new QTableWidgetItem(time.toString(QStringLiteral("HH:mm:ss.zzz"))));
    if (table_->rowCount() > kMaxRows)
        table_->removeRow(kMaxRows);
}
