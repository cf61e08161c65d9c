#include "MainWindow.h"

#include "ControlRecords.h"
#include "EditorArea.h"
#include "EditorFrame.h"
#include "FramePlaces.h"
#include "LayoutCheck.h"
#include "ModuleLibrary.h"
#include "OtherAppLayout.h"
#include "WindowMenu.h"
#include "app/network/ServiceBrowser.h"
#include "app/network/SyncDialog.h"
#include "app/osc/OscInputDialog.h"
#include "app/osc/OscMonitor.h"
#include "app/osc/OscSettings.h"
#include "app/osc/OscSettingsDialog.h"
#include "app/osc/TestModeOutput.h"
#include "app/preview/PreviewDialog.h"
#include "app/preview/PreviewPanel.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "editor/CommandIds.h"
#include "host/Messages.h"
#include "view/MessageEvent.h"
#include "view/QtWindowHandle.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTime>

#include <zip.h>

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace {

constexpr std::chrono::milliseconds kRecoveryInterval{3000};
const QString kGeometryKey = QStringLiteral("mainWindow/geometry");
const QString kGridStepKey = QStringLiteral("grid/step");
constexpr int kDefaultGridStep = 10;
constexpr int kLeastGridStep = 2;
constexpr int kLargestGridStep = 100;

// The module's items carry their command ids; the application's carry none.
int CommandOf(const QAction* action)
{
    return action->data().toInt();
}

// Input after which a layout may have changed, and its title with it.
bool MayChangeLayouts(QEvent::Type type)
{
    return type == QEvent::MouseButtonRelease || type == QEvent::KeyRelease ||
           type == QEvent::Wheel;
}

}  // namespace

MainWindow::MainWindow(ModuleLibrary& module, const OscTarget& target)
    : module_(module),
      host_(this),
      // The application's own state stays out of the user's documents.
      recovery_(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                QStringLiteral("/recovery")),
      sender_(target),
      area_(new EditorArea(host_, this)),
      monitor_(new OscMonitor)
{
    setWindowTitle(QStringLiteral("VornOSC"));
    area_->setViewMode(QMdiArea::SubWindowView);
    area_->onModuleMenu = [this](QMenu* menu) { AdoptModuleMenu(menu); };
    area_->onFrame = [this](EditorFrame* frame) { AdoptFrame(frame); };
    connect(area_, &QMdiArea::subWindowActivated, this, &MainWindow::RefreshTitles);
    setCentralWidget(area_);
    auto* dock = new QDockWidget(QStringLiteral("OSC Monitor"), this);
    dock->setObjectName(QStringLiteral("oscMonitor"));
    dock->setWidget(monitor_);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    // The editors keep most of the height; the monitor shows a few rows.
    resizeDocks({dock}, {dock->sizeHint().height()}, Qt::Vertical);
    NetworkServices::Layouts layouts;
    layouts.read = [this](LayoutSnapshot* snapshot, const ControlValue* value) {
        const EditorFrame* frame = ActiveFrame();
        if (frame != nullptr)
            frame->LayoutState(snapshot, value);
        return frame != nullptr;
    };
    layouts.name = [this] { return ActiveFrame()->LayoutName(); };
    layouts.setValues = [this](const char* address, const ReceivedValue& value) {
        int controls = 0;
        for (EditorFrame* frame : Frames())
            controls += frame->SetValues(address, value);
        return controls;
    };
    services_ = std::make_unique<NetworkServices>(std::move(layouts), sender_, *monitor_);
    previewPanel_ = new PreviewPanel(services_->Preview());
    previewDock_ = new QDockWidget(QStringLiteral("Phone Preview"), this);
    previewDock_->setObjectName(QStringLiteral("phonePreview"));
    previewDock_->setWidget(previewPanel_);
    addDockWidget(Qt::RightDockWidgetArea, previewDock_);
    previewDock_->hide();
    connect(&services_->Preview(), &PhonePreview::changed, this, &MainWindow::ShowPreviewState);
    connect(services_.get(), &NetworkServices::changed, this, &MainWindow::ShowNetworkState);
    statusBar()->showMessage(QStringLiteral("Ready"));
    networkLabel_ = new QLabel(this);
    networkLabel_->setObjectName(QStringLiteral("announcements"));
    syncLabel_ = new QLabel(this);
    syncLabel_->setObjectName(QStringLiteral("syncState"));
    zoomLabel_ = new QLabel(this);
    for (QLabel* label : {networkLabel_, syncLabel_, zoomLabel_})
        statusBar()->addPermanentWidget(label);
    ShowNetworkState();
    BuildMenus();
    qApp->installEventFilter(this);
    auto* recoveryTimer = new QTimer(this);
    connect(recoveryTimer, &QTimer::timeout, this, &MainWindow::KeepRecoveryCopies);
    recoveryTimer->start(kRecoveryInterval);
    titleRefresh_.setSingleShot(true);
    connect(&titleRefresh_, &QTimer::timeout, this, &MainWindow::RefreshTitles);
    resize(1280, 900);
    restoreGeometry(QSettings().value(kGeometryKey).toByteArray());
}

MainWindow::~MainWindow()
{
    qApp->removeEventFilter(this);
    // The area outlives this class's part of the window and still reports
    // its frames going: nobody here is left to hear it.
    area_->disconnect(this);
}

QString MainWindow::AboutText()
{
    return QStringLiteral(
               "VornOSC %1\nAn editor for OSC control-surface layouts.\n\n"
               "Qt %2, libzip %3, liblo %4")
        .arg(QStringLiteral(VORNOSC_VERSION), QString::fromLatin1(qVersion()),
             QString::fromLatin1(zip_libzip_version()),
             QString::fromStdString(OscLibraryVersion()));
}

void MainWindow::BuildMenus()
{
    fileMenu_ = menuBar()->addMenu(QStringLiteral("&File"));
    // Keys as users of desktop programs on Linux know them, on every platform theme.
    fileMenu_->addAction(QStringLiteral("&New"), QKeySequence(Qt::CTRL | Qt::Key_N), this,
                         &MainWindow::NewLayout);
    fileMenu_->addAction(QStringLiteral("&Open..."), QKeySequence(Qt::CTRL | Qt::Key_O), this,
                         &MainWindow::OpenWithDialog);
    recentMenu_ = fileMenu_->addMenu(QStringLiteral("Open &Recent"));
    connect(recentMenu_, &QMenu::aboutToShow, this, &MainWindow::FillRecentMenu);
    closeAction_ = fileMenu_->addAction(QStringLiteral("&Close"), this, [this] {
        if (EditorFrame* frame = ActiveFrame())
            frame->close();
    });
    closeAction_->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::CTRL | Qt::Key_F4)});
    fileMenu_->addSeparator();
    // Save stands in for the module's, which stays off for a layout never
    // saved: this one asks for a name first.
    saveAction_ = fileMenu_->addAction(QStringLiteral("&Save"), QKeySequence(Qt::CTRL | Qt::Key_S),
                                       this, &MainWindow::SaveLayout);
    moduleFilePlace_ = fileMenu_->addSeparator();
    fileMenu_->addAction(QStringLiteral("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this,
                         &QWidget::close);
    connect(fileMenu_, &QMenu::aboutToShow, this, [this] {
        UpdateMenu(fileMenu_);
        RefreshFileActions();
    });

    insertMenu_ = menuBar()->addMenu(QStringLiteral("&Insert"));
    for (int type = 0; type < kControlTypeCount; ++type) {
        insertMenu_->addAction(QString::fromUtf8(ControlTypes[type]), this,
                               [this, type] { InsertControl(type); });
    }
    insertMenu_->addSeparator();
    insertMenu_->addAction(QStringLiteral("Parameters from &file..."), this, [this] {
        const QString path =
            QFileDialog::getOpenFileName(this, QStringLiteral("Insert Parameters"), QString(),
                                         QStringLiteral("Parameter lists (*.json)"));
        if (!path.isEmpty())
            InsertParametersFrom(path);
    });
    connect(insertMenu_, &QMenu::aboutToShow, this, [this] {
        for (QAction* action : insertMenu_->actions())
            action->setEnabled(ActiveFrame() != nullptr);
    });

    menuBar()->addMenu(new WindowMenu(*area_, this));

    QMenu* settings = menuBar()->addMenu(QStringLiteral("&Settings"));
    settings->addAction(QStringLiteral("&OSC Target..."), this, &MainWindow::ChooseOscTarget);
    settings->addAction(QStringLiteral("OSC &Input..."), this, &MainWindow::ChooseOscInput);
    settings->addAction(QStringLiteral("&Grid..."), this, &MainWindow::ChooseGridStep);
    QMenu* preview = settings->addMenu(QStringLiteral("&Phone Preview"));
    preview->addAction(QStringLiteral("&On, Interface and Port..."), this,
                       &MainWindow::ChoosePreview);
    QAction* newKey =
        preview->addAction(QStringLiteral("&New Key"), this, &MainWindow::RenewPreviewKey);
    connect(preview, &QMenu::aboutToShow, this,
            [this, newKey] { newKey->setEnabled(services_->Preview().IsServing()); });
    settings->addAction(QStringLiteral("&Layout Sync..."), this, &MainWindow::ChooseSync);

    helpMenu_ = menuBar()->addMenu(QStringLiteral("&Help"));
    helpMenu_->addAction(QStringLiteral("&About VornOSC"), this, [this] {
        QMessageBox::about(this, QStringLiteral("About VornOSC"), AboutText());
    });
    connect(helpMenu_, &QMenu::aboutToShow, this, [this] { UpdateMenu(helpMenu_); });
}

void MainWindow::AdoptModuleMenu(QMenu* moduleMenu)
{
    for (QAction* top : moduleMenu->actions()) {
        QMenu* submenu = top->menu();
        if (submenu == nullptr)
            continue;
        RouteModuleActions(submenu);
        // The module's file and help commands join the application's menus of
        // the same name; its other menus stand before Insert.
        if (submenu->title() == fileMenu_->title()) {
            for (QAction* action : submenu->actions()) {
                if (CommandOf(action) == ID_FILE_SAVE)
                    action->setShortcuts({});  // the application's Save has the key
                else
                    fileMenu_->insertAction(moduleFilePlace_, action);
            }
        } else if (submenu->title() == helpMenu_->title()) {
            helpMenu_->insertActions(helpMenu_->actions().value(0), submenu->actions());
        } else {
            menuBar()->insertMenu(insertMenu_->menuAction(), submenu);
            connect(submenu, &QMenu::aboutToShow, this, [this, submenu] { UpdateMenu(submenu); });
        }
    }
}

void MainWindow::AdoptFrame(EditorFrame* frame)
{
    newFrame_ = frame;
    // Told before the area shows the frame, which restores the one it replaces as active.
    QList<EditorFrame*> others = Frames();
    others.removeOne(frame);
    newFrameFills_ =
        others.isEmpty() || std::any_of(others.begin(), others.end(),
                                        [](const QWidget* other) { return other->isMaximized(); });
    connect(frame, &EditorFrame::savedOnClose, this, [this, frame] { NoteKept(*frame); });
    // Tied to the timer, which goes before the frames when the window does.
    connect(frame, &QObject::destroyed, &titleRefresh_, qOverload<>(&QTimer::start));
}

void MainWindow::RouteModuleActions(QMenu* menu)
{
    for (QAction* action : menu->actions()) {
        if (QMenu* submenu = action->menu()) {
            RouteModuleActions(submenu);
            connect(submenu, &QMenu::aboutToShow, this, [this, submenu] { UpdateMenu(submenu); });
        } else if (CommandOf(action) != 0) {
            connect(action, &QAction::triggered, this,
                    [this, action] { RunModuleCommand(action); });
        }
    }
}

void MainWindow::UpdateMenu(QMenu* menu)
{
    if (EditorFrame* frame = ActiveFrame()) {
        frame->Send(WM_INITMENUPOPUP, reinterpret_cast<std::intptr_t>(menu));
        return;
    }
    for (QAction* action : menu->actions()) {
        if (CommandOf(action) != 0)
            action->setEnabled(false);
    }
}

void MainWindow::RefreshFileActions()
{
    const EditorFrame* frame = ActiveFrame();
    closeAction_->setEnabled(frame != nullptr);
    saveAction_->setEnabled(frame != nullptr && (frame->IsNeverSaved() || frame->IsModified()));
}

void MainWindow::RunModuleCommand(QAction* action)
{
    EditorFrame* frame = ActiveFrame();
    if (frame == nullptr || module_.menu == nullptr || *module_.menu == nullptr)
        return;
    // A shortcut may fire while the keyboard is elsewhere: the editor's rules
    // decide again before the command runs.
    frame->Send(WM_INITMENUPOPUP, reinterpret_cast<std::intptr_t>(*module_.menu));
    if (!action->isEnabled())
        return;
    frame->Send(WM_COMMAND, CommandOf(action));
    if (CommandOf(action) == ID_FILE_SAVE_AS)
        NoteKept(*frame);
    titleRefresh_.start();
}

void MainWindow::SaveLayout()
{
    EditorFrame* frame = ActiveFrame();
    if (frame == nullptr)
        return;
    if (frame->IsNeverSaved())
        frame->Send(WM_COMMAND, ID_FILE_SAVE_AS);
    else if (frame->IsModified())
        frame->Send(WM_COMMAND, ID_FILE_SAVE);
    NoteKept(*frame);
    titleRefresh_.start();
}

void MainWindow::NoteKept(const EditorFrame& frame)
{
    if (frame.IsModified() || frame.IsNeverSaved())
        return;
    const QString path = frame.LayoutPath();
    if (QFileInfo::exists(path))
        history_.Remember(QFileInfo(path).absoluteFilePath(), frame.Device());
}

void MainWindow::RefreshTitles()
{
    for (EditorFrame* frame : Frames())
        frame->ShowModified();
    // A maximized frame's title joins the window's, with its "*" shown by this mark.
    const EditorFrame* active = ActiveFrame();
    setWindowModified(active != nullptr && active->isWindowModified());
    zoomLabel_->setText(active != nullptr ? QStringLiteral("%1%").arg(active->Zoom()) : QString());
}

void MainWindow::ShowNewFrame()
{
    // The module placed its frame by its own rule; here a layout opens as the
    // others are: filling the work area when they do, as the first one does,
    // or else whole in the next place of a cascade.
    if (EditorFrame* frame = std::exchange(newFrame_, nullptr)) {
        frame->GridStep(QSettings().value(kGridStepKey, kDefaultGridStep).toInt());
        // The area may have marked it maximized before it had its place:
        // maximized anew, it fills the area.
        frame->showNormal();
        if (newFrameFills_) {
            frame->showMaximized();
        } else {
            frame->setGeometry(CascadePlace(area_->viewport()->rect(),
                                            static_cast<int>(Frames().size()) - 1,
                                            frame->TitleHeight()));
        }
    }
    titleRefresh_.start();
}

void MainWindow::Start(const std::vector<std::string>& layouts, const std::string& insert)
{
    OfferRecovery();
    // Absolute, so that the editor knows each layout's folder as a saved one's.
    for (const std::string& layout : layouts)
        OpenLayoutFile(std::filesystem::absolute(layout).string());
    // The user comes to work: with nothing to open, a new layout is ready.
    if (Frames().isEmpty())
        NewLayout();
    if (!insert.empty())
        InsertParametersFrom(QFile::decodeName(insert.c_str()));
}

bool MainWindow::OpenLayout(const QString& path)
{
    return OpenLayoutFile(QFile::encodeName(path).toStdString());
}

bool MainWindow::OpenLayoutFile(const std::string& file)
{
    // Shown and remembered as Qt names it; opened as the bytes say.
    const QString path = QFile::decodeName(QByteArray::fromStdString(file));
    if (const LayoutFormat* format = OtherAppFormat(path))
        return OpenOtherAppLayout(path, *format);
    std::optional<std::string> fault = WhyNotALayout(file);
    if (!fault && module_.openEditor(HandleOf(area_), file.c_str()) == nullptr)
        fault = "the editor refused it";
    if (fault) {
        newFrame_ = nullptr;
        const std::string message = "\u201c" + file + "\u201d could not be opened: " + *fault + '.';
        host_.ShowError(message.c_str());
        return false;
    }
    EditorFrame* frame = newFrame_;
    const QString absolute = QFileInfo(path).absoluteFilePath();
    if (const std::optional<int> device = history_.DeviceOf(absolute))
        frame->SetDevice(*device);
    ShowNewFrame();
    history_.Remember(absolute, frame->Device());
    return true;
}

bool MainWindow::OpenOtherAppLayout(const QString& path, const LayoutFormat& format)
{
    // The editor opens layout files: it gets a copy, which it reads at once.
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("layout.VornOsc"));
    std::string fault;
    const std::optional<BroughtIn> layout = BringIn(path, format, copy, fault);
    if (layout &&
        module_.openEditor(HandleOf(area_), QFile::encodeName(copy).constData()) == nullptr)
        fault = "the editor refused it";
    if (!layout || !fault.empty()) {
        newFrame_ = nullptr;
        const std::string message = "\u201c" + QFile::encodeName(path).toStdString() +
                                    "\u201d could not be opened: " + fault + '.';
        host_.ShowError(message.c_str());
        return false;
    }
    newFrame_->SetDevice(layout->device);
    newFrame_->BecomeNew(layout->name);
    ShowNewFrame();
    if (!layout->report.isEmpty()) {
        QMessageBox::information(
            this, QStringLiteral("VornOSC"),
            QStringLiteral("\u201c%1\u201d was brought in with these changes:\n%2")
                .arg(QFileInfo(path).fileName(), layout->report.join(u'\n')));
    }
    return true;
}

void MainWindow::NewLayout()
{
    if (module_.openEditor(HandleOf(area_), nullptr) != nullptr)
        ShowNewFrame();
}

EditorFrame* MainWindow::ActiveFrame() const
{
    if (auto* frame = qobject_cast<EditorFrame*>(area_->activeSubWindow()))
        return frame;
    // The area forgets its active frame while the application is inactive.
    const QList<QMdiSubWindow*> frames = area_->subWindowList(QMdiArea::ActivationHistoryOrder);
    return frames.isEmpty() ? nullptr : qobject_cast<EditorFrame*>(frames.back());
}

QList<EditorFrame*> MainWindow::Frames() const
{
    QList<EditorFrame*> frames;
    for (QMdiSubWindow* window : area_->subWindowList())
        if (auto* frame = qobject_cast<EditorFrame*>(window))
            frames.append(frame);
    return frames;
}

void MainWindow::PasteRecords(const std::vector<const _OSCParms*>& records, int command)
{
    EditorFrame* frame = ActiveFrame();
    if (frame == nullptr)
        return;
    module_.externalPaste(records);
    frame->Send(WM_COMMAND, command);
    titleRefresh_.start();
}

void MainWindow::InsertControl(int type)
{
    EditorFrame* frame = ActiveFrame();
    if (frame == nullptr)
        return;
    // The new control is numbered after those already on the layout.
    OSCProject layout;
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("layout.VornOsc"));
    if (!frame->WriteCopy(copy) || ReadLayoutAt(QFile::encodeName(copy).toStdString(), layout))
        layout.pages.clear();
    const _OSCParms record = RecordForNewControl(type, layout);
    PasteRecords({&record}, ID_EDIT_INSERT);
}

void MainWindow::InsertParametersFrom(const QString& path)
{
    QFile file(path);
    std::string error;
    std::optional<std::vector<_OSCParms>> records;
    if (!file.open(QIODevice::ReadOnly))
        error = file.errorString().toStdString();
    else
        records = ReadParameterRecords(file.readAll().toStdString(), error);
    if (!records) {
        const std::string message = "The parameters in \u201c" + path.toStdString() +
                                    "\u201d were not inserted: " + error + '.';
        host_.ShowError(message.c_str());
        return;
    }
    std::vector<const _OSCParms*> pointers;
    for (const _OSCParms& record : *records)
        pointers.push_back(&record);
    PasteRecords(pointers, ID_EDIT_INSERTPARAMETERS);
}

void MainWindow::KeepRecoveryCopies()
{
    recovery_.Update(Frames());
}

void MainWindow::OfferRecovery()
{
    const QList<RecoveryKeeper::Leftover> leftovers = recovery_.Leftovers();
    if (leftovers.isEmpty())
        return;
    QString list;
    for (const RecoveryKeeper::Leftover& leftover : leftovers)
        list += QStringLiteral("\n%1, changed %2")
                    .arg(leftover.originalPath,
                         QLocale().toString(leftover.written, QLocale::ShortFormat));
    QMessageBox box(QMessageBox::Question, QStringLiteral("VornOSC"),
                    QStringLiteral("vornosc stopped before these layouts were saved:\n%1\n\n"
                                   "Reopen them? Each opens under its own name with its "
                                   "changes, not yet saved.")
                        .arg(list),
                    QMessageBox::Open | QMessageBox::Discard, this);
    box.button(QMessageBox::Open)->setText(QStringLiteral("Reopen"));
    const bool reopen = box.exec() == QMessageBox::Open;
    for (const RecoveryKeeper::Leftover& leftover : leftovers) {
        if (!reopen) {
            recovery_.Discard(leftover);
        } else if (Reopen(leftover)) {
            // This run keeps its own copy before the old one goes.
            KeepRecoveryCopies();
            recovery_.Discard(leftover);
        }
    }
}

bool MainWindow::Reopen(const RecoveryKeeper::Leftover& leftover)
{
    const std::string copy = QFile::encodeName(leftover.copy).toStdString();
    std::optional<std::string> fault = WhyNotALayout(copy);
    if (!fault && module_.openEditor(HandleOf(area_), copy.c_str()) == nullptr)
        fault = "the editor refused it";
    if (fault) {
        newFrame_ = nullptr;
        const std::string message =
            "The recovery copy of \u201c" + leftover.originalFile.toStdString() +
            "\u201d could not be opened: " + *fault + ". It stays in \u201c" + copy + "\u201d.";
        host_.ShowError(message.c_str());
        return false;
    }
    EditorFrame* frame = newFrame_;
    if (leftover.originalFile == QByteArrayLiteral("New") ||
        !frame->BecomeChangedAt(leftover.originalFile))
        frame->BecomeNew(QString());
    if (const std::optional<int> device = history_.DeviceOf(leftover.originalPath))
        frame->SetDevice(*device);
    ShowNewFrame();
    return true;
}

void MainWindow::OpenRecent(const QString& path)
{
    if (QFileInfo::exists(path)) {
        OpenLayout(path);
        return;
    }
    history_.Forget(path);
    const std::string message = "\u201c" + QFile::encodeName(path).toStdString() +
                                "\u201d is no longer there; it has left Open Recent.";
    host_.ShowError(message.c_str());
}

void MainWindow::FillRecentMenu()
{
    recentMenu_->clear();
    for (const QString& path : history_.Recent())
        recentMenu_->addAction(path, this, [this, path] { OpenRecent(path); });
    if (recentMenu_->isEmpty())
        recentMenu_->addAction(QStringLiteral("No layouts yet"))->setEnabled(false);
}

void MainWindow::OpenWithDialog()
{
    const QStringList paths = QFileDialog::getOpenFileNames(
        this, QStringLiteral("Open OSC Layout"), history_.LastFolder(), OpenDialogFilter());
    for (const QString& path : paths)
        OpenLayout(path);
}

void MainWindow::ChooseOscTarget()
{
    const std::unique_ptr<ServiceBrowser> receivers = services_->BrowseOscReceivers();
    OscSettingsDialog dialog(sender_.Target(), this, receivers.get());
    if (dialog.exec() != QDialog::Accepted)
        return;
    sender_.SetTarget(dialog.Target());
    QSettings settings;
    SaveOscTarget(settings, dialog.Target());
}

void MainWindow::ChooseOscInput()
{
    QSettings settings;
    OscInputDialog dialog(LoadOscInput(settings), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    SaveOscInput(settings, dialog.Input());
    QString error;
    if (!services_->ListenFor(dialog.Input(), error))
        SayRefused(QStringLiteral("OSC Input"), error);
}

void MainWindow::ChooseGridStep()
{
    bool chosen = false;
    const int step = QInputDialog::getInt(
        this, QStringLiteral("Grid"),
        QStringLiteral("Grid step, in layout units (the grid shows and snaps from the View menu):"),
        QSettings().value(kGridStepKey, kDefaultGridStep).toInt(), kLeastGridStep,
        kLargestGridStep, 1, &chosen);
    if (chosen)
        ApplyGridStep(step);
}

void MainWindow::ApplyGridStep(int step)
{
    QSettings().setValue(kGridStepKey, step);
    for (EditorFrame* frame : Frames())
        frame->GridStep(step);
}

void MainWindow::SayRefused(const QString& service, const QString& reason)
{
    monitor_->AddError(reason, QTime::currentTime());
    QMessageBox::warning(this, service, reason);
}

void MainWindow::ChoosePreview()
{
    QSettings settings;
    PreviewDialog dialog(LoadPreviewPlace(settings), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    SavePreviewPlace(settings, dialog.Place());
    QString error;
    if (!services_->ServePreview(dialog.Place(), error))
        SayRefused(QStringLiteral("Phone Preview"), error);
}

void MainWindow::ChooseSync()
{
    QSettings settings;
    SyncDialog dialog(LoadSyncPlace(settings), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    SaveSyncPlace(settings, dialog.Place());
    QString error;
    if (!services_->ServeSync(dialog.Place(), error))
        SayRefused(QStringLiteral("Layout Sync"), error);
}

void MainWindow::RenewPreviewKey()
{
    QString error;
    if (!services_->RenewPreviewKey(error))
        SayRefused(QStringLiteral("Phone Preview"), error);
}

void MainWindow::ShowPreviewState()
{
    previewPanel_->Refresh();
    // The panel comes as the preview starts and goes as it stops.
    const bool serving = services_->Preview().IsServing();
    if (serving == previewDock_->isHidden())
        previewDock_->setVisible(serving);
}

void MainWindow::ShowNetworkState()
{
    syncLabel_->setText(services_->SyncState());
    networkLabel_->setText(services_->AnnouncementProblem());
}

bool MainWindow::event(QEvent* event)
{
    MessageEvent* message = MessageEvent::From(event);
    if (message == nullptr)
        return QMainWindow::event(event);
    if (message->Message() == WM_OSC_OPERATED && message->lParam != 0) {
        SendOperated(*reinterpret_cast<const OperatedControl*>(message->lParam), sender_,
                     *monitor_);
    } else if (message->Message() == WM_OSC_TESTVALUE) {
        // The value also came as WM_OSC_OPERATED, with the whole address.
        message->TakeComponents();
    } else if (message->Message() == WM_OSC_HOSTREQUEST && message->wParam == 0 &&
               message->lParam != 0) {
        const auto& record = *reinterpret_cast<const StatusRecord*>(message->lParam);
        if (record.words[0] == kStatusRecordKind && record.words[kStatusTextWord] != 0)
            statusBar()->showMessage(
                QString::fromUtf8(reinterpret_cast<const char*>(record.words[kStatusTextWord])));
    }
    return true;
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (MayChangeLayouts(event->type()))
        titleRefresh_.start();
    // Shortcuts fire only on enabled items: the rules are brought up to date
    // first, wherever the keyboard is.
    if (event->type() == QEvent::ShortcutOverride && module_.menu != nullptr &&
        *module_.menu != nullptr) {
        UpdateMenu(*module_.menu);
        RefreshFileActions();
    }
    // The editor's Help command asks the application for its help topic.
    MessageEvent* message = watched == qApp ? MessageEvent::From(event) : nullptr;
    if (message == nullptr || message->Message() != WM_OSC_HOSTREQUEST || message->lParam == 0)
        return QMainWindow::eventFilter(watched, event);
    if (reinterpret_cast<const HostRequest*>(message->lParam)->words[0] == kRequestHelpTopic) {
        QMessageBox::information(
            this, QStringLiteral("VornOSC Help"),
            QStringLiteral("Insert controls from the Insert menu, drag them into place, and "
                           "double-click one to edit its label, OSC address and range. Turn on "
                           "Test Mode to operate the controls: each value is sent as OSC to "
                           "the target under Settings."));
    }
    return true;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    // Every editor is asked in turn; the first Cancel keeps everything open.
    for (EditorFrame* frame : Frames()) {
        if (!frame->close()) {
            event->ignore();
            return;
        }
    }
    QSettings().setValue(kGeometryKey, saveGeometry());
    event->accept();
}
