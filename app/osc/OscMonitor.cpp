#include "OscMonitor.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTime>
#include <QVBoxLayout>

namespace {

constexpr int kMaxRows = 200;
// Rows the panel has room for when it first opens.
constexpr int kRowsShownAtFirst = 8;

enum Column { kDirection, kAddress, kValue, kTime, kColumnCount };

}  // namespace

OscMonitor::OscMonitor(QWidget* parent)
    : QWidget(parent), table_(new QTableWidget(0, kColumnCount, this)), ignored_(new QLabel(this))
{
    table_->setHorizontalHeaderLabels({tr("Dir."), tr("Address"), tr("Value"), tr("Time")});
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setSectionResizeMode(kDirection, QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setSectionResizeMode(kAddress, QHeaderView::Stretch);
    table_->horizontalHeader()->setSectionResizeMode(kValue, QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setSectionResizeMode(kTime, QHeaderView::ResizeToContents);

    auto* clear = new QPushButton(tr("Clear"), this);
    clear->setObjectName(QStringLiteral("clear"));
    connect(clear, &QPushButton::clicked, table_, [this] { table_->setRowCount(0); });

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(ignored_, 1);
    bottom->addWidget(clear);
    auto* column = new QVBoxLayout(this);
    column->addWidget(table_);
    column->addLayout(bottom);
    ShowIgnored(0, 0);
}

void OscMonitor::AddSent(const QString& address, std::int32_t value, const QTime& time)
{
    AddRow(QStringLiteral("out"), address, QString::number(value), time);
}

void OscMonitor::AddReceived(const QString& address, const QString& value, const QTime& time)
{
    AddRow(QStringLiteral("in"), address, value, time);
}

void OscMonitor::AddError(const QString& text, const QTime& time)
{
    AddRow(QString(), text, QString(), time);
    for (int column = 0; column < kColumnCount; ++column)
        table_->item(0, column)->setForeground(Qt::red);
}

void OscMonitor::AddSynced(const QString& peerAddress, const QString& file, const QTime& time)
{
    AddRow(QStringLiteral("sync"), peerAddress, file, time);
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

QString OscMonitor::DirectionAt(int row) const
{
    return table_->item(row, kDirection)->text();
}

void OscMonitor::ShowIgnored(int ignored, int malformed)
{
    ignored_->setText(
        tr("Received and ignored: %1 without a value, %2 unreadable").arg(ignored).arg(malformed));
}

QSize OscMonitor::sizeHint() const
{
    // The rows wanted and the column titles above them, in the table's frame,
    // then what the panel has beside the table.
    const int table = kRowsShownAtFirst * table_->verticalHeader()->defaultSectionSize() +
                      table_->horizontalHeader()->sizeHint().height() + 2 * table_->frameWidth();
    const QSize whole = QWidget::sizeHint();
    return {whole.width(), whole.height() - table_->sizeHint().height() + table};
}

QString OscMonitor::IgnoredText() const
{
    return ignored_->text();
}

void OscMonitor::AddRow(const QString& direction, const QString& address, const QString& value,
                        const QTime& time)
{
    table_->insertRow(0);
    table_->setItem(0, kDirection, new QTableWidgetItem(direction));
    table_->setItem(0, kAddress, new QTableWidgetItem(address));
    table_->setItem(0, kValue, new QTableWidgetItem(value));
    table_->setItem(0, kTime, new QTableWidgetItem(time.toString(QStringLiteral("HH:mm:ss.zzz"))));
    if (table_->rowCount() > kMaxRows)
        table_->removeRow(kMaxRows);
}
