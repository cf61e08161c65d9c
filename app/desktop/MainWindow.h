#pragma once

#include "DesktopHost.h"
#include "LayoutHistory.h"
#include "RecoveryKeeper.h"
#include "app/network/NetworkServices.h"
#include "app/osc/OscSender.h"
#include "host/OSCParms.h"

#include <QMainWindow>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class EditorArea;
class EditorFrame;
struct LayoutFormat;
class ModuleLibrary;
class OscMonitor;
class PreviewPanel;
class QDockWidget;
class QLabel;
class QMenu;

// The application's window: one frame per open layout, the module's menus
// beside the application's own, the canvas's status texts, test-mode values
// sent as OSC, and the network services' settings and state.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow(ModuleLibrary& module, const OscTarget& target);
    ~MainWindow() override;

    // What a start does: offers the copies of layouts a crash left, opens the
    // layouts given (paths as the user typed them), or a new one when none is
    // open, and inserts the parameter list at insert, if any, on the last.
    void Start(const std::vector<std::string>& layouts, const std::string& insert);
    // Opens an editor on the layout at path, for the device it was last kept
    // for; false, after saying why, when none opens.
    bool OpenLayout(const QString& path);
    // The same for a path of bytes in the file system's encoding, which Qt
    // cannot always name when they are not UTF-8: the editor opens these bytes.
    bool OpenLayoutFile(const std::string& path);
    void NewLayout();
    EditorFrame* ActiveFrame() const;
    QList<EditorFrame*> Frames() const;
    // Saves the active layout; one never saved gets a name first.
    void SaveLayout();
    // Puts a new control of type on the active editor's page, from a record
    // made for it, as a host hands its parameters over.
    void InsertControl(int type);
    // The same for a JSON file of parameter records; a bad file inserts nothing.
    void InsertParametersFrom(const QString& path);
    QStringList RecentFiles() const { return history_.Recent(); }
    // Offers the recovery copies a run that ended without quitting left
    // behind, in one question: reopened, or discarded.
    void OfferRecovery();
    // Brings the recovery copies up to date; a timer does it every few seconds.
    void KeepRecoveryCopies();
    OscMonitor& Monitor() const { return *monitor_; }
    OscSender& Sender() { return sender_; }
    // The grid step of every canvas, remembered for the next start.
    void ApplyGridStep(int step);
    // OSC input, the phone preview and layout sync.
    NetworkServices& Services() { return *services_; }
    // Says in a box titled service and in the monitor why a network service
    // does not run.
    void SayRefused(const QString& service, const QString& reason);
    // The text of Help > About: the program's and its libraries' versions.
    static QString AboutText();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildMenus();
    void AdoptModuleMenu(QMenu* moduleMenu);
    void AdoptFrame(EditorFrame* frame);
    void RouteModuleActions(QMenu* menu);
    void UpdateMenu(QMenu* menu);
    void RunModuleCommand(QAction* action);
    // Shows a frame the module just placed: maximized in the work area.
    void ShowNewFrame();
    // Notes a layout kept in its file: in Open Recent, with its device.
    void NoteKept(const EditorFrame& frame);
    void RefreshTitles();
    void RefreshFileActions();
    // Inserts controls made from records into the active layout by the
    // editor's insert command, which names the step and selects them.
    void PasteRecords(const std::vector<const _OSCParms*>& records, int command);
    void FillRecentMenu();
    // Opens a recovery copy as its own layout, changed; false, after saying
    // why, when it does not open.
    bool Reopen(const RecoveryKeeper::Leftover& leftover);
    // Opens a recent layout, or forgets one that is gone.
    void OpenRecent(const QString& path);
    void OpenWithDialog();
    // Opens a touch app's layout as a new layout, telling what it left out.
    bool OpenOtherAppLayout(const QString& path, const LayoutFormat& format);
    void ChooseOscTarget();
    void ChooseOscInput();
    void ChooseGridStep();
    void ChoosePreview();
    void RenewPreviewKey();
    void ChooseSync();
    void ShowPreviewState();
    void ShowNetworkState();

    ModuleLibrary& module_;
    DesktopHost host_;
    LayoutHistory history_;
    RecoveryKeeper recovery_;
    OscSender sender_;
    EditorArea* area_;
    OscMonitor* monitor_;
    // Goes before the sender and the monitor they send through.
    std::unique_ptr<NetworkServices> services_;
    PreviewPanel* previewPanel_ = nullptr;
    QDockWidget* previewDock_ = nullptr;
    QMenu* fileMenu_ = nullptr;
    QMenu* recentMenu_ = nullptr;
    QMenu* insertMenu_ = nullptr;
    QMenu* helpMenu_ = nullptr;
    QAction* saveAction_ = nullptr;  // the application's own Save
    QAction* closeAction_ = nullptr;
    QAction* moduleFilePlace_ = nullptr;  // where the module's file commands go
    EditorFrame* newFrame_ = nullptr;     // the frame made last, until it is shown
    bool newFrameFills_ = true;           // whether it fills the work area, as the others do
    QTimer titleRefresh_;                 // coalesces the title updates after input
    QLabel* zoomLabel_ = nullptr;         // the active layout's zoom
    QLabel* syncLabel_ = nullptr;         // where layout sync serves, while it does
    QLabel* networkLabel_ = nullptr;      // why the services are not announced
};
