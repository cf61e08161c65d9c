#include "EditorFrame.h"

#include "DesktopHost.h"
#include "host/Messages.h"
#include "view/MessageEvent.h"

#include <QCloseEvent>
#include <QCoreApplication>

EditorFrame::EditorFrame(const DesktopHost& host, QWidget* parent)
    : QMdiSubWindow(parent), host_(host)
{
    static int framesMade = 0;
    recoveryName_ = QStringLiteral("layout-%1").arg(++framesMade);
    setAttribute(Qt::WA_DeleteOnClose);
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
    const QString file = QString::fromUtf8(name);
    return *folder == '\0' ? file : QString::fromUtf8(folder) + QLatin1Char('/') + file;
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
    if (message->Message() == WM_OSC_SETEDITOR)
        setWidget(qobject_cast<QWidget*>(reinterpret_cast<QObject*>(message->lParam)));
    else if (message->Message() == WM_OSC_SETTITLE)
        setWindowTitle(QString::fromUtf8(reinterpret_cast<const char*>(message->lParam)));
    // Message 204 comes from a module about to destroy a frame it could not
    // use; the frame has nothing of its own to let go of.
    return true;
}

void EditorFrame::closeEvent(QCloseEvent* event)
{
    for (;;) {
        const int errorsBefore = host_.ErrorsShown();
        if (Send(WM_OSC_CANCLOSE) != 0) {
            // The user cancelled; the editor forgot its changes when asked, so
            // they are marked again: nothing may pass for saved.
            Send(WM_OSC_SETTITLE);
            event->ignore();
            return;
        }
        // The editor lets go even when its save failed; the failure was shown,
        // and the question comes back until the layout is saved or given up.
        if (host_.ErrorsShown() == errorsBefore)
            break;
    }
    QMdiSubWindow::closeEvent(event);
}
