#include "EditorFrame.h"

#include "DesktopHost.h"
#include "host/Messages.h"
#include "view/MessageEvent.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QFile>
#include <QMenu>
#include <QStyle>
#include <QStyleOption>

namespace {

const QString kNeverSaved = QStringLiteral("New");
// The editor titles a layout "Show - OSC Editor"; inside the application's
// window, whose title names the program, the layout's name says enough.
const QString kEditorTitleSuffix = QStringLiteral(" - OSC Editor");
// Where Qt puts the "*" of a window with unsaved changes.
const QString kModifiedMark = QStringLiteral("[*]");

}  // namespace

EditorFrame::EditorFrame(DesktopHost& host, QWidget* parent) : QMdiSubWindow(parent), host_(host)
{
    static int framesMade = 0;
    recoveryName_ = QStringLiteral("layout-%1").arg(++framesMade);
    setAttribute(Qt::WA_DeleteOnClose);
    // The window menu's keys are the application's own: Ctrl+W closes through File > Close.
    for (QAction* action : systemMenu()->actions())
        action->setShortcuts({});
}

QWidget* EditorFrame::Editor() const
{
    return widget();
}

QString EditorFrame::LayoutPath() const
{
    char folder[256] = "";
    char name[256] = "";
    HostRequest request;
    request.words[0] = kRequestSplitPath;
    request.words[kRequestFolderWord] = reinterpret_cast<std::intptr_t>(folder);
    request.words[kRequestNameWord] = reinterpret_cast<std::intptr_t>(name);
    Send(WM_OSC_HOSTREQUEST, 0, reinterpret_cast<std::intptr_t>(&request));
    const QString file = QFile::decodeName(name);
    return *folder == '\0' ? file : QFile::decodeName(folder) + QLatin1Char('/') + file;
}

QString EditorFrame::ShownTitle() const
{
    return isWindowModified() ? title_ + QStringLiteral("*") : title_;
}

int EditorFrame::TitleHeight() const
{
    QStyleOptionTitleBar option;
    option.initFrom(this);
    return style()->pixelMetric(QStyle::PM_TitleBarHeight, &option, this);
}

bool EditorFrame::IsNeverSaved() const
{
    return LayoutPath() == kNeverSaved;
}

bool EditorFrame::IsModified() const
{
    return Request(kRequestIsModified) != 0;
}

void EditorFrame::ShowModified()
{
    setWindowModified(IsModified());
}

bool EditorFrame::WriteCopy(const QString& path) const
{
    const QByteArray bytes = QFile::encodeName(path);
    return Request(kRequestWriteCopy, kRequestCopyPathWord,
                   reinterpret_cast<std::intptr_t>(bytes.constData())) != 0;
}

void EditorFrame::BecomeNew(const QString& name)
{
    const QByteArray bytes = name.toUtf8();
    Request(kRequestBecomeNew, kRequestNewNameWord,
            reinterpret_cast<std::intptr_t>(bytes.constData()));
}

bool EditorFrame::BecomeChangedAt(const QByteArray& path)
{
    return Request(kRequestBecomeChangedAt, kRequestOwnPathWord,
                   reinterpret_cast<std::intptr_t>(path.constData())) != 0;
}

int EditorFrame::Device() const
{
    return static_cast<int>(Request(kRequestDevice));
}

void EditorFrame::SetDevice(int device)
{
    Request(kRequestSetDevice, kRequestDeviceWord, device);
}

int EditorFrame::GridStep(int step) const
{
    return static_cast<int>(Request(kRequestGridStep, kRequestGridStepWord, step));
}

int EditorFrame::Zoom() const
{
    return static_cast<int>(Request(kRequestZoom));
}

int EditorFrame::SetValues(const char* address, const ReceivedValue& value)
{
    HostRequest request;
    request.words[0] = kRequestSetValues;
    request.words[kRequestAddressWord] = reinterpret_cast<std::intptr_t>(address);
    request.words[kRequestValueWord] = reinterpret_cast<std::intptr_t>(&value);
    return static_cast<int>(Send(WM_OSC_HOSTREQUEST, 0, reinterpret_cast<std::intptr_t>(&request)));
}

void EditorFrame::LayoutState(LayoutSnapshot* snapshot, const ControlValue* value) const
{
    HostRequest request;
    request.words[0] = kRequestLayoutState;
    request.words[kRequestSnapshotWord] = reinterpret_cast<std::intptr_t>(snapshot);
    request.words[kRequestControlValueWord] = reinterpret_cast<std::intptr_t>(value);
    Send(WM_OSC_HOSTREQUEST, 0, reinterpret_cast<std::intptr_t>(&request));
}

std::intptr_t EditorFrame::Request(std::intptr_t code, int index, std::intptr_t word) const
{
    HostRequest request;
    request.words[0] = code;
    request.words[index] = word;
    return Send(WM_OSC_HOSTREQUEST, 0, reinterpret_cast<std::intptr_t>(&request));
}

std::intptr_t EditorFrame::Send(unsigned message, std::intptr_t wParam, std::intptr_t lParam) const
{
    if (widget() == nullptr)
        return 0;
    MessageEvent event(message, wParam, lParam, MessageEvent::kSent);
    QCoreApplication::sendEvent(widget(), &event);
    return event.result;
}

bool EditorFrame::event(QEvent* event)
{
    MessageEvent* message = MessageEvent::From(event);
    if (message == nullptr)
        return QMdiSubWindow::event(event);
    if (message->Message() == WM_OSC_SETEDITOR) {
        setWidget(qobject_cast<QWidget*>(reinterpret_cast<QObject*>(message->lParam)));
    } else if (message->Message() == WM_OSC_SETTITLE && message->lParam != 0) {
        title_ = QString::fromUtf8(reinterpret_cast<const char*>(message->lParam));
        if (title_.endsWith(kEditorTitleSuffix))
            title_.chop(kEditorTitleSuffix.size());
        // Qt shows its mark, "[*]", as "*" while the window is modified; a
        // name's own "[*]" is doubled to show as it is.
        setWindowTitle(QString(title_).replace(kModifiedMark, kModifiedMark + kModifiedMark) +
                       kModifiedMark);
    }
    // Message 204 comes from a module about to destroy a frame it could not
    // use; the frame has nothing of its own to let go of.
    return true;
}

void EditorFrame::closeEvent(QCloseEvent* event)
{
    bool saved = false;
    for (;;) {
        const int errorsBefore = host_.ErrorsShown();
        const int questionsBefore = host_.QuestionsAsked();
        const bool keptOpen = Send(WM_OSC_CANCLOSE) != 0;
        // The editor forgets its changes when told Cancel, so they are marked
        // again: nothing may pass for saved.
        if (keptOpen)
            Send(WM_OSC_SETTITLE);
        // The editor lets go even when its save failed; the failure was shown,
        // and the question comes back, offering Save As, until the layout is
        // saved or given up.
        if (host_.ErrorsShown() != errorsBefore) {
            host_.OfferSaveAsNext();
            continue;
        }
        if (keptOpen) {
            event->ignore();
            return;
        }
        saved = host_.QuestionsAsked() != questionsBefore && host_.LastAnswerWasSave();
        break;
    }
    if (saved)
        Q_EMIT savedOnClose();
    QMdiSubWindow::closeEvent(event);
}
