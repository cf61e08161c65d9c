#pragma once

#include <QWidget>

#include <cstdint>

class QLabel;
class QTableWidget;
class QTime;

// The panel that lists the last OSC messages sent and received in test mode, newest at the top,
// with their direction, the layouts sent by layout sync, the errors met, in red, and how many
// received messages were ignored.
class OscMonitor : public QWidget {
    Q_OBJECT

public:
    explicit OscMonitor(QWidget* parent = nullptr);

    void AddSent(const QString& address, std::int32_t value, const QTime& time);
    void AddReceived(const QString& address, const QString& value, const QTime& time);
    void AddError(const QString& text, const QTime& time);
    // A touch app at peerAddress took the active layout by layout sync, as file.
    void AddSynced(const QString& peerAddress, const QString& file, const QTime& time);
    // Received messages that set nothing: no value, or a packet that did not read.
    void ShowIgnored(int ignored, int malformed);

    // Rows shown, at most 200: the oldest goes when a new one comes.
    int Count() const;
    // Row 0 is the newest; an error's address is its text, its value is empty.
    QString AddressAt(int row) const;
    QString ValueAt(int row) const;
    // "out" for a message sent, "in" for one received, "sync" for a layout
    // sent by layout sync, empty for an error.
    QString DirectionAt(int row) const;
    QString IgnoredText() const;

    // Room for eight rows: the panel opens this high.
    QSize sizeHint() const override;

private:
    // Puts a row at the top and drops the oldest past the limit.
    void AddRow(const QString& direction, const QString& address, const QString& value,
                const QTime& time);

    QTableWidget* table_;
    QLabel* ignored_;
};
