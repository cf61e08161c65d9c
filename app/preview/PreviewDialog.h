#pragma once

#include "PreviewPlace.h"

#include <QDialog>

class QCheckBox;
class QDialogButtonBox;
class QLineEdit;
class QSpinBox;

// Edits whether the phone preview is served, on which interface ("all", or
// one address) and which port. OK stays disabled while the interface is not
// one an address could be.
class PreviewDialog : public QDialog {
    Q_OBJECT

public:
    explicit PreviewDialog(const PreviewPlace& place, QWidget* parent = nullptr);

    PreviewPlace Place() const;

private:
    void UpdateOk();

    QCheckBox* on_;
    QLineEdit* interface_;
    QSpinBox* port_;
    QDialogButtonBox* buttons_;
};
