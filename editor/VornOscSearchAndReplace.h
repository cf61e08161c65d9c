#pragma once

#include "ModalDialog.h"

#include <QString>

class QCheckBox;
class QLineEdit;
class QPushButton;

// Asks for a search text, its replacement and where to look: control names,
// control commands or both.
class VornOscSearchAndReplace : public ModalDialog {
    Q_OBJECT

public:
    static constexpr int kMaxTextLength = 255;  // the texts must fit a 256-byte field

    QString searchText;
    QString replaceText;
    bool inControlName = false;
    bool inControlCommand = false;

    explicit VornOscSearchAndReplace(QWidget* parent = nullptr);

    void OnInitDialog() override;
    void OnOK() override;

    // OK only with something to search for and somewhere to search.
    void UpdateControls();

    void OnEnChangeSearch();
    void OnEnChangeReplace();
    void OnBnClickedIncontrolname();
    void OnBnClickedIncontrolcommand();

private:
    QLineEdit* searchEdit;
    QLineEdit* replaceEdit;
    QCheckBox* nameBox;
    QCheckBox* commandBox;
    QPushButton* okButton;
};
