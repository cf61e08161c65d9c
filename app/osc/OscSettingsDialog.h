#pragma once

#include "OscTarget.h"

#include <QDialog>

class QDialogButtonBox;
class QLineEdit;
class QSpinBox;

// Edits where the test mode's OSC messages go: a host and a port. OK stays disabled while the
// host is not one the target's text form accepts (empty, spaces).
class OscSettingsDialog : public QDialog {
    Q_OBJECT

public:
    explicit OscSettingsDialog(const OscTarget& target, QWidget* parent = nullptr);

    OscTarget Target() const;

private:
    void UpdateOk();

    QLineEdit* host_;
    QSpinBox* port_;
    QDialogButtonBox* buttons_;
};
