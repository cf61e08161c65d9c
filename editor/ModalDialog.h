#pragma once

#include <QDialog>

class QComboBox;
class QDialogButtonBox;

// A dialog that edits values held in its fields: each time it is shown,
// OnInitDialog puts the fields into the widgets; OK runs OnOK, which reads
// them back and closes with Accepted. Cancel leaves the fields as they were.
class ModalDialog : public QDialog {
    Q_OBJECT

public:
    explicit ModalDialog(QWidget* parent);

    virtual void OnInitDialog() = 0;
    virtual void OnOK();

protected:
    // OK and Cancel, OK leading to OnOK.
    QDialogButtonBox* MakeButtons();

    // Empties combo, adds the names in order and selects one.
    static void FillCombo(QComboBox* combo, const char* const* names, int count, int selected);

    void showEvent(QShowEvent* event) override;
};
