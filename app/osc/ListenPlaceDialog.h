#pragma once

#include <QDialog>
#include <QStringList>

#include <string>

class QCheckBox;
class QDialogButtonBox;
class QLineEdit;
class QSpinBox;

// Edits where the application listens: on or off, on which interface ("all",
// or one address) and which port. OK stays disabled while the interface is
// neither "all" nor an address nor a name the caller accepts.
class ListenPlaceDialog : public QDialog {
    Q_OBJECT

public:
    ListenPlaceDialog(const QString& title, const QString& onText, bool on,
                      const std::string& host, int port, QWidget* parent);

protected:
    // Accepts name as an interface, which the caller understands.
    void AcceptName(const QString& name);
    bool On() const;
    // Empty for all interfaces.
    std::string Host() const;
    int Port() const;

private:
    void UpdateOk();

    QCheckBox* on_;
    QLineEdit* interface_;
    QSpinBox* port_;
    QDialogButtonBox* buttons_;
    QStringList names_;
};
