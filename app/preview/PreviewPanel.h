#pragma once

#include <QWidget>

class PhonePreview;
class QLabel;
class QListWidget;

// The Preview panel: the address to open on a phone, as text and as a QR
// code to scan, and the browsers showing the preview.
class PreviewPanel : public QWidget {
    Q_OBJECT

public:
    explicit PreviewPanel(const PhonePreview& preview, QWidget* parent = nullptr);

    // Brings the panel up to date with the preview.
    void Refresh();

private:
    const PhonePreview& preview_;
    QLabel* address_;
    QLabel* code_;
    QListWidget* browsers_;
};
