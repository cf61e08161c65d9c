#pragma once

#include <QMdiSubWindow>

#include <cstdint>

class DesktopHost;
struct ControlValue;
struct LayoutSnapshot;
struct ReceivedValue;

// The frame of one editor in the main window: it takes the editor the module
// hands it, shows its title with a "*" while the layout has unsaved changes,
// and closes only when the editor allows it and its layout is saved or given
// up by the user.
class EditorFrame : public QMdiSubWindow {
    Q_OBJECT

public:
    explicit EditorFrame(DesktopHost& host, QWidget* parent = nullptr);

    QWidget* Editor() const;
    // A name of this frame's own, for its recovery copy.
    const QString& RecoveryName() const { return recoveryName_; }
    // The path of the editor's layout, as the editor tells it ("New" until saved).
    QString LayoutPath() const;
    bool IsNeverSaved() const;
    // Whether the layout has changes its file does not have, as the editor tells it.
    bool IsModified() const;
    // Brings the "*" of the title up to date with the editor.
    void ShowModified();
    // Writes the layout as it stands to path, leaving its own file, name and
    // changed state alone; false when it could not.
    bool WriteCopy(const QString& path) const;
    // Makes the layout one never saved and changed, shown under name until saved:
    // a layout brought in from another app, opened through a copy.
    void BecomeNew(const QString& name);
    // Makes the layout the one of the file at path (the file system's bytes),
    // changed: a layout reopened from its recovery copy. False when the
    // editor cannot keep that path.
    bool BecomeChangedAt(const QByteArray& path);
    // The layout's target device (0 or 1), which its file does not keep.
    int Device() const;
    void SetDevice(int device);
    // The grid step of every canvas: set from step when it is from 2 to 100,
    // answered as it stands.
    int GridStep(int step = 0) const;
    // The canvas's zoom in percent.
    int Zoom() const;
    // Sets the test-mode value of the controls at address; answers how many.
    int SetValues(const char* address, const ReceivedValue& value);
    // Sets the test-mode value of one control, when value is given, then
    // fills snapshot with the layout as it stands, when it is given.
    void LayoutState(LayoutSnapshot* snapshot, const ControlValue* value) const;
    // The height of the frame's title bar, the step between cascaded frames.
    int TitleHeight() const;
    // The layout's name as the title shows it: "Show" for Show.VornOsc, "New" until saved.
    const QString& LayoutName() const { return title_; }
    // The title as the frame shows it: the editor's, with a "*" after the
    // layout's name while it has unsaved changes.
    QString ShownTitle() const;
    // Delivers a message to the editor at once and returns its answer.
    std::intptr_t Send(unsigned message, std::intptr_t wParam = 0, std::intptr_t lParam = 0) const;

Q_SIGNALS:
    // The layout was saved because the user chose Save when it closed.
    void savedOnClose();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // Sends a host request of code, with word at index in its record.
    std::intptr_t Request(std::intptr_t code, int index = 1, std::intptr_t word = 0) const;

    DesktopHost& host_;
    QString recoveryName_;
    QString title_;
};
