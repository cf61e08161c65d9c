#pragma once

#include "DesktopHost.h"
#include "RecoveryKeeper.h"
#include "app/osc/OscSender.h"
#include "host/OSCParms.h"

#include <QMainWindow>

#include <cstdint>
#include <string>
#include <vector>

class EditorArea;
class EditorFrame;
class ModuleLibrary;
class OscMonitor;
class QMenu;

// The application's window: one frame per open layout, the module's menus
// beside the application's own, the canvas's status texts, and test-mode
// values sent as OSC.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow(ModuleLibrary& module, const OscTarget& target);
    ~MainWindow() override;

    // Opens an editor on the layout at path; false, after saying why, when
    // none opens.
    bool OpenLayout(const QString& path);
    void NewLayout();
    EditorFrame* ActiveFrame() const;
    QList<EditorFrame*> Frames() const;
    // Puts a new control of type on the active editor's page, from a record
    // made for it, as a host hands its parameters over.
    void InsertControl(int type);
    // The same for a JSON file of parameter records; a bad file inserts nothing.
    void InsertParametersFrom(const QString& path);
    QStringList RecentFiles() const;
    // Offers the recovery copies a run that ended without quitting left
    // behind, in one question: reopened, or discarded.
    void OfferRecovery();
    // Brings the recovery copies up to date; a timer does it every few seconds.
    void KeepRecoveryCopies();
    OscMonitor& Monitor() const { return *monitor_; }
    OscSender& Sender() { return sender_; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildMenus();
    void AdoptModuleMenu(QMenu* moduleMenu);
    void RouteModuleActions(QMenu* menu);
    void UpdateMenu(QMenu* menu);
    void RunModuleCommand(QAction* action);
    void PasteRecords(const std::vector<const _OSCParms*>& records);
    void RememberRecent(const QString& path);
    void FillRecentMenu();
    // Opens a recent layout, or offers to forget one that is gone.
    void OpenRecent(const QString& path);
    void OpenWithDialog();
    void ChooseOscTarget();
    void SendTestValue(std::int32_t value, const std::vector<std::string>& components);

    ModuleLibrary& module_;
    DesktopHost host_;
    RecoveryKeeper recovery_;
    OscSender sender_;
    EditorArea* area_;
    OscMonitor* monitor_;
    QMenu* fileMenu_ = nullptr;
    QMenu* recentMenu_ = nullptr;
    QMenu* insertMenu_ = nullptr;
    QMenu* helpMenu_ = nullptr;
    QAction* moduleFilePlace_ = nullptr;  // where the module's file commands go
    int nextControlNumber_ = 1;
};
