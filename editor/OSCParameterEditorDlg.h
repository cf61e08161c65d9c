#pragma once

#include "ModalDialog.h"

#include <QString>

class OSCControl;
class QComboBox;
class QLineEdit;

// Edits one control: its texts, position, size, value range, type and colour,
// all as the user typed them; the caller turns them into numbers.
class OSCParameterEditorDlg : public ModalDialog {
    Q_OBJECT

public:
    OSCControl* controlPtr = nullptr;  // for the caller; the dialog does not read it
    int typeIndex = 0;                 // into ControlTypes, -1 when none is chosen
    int colorIndex = 0;                // into ColorTypes, -1 when none is chosen
    QString nameText;
    QString commandText;
    QString xText;
    QString yText;
    QString widthText;
    QString heightText;
    QString minValueText;
    QString maxValueText;

    explicit OSCParameterEditorDlg(QWidget* parent = nullptr);

    void OnInitDialog() override;
    void OnOK() override;

private:
    static constexpr int kTextCount = 8;
    QLineEdit* textEdits[kTextCount];  // in the order of the eight texts
    QComboBox* typeCombo;
    QComboBox* colorCombo;
};
