#pragma once

#include <QMdiSubWindow>

#include <cstdint>

class DesktopHost;

// The frame of one editor in the main window: it takes the editor the module
// hands it, shows its title, and closes only when the editor allows it and
// its layout is saved or given up by the user.
class EditorFrame : public QMdiSubWindow {
    Q_OBJECT

public:
    explicit EditorFrame(const DesktopHost& host, QWidget* parent = nullptr);

    QWidget* Editor() const;
    // A name of this frame's own, for its recovery copy.
    const QString& RecoveryName() const { return recoveryName_; }
    // The path of the editor's layout, as the editor tells it ("New" until saved).
    QString LayoutPath() const;
    // Delivers a message to the editor at once and returns its answer.
    std::intptr_t Send(unsigned message, std::intptr_t wParam = 0, std::intptr_t lParam = 0) const;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    const DesktopHost& host_;
    QString recoveryName_;
};
