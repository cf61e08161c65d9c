#include "app/osc/OscMonitor.h"

#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTime>

#include <gtest/gtest.h>

namespace {

const QTime kTime(12, 34, 56, 789);

TEST(OscMonitor, ShowsTheNewestFirstAndErrorsInRed)
{
    OscMonitor monitor;
    monitor.AddSent(QStringLiteral("/TRVX/a"), 1, kTime);
    monitor.AddError(QStringLiteral("Could not send"), kTime);
    monitor.AddSent(QStringLiteral("/TRVX/b"), -5, kTime);

    ASSERT_EQ(monitor.Count(), 3);
    const QStringList expected = {QStringLiteral("/TRVX/b"),        QStringLiteral("-5"),
                                  QStringLiteral("Could not send"), QString(),
                                  QStringLiteral("/TRVX/a"),        QStringLiteral("1")};
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(monitor.AddressAt(row), expected[2 * row]);
        EXPECT_EQ(monitor.ValueAt(row), expected[2 * row + 1]);
    }
    const QTableWidget& table = *monitor.findChild<QTableWidget*>();
    EXPECT_EQ(table.editTriggers(), QAbstractItemView::NoEditTriggers);
    const QString headers[] = {QStringLiteral("Address"), QStringLiteral("Value"),
                               QStringLiteral("Time")};
    for (int column = 0; column < 3; ++column) {
        SCOPED_TRACE(column);
        EXPECT_EQ(table.horizontalHeaderItem(column)->text(), headers[column]);
        EXPECT_EQ(table.item(1, column)->foreground().color(), QColor(Qt::red));
        EXPECT_NE(table.item(0, column)->foreground().color(), QColor(Qt::red));
    }
    EXPECT_EQ(table.item(0, 2)->text(), QStringLiteral("12:34:56.789"));
}

TEST(OscMonitor, KeepsTheLast200Rows)
{
    OscMonitor monitor;
    for (int value = 0; value < 200; ++value)
        monitor.AddSent(QStringLiteral("/TRVX/a"), value, kTime);
    ASSERT_EQ(monitor.Count(), 200);
    EXPECT_EQ(monitor.ValueAt(199), QStringLiteral("0"));

    monitor.AddSent(QStringLiteral("/TRVX/a"), 200, kTime);
    ASSERT_EQ(monitor.Count(), 200);
    EXPECT_EQ(monitor.ValueAt(0), QStringLiteral("200"));
    EXPECT_EQ(monitor.ValueAt(199), QStringLiteral("1"));
}

TEST(OscMonitor, ClearEmptiesTheList)
{
    OscMonitor monitor;
    monitor.show();
    monitor.AddSent(QStringLiteral("/TRVX/a"), 1, kTime);
    monitor.AddError(QStringLiteral("Could not send"), kTime);
    QTest::mouseClick(monitor.findChild<QPushButton*>(QStringLiteral("clear")), Qt::LeftButton);
    EXPECT_EQ(monitor.Count(), 0);
}

}  // namespace
