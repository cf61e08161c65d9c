#pragma once

#include <QWidget>

#include <cstdint>

class QTableWidget;
class QTime;

// The panel that lists the last OSC messages sent in test mode, newest at the top, and the
// errors met in sending them, in red.
class OscMonitor : public QWidget {
    Q_OBJECT

public:
    explicit OscMonitor(QWidget* parent = nullptr);

    void AddSent(const QString& address, std::int32_t value, const QTime& time);
    void AddError(const QString& text, const QTime& time);

    // Rows shown, at most 200: the oldest goes when a new one comes.
    int Count() const;
    // Row 0 is the newest; an error's address is its text, its value is empty.
    QString AddressAt(int row) const;
    QString ValueAt(int row) const;

private:
    // Puts a row at the top and drops the oldest past the limit.
    void AddRow(const QString& address, const QString& value, const QTime& time);

    QTableWidget* table_;
};
