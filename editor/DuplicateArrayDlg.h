#pragma once

#include "ModalDialog.h"

class QCheckBox;
class QLineEdit;

// Asks how many copies of the selection to make, how far apart, and which of
// their numbers count on.
class DuplicateArrayDlg : public ModalDialog {
    Q_OBJECT

public:
    int count = 1;
    int stepX = 0;
    int stepY = 0;
    bool numberNames = true;
    bool numberAddresses = true;
    bool numberControlNumbers = true;

    explicit DuplicateArrayDlg(QWidget* parent = nullptr);

    void OnInitDialog() override;
    void OnOK() override;

private:
    QLineEdit* countEdit;
    QLineEdit* stepXEdit;
    QLineEdit* stepYEdit;
    QCheckBox* namesBox;
    QCheckBox* addressesBox;
    QCheckBox* numbersBox;
};
