#pragma once

#include "ModalDialog.h"

#include <QString>

class QComboBox;
class QLineEdit;

// Edits the current page's name and the layout's target device and orientation.
class OSCPageEditorDlg : public ModalDialog {
    Q_OBJECT

public:
    int deviceIndex = 0;       // into DeviceNames, -1 when none is chosen
    int orientationIndex = 0;  // into OrientationNames, -1 when none is chosen
    QString pageName;

    explicit OSCPageEditorDlg(QWidget* parent = nullptr);

    void OnInitDialog() override;
    void OnOK() override;

private:
    QComboBox* deviceCombo;
    QComboBox* orientationCombo;
    QLineEdit* nameEdit;
};
