#pragma once

#include "OscTarget.h"

#include <QDialog>

class QCheckBox;
class QDialogButtonBox;
class QLineEdit;
class QSpinBox;

// Edits whether test mode listens for OSC, on which interface ("all", or one
// address) and which port. OK stays disabled while the interface is not one
// an address could be.
class OscInputDialog : public QDialog {
    Q_OBJECT

public:
    explicit OscInputDialog(const OscInput& input, QWidget* parent = nullptr);

    OscInput Input() const;

private:
    void UpdateOk();

    QCheckBox* on_;
    QLineEdit* interface_;
    QSpinBox* port_;
    QDialogButtonBox* buttons_;
};
