#pragma once

#include "OscTarget.h"

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QSpinBox;
class QTreeWidget;
class ServiceBrowser;

// Edits where the test mode's OSC messages go: a host and a port. OK stays disabled while the
// host is not one the target's text form accepts (empty, spaces). Given a browser, it lists the
// OSC receivers on the network as they come and go; picking one fills in its address and port,
// which stay open to typing.
class OscSettingsDialog : public QDialog {
    Q_OBJECT

public:
    explicit OscSettingsDialog(const OscTarget& target, QWidget* parent = nullptr,
                               ServiceBrowser* receivers = nullptr);

    OscTarget Target() const;

private:
    void UpdateOk();
    void ListReceivers();
    void Pick();

    QLineEdit* host_;
    QSpinBox* port_;
    ServiceBrowser* receivers_;
    QTreeWidget* list_ = nullptr;
    QLabel* listState_ = nullptr;
    QDialogButtonBox* buttons_;
};
