#include "MainWindow.h"

#include "ControlRecords.h"
#include "EditorArea.h"
#include "EditorFrame.h"
#include "LayoutCheck.h"
#include "ModuleLibrary.h"
#include "app/osc/OscAddress.h"
#include "app/osc/OscMonitor.h"
#include "app/osc/OscSettings.h"
#include "app/osc/OscSettingsDialog.h"
#include "document/ControlTables.h"
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
#include <QLocale>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QStatusBar>
#include <QTime>
#include <QTimer>

#include <chrono>

namespace {

constexpr int kMostRecentFiles = 8;
constexpr std::chrono::milliseconds kRecoveryInterval{3000};
const QString kRecentFilesKey = QStringLiteral("recentFiles");
const QString kGeometryKey = QStringLiteral("mainWindow/geometry");

// The module's items carry their command ids; the application's carry none.
int CommandOf(const QAction* action)
{
    return action->data().toInt();
}

}  // namespace

MainWindow::MainWindow(ModuleLibrary& module, const OscTarget& target)
    : module_(module),
      host_(this),
      recovery_(QString::fromStdString(host_.GetDataFolder()) + QStringLiteral("/recovery")),
      sender_(target),
      area_(new EditorArea(host_, this)),
      monitor_(new OscMonitor)
{
    setWindowTitle(QStringLiteral("vornosc"));
    area_->setViewMode(QMdiArea::SubWindowView);
    area_->onModuleMenu = [this](QMenu* menu) { AdoptModuleMenu(menu); };
    setCentralWidget(area_);
    auto* dock = new QDockWidget(QStringLiteral("OSC Monitor"), this);
    dock->setObjectName(QStringLiteral("oscMonitor"));
    dock->setWidget(monitor_);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    // The editors keep most of the height; the monitor shows a few lines.
    resizeDocks({dock}, {150}, Qt::Vertical);
    statusBar()->showMessage(QStringLiteral("Ready"));
    BuildMenus();
    qApp->installEventFilter(this);
    auto* recoveryTimer = new QTimer(this);
    connect(recoveryTimer, &QTimer::timeout, this, &MainWindow::KeepRecoveryCopies);
    recoveryTimer->start(kRecoveryInterval);
    resize(1280, 900);
    restoreGeometry(QSettings().value(kGeometryKey).toByteArray());
}

MainWindow::~MainWindow()
{
    qApp->removeEventFilter(this);
}

void MainWindow::BuildMenus()
{
    fileMenu_ = menuBar()->addMenu(QStringLiteral("&File"));
    fileMenu_->addAction(QStringLiteral("&New"), QKeySequence::New, this, &MainWindow::NewLayout);
    fileMenu_->addAction(QStringLiteral("&Open..."), QKeySequence::Open, this,
                         &MainWindow::OpenWithDialog);
    recentMenu_ = fileMenu_->addMenu(QStringLiteral("Open &Recent"));
    connect(recentMenu_, &QMenu::aboutToShow, this, &MainWindow::FillRecentMenu);
    fileMenu_->addAction(QStringLiteral("&Close"), QKeySequence::Close, this, [this] {
        if (EditorFrame* frame = ActiveFrame())
            frame->close();
    });
    moduleFilePlace_ = fileMenu_->addSeparator();
    fileMenu_->addAction(QStringLiteral("&Quit"), QKeySequence::Quit, this, &QWidget::close);
    connect(fileMenu_, &QMenu::aboutToShow, this, [this] { UpdateMenu(fileMenu_); });

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

    QMenu* settings = menuBar()->addMenu(QStringLiteral("&Settings"));
    settings->addAction(QStringLiteral("&OSC Target..."), this, &MainWindow::ChooseOscTarget);

    helpMenu_ = menuBar()->addMenu(QStringLiteral("&Help"));
    helpMenu_->addAction(QStringLiteral("&About vornosc"), this, [this] {
        QMessageBox::about(this, QStringLiteral("About vornosc"),
                           QStringLiteral("vornosc %1\nAn editor for OSC control surfaces.")
                               .arg(QCoreApplication::applicationVersion()));
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
            fileMenu_->insertActions(moduleFilePlace_, submenu->actions());
        } else if (submenu->title() == helpMenu_->title()) {
            helpMenu_->insertActions(helpMenu_->actions().value(0), submenu->actions());
        } else {
            menuBar()->insertMenu(insertMenu_->menuAction(), submenu);
            connect(submenu, &QMenu::aboutToShow, this, [this, submenu] { UpdateMenu(submenu); });
        }
    }
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

void MainWindow::RunModuleCommand(QAction* action)
{
    EditorFrame* frame = ActiveFrame();
    if (frame == nullptr || module_.menu == nullptr || *module_.menu == nullptr)
        return;
    // A shortcut may fire while the keyboard is elsewhere: the editor's rules
    // decide again before the command runs.
    frame->Send(WM_INITMENUPOPUP, reinterpret_cast<std::intptr_t>(*module_.menu));
    if (action->isEnabled())
        frame->Send(WM_COMMAND, CommandOf(action));
}

bool MainWindow::OpenLayout(const QString& path)
{
    const QByteArray bytes = path.toUtf8();
    std::optional<std::string> fault = WhyNotALayout(bytes.toStdString());
    if (!fault && module_.openEditor(HandleOf(area_), bytes.constData()) == nullptr)
        fault = "the editor refused it";
    if (fault) {
        const std::string message =
            "\u201c" + bytes.toStdString() + "\u201d could not be opened: " + *fault + '.';
        host_.ShowError(message.c_str());
        return false;
    }
    RememberRecent(QFileInfo(path).absoluteFilePath());
    return true;
}

void MainWindow::NewLayout()
{
    module_.openEditor(HandleOf(area_), nullptr);
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

void MainWindow::PasteRecords(const std::vector<const _OSCParms*>& records)
{
    EditorFrame* frame = ActiveFrame();
    if (frame == nullptr)
        return;
    module_.externalPaste(records);
    frame->Send(WM_COMMAND, ID_EDIT_PASTE);
}

void MainWindow::InsertControl(int type)
{
    const _OSCParms record = RecordForNewControl(type, nextControlNumber_++);
    PasteRecords({&record});
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
    PasteRecords(pointers);
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
    QMessageBox box(QMessageBox::Question, QStringLiteral("OSC Editor"),
                    QStringLiteral("vornosc stopped before these layouts were saved:\n%1\n\n"
                                   "Reopen them? Each opens as a copy in the folder "
                                   "\u201cRecovered\u201d; save it where it belongs.")
                        .arg(list),
                    QMessageBox::Open | QMessageBox::Discard, this);
    box.button(QMessageBox::Open)->setText(QStringLiteral("Reopen"));
    const bool reopen = box.exec() == QMessageBox::Open;
    for (const RecoveryKeeper::Leftover& leftover : leftovers) {
        if (reopen)
            OpenLayout(recovery_.Recover(leftover));
        else
            recovery_.Discard(leftover);
    }
}

QStringList MainWindow::RecentFiles() const
{
    return QSettings().value(kRecentFilesKey).toStringList();
}

void MainWindow::RememberRecent(const QString& path)
{
    QStringList recent = RecentFiles();
    recent.removeAll(path);
    recent.prepend(path);
    QSettings().setValue(kRecentFilesKey, recent.mid(0, kMostRecentFiles));
}

void MainWindow::OpenRecent(const QString& path)
{
    if (QFileInfo::exists(path)) {
        OpenLayout(path);
        return;
    }
    const auto answer = QMessageBox::question(
        this, QStringLiteral("OSC Editor"),
        QStringLiteral("\u201c%1\u201d is no longer there. Remove it from Open Recent?").arg(path));
    if (answer != QMessageBox::Yes)
        return;
    QStringList recent = RecentFiles();
    recent.removeAll(path);
    QSettings().setValue(kRecentFilesKey, recent);
}

void MainWindow::FillRecentMenu()
{
    recentMenu_->clear();
    for (const QString& path : RecentFiles())
        recentMenu_->addAction(path, this, [this, path] { OpenRecent(path); });
    recentMenu_->setEnabled(!recentMenu_->isEmpty());
}

void MainWindow::OpenWithDialog()
{
    const QStringList paths =
        QFileDialog::getOpenFileNames(this, QStringLiteral("Open OSC Layout"), QString(),
                                      QStringLiteral("Vorn OSC Layout (*.VORNOSC)"));
    for (const QString& path : paths)
        OpenLayout(path);
}

void MainWindow::ChooseOscTarget()
{
    OscSettingsDialog dialog(sender_.Target(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    sender_.SetTarget(dialog.Target());
    QSettings settings;
    SaveOscTarget(settings, dialog.Target());
}

void MainWindow::SendTestValue(std::int32_t value, const std::vector<std::string>& components)
{
    const std::string address = OscAddressOf(components);
    std::string error;
    if (sender_.Send(address, value, error))
        monitor_->AddSent(QString::fromStdString(address), value, QTime::currentTime());
    else
        monitor_->AddError(QString::fromStdString(error), QTime::currentTime());
}

bool MainWindow::event(QEvent* event)
{
    MessageEvent* message = MessageEvent::From(event);
    if (message == nullptr)
        return QMainWindow::event(event);
    if (message->Message() == WM_OSC_TESTVALUE) {
        if (const auto components = message->TakeComponents())
            SendTestValue(static_cast<std::int32_t>(message->wParam), *components);
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
    // The editor's Help command asks the application for its help topic.
    MessageEvent* message = watched == qApp ? MessageEvent::From(event) : nullptr;
    if (message == nullptr || message->Message() != WM_OSC_HOSTREQUEST || message->lParam == 0)
        return QMainWindow::eventFilter(watched, event);
    if (reinterpret_cast<const HostRequest*>(message->lParam)->words[0] == kRequestHelpTopic) {
        QMessageBox::information(
            this, QStringLiteral("OSC Editor Help"),
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
        const QString path = frame->LayoutPath();
        if (!frame->close()) {
            event->ignore();
            return;
        }
        if (QFileInfo::exists(path))
            RememberRecent(QFileInfo(path).absoluteFilePath());
    }
    QSettings().setValue(kGeometryKey, saveGeometry());
    event->accept();
}
