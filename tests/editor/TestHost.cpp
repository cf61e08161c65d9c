#include "TestHost.h"

#include "host/Toolkit.h"
#include "view/MessageEvent.h"
#include "view/QtWindowHandle.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

extern "C" VornBasics* AllocVornBasics(WindowHandle, int kind, int flags, void* reserved1,
                                       void* reserved2)
{
    theTestBasics.allocArguments = {kind, flags, reserved1 != nullptr, reserved2 != nullptr};
    return &theTestBasics;
}

bool TestWindow::event(QEvent* event)
{
    MessageEvent* m = MessageEvent::From(event);
    if (m == nullptr)
        return QWidget::event(event);
    if (m->Message() == WM_OSC_SETEDITOR) {
        editor = qobject_cast<QWidget*>(ObjectOf(reinterpret_cast<WindowHandle>(m->lParam)));
    } else if (m->Message() == WM_OSC_SETTITLE) {
        title = reinterpret_cast<const char*>(m->lParam);
    } else if (m->Message() == WM_OSC_OPERATED) {
        const auto& c = *reinterpret_cast<const OperatedControl*>(m->lParam);
        static const char* const kPhases[] = {"press", "drag", "release", "release away"};
        received.push_back(std::string(c.name) + " at " + c.command + " (" +
                           std::to_string(c.type) + ", " + std::to_string(c.minValue) + " to " +
                           std::to_string(c.maxValue) + "): " + std::to_string(c.value) + " on " +
                           kPhases[c.phase]);
    } else if (auto components = m->TakeComponents()) {
        received.push_back(*components);
        received.back().insert(received.back().begin(), m->wParam);
    } else if (m->Message() == WM_OSC_HOSTREQUEST && m->lParam != 0) {
        const auto& request = *reinterpret_cast<const HostRequest*>(m->lParam);
        if (request.words[0] == kStatusRecordKind && m->wParam == 0)
            received.push_back(reinterpret_cast<const char*>(request.words[kStatusTextWord]));
        else
            lastRequest = request;
        if (request.words[0] == kRequestOpenEditor && answer != Answer::kNoFrame) {
            m->result = reinterpret_cast<std::intptr_t>(
                HandleOf(MakeFrame(reinterpret_cast<QMenu*>(request.words[kRequestMenuWord]))));
        }
    }
    return true;
}

QObject* TestWindow::MakeFrame(QMenu* moduleMenu)
{
    if (answer == Answer::kNotAWindow) {
        notAWindow = new QObject(this);
        notAWindow->installEventFilter(this);
        return notAWindow;
    }
    frame = new TestWindow;
    frame->setParent(this);
    auto* menuBar = new QMenuBar(frame);
    for (QAction* top : moduleMenu != nullptr ? moduleMenu->actions() : QList<QAction*>()) {
        menuBar->addMenu(top->menu());
        connect(top->menu(), &QMenu::triggered, frame, [frame = frame.data()](QAction* action) {
            toolkit::SendMessage(HandleOf(frame->editor), WM_COMMAND, action->data().toInt(), 0);
        });
    }
    // Room for the menu bar, of a fixed height: measuring it would load fonts.
    frame->setContentsMargins(0, 19, 0, 0);
    frame->resize(600, 400);
    return frame;
}

bool TestWindow::eventFilter(QObject* watched, QEvent* event)
{
    const MessageEvent* m = MessageEvent::From(event);
    notAWindowClosed = notAWindowClosed || (m != nullptr && m->Message() == WM_OSC_CLOSEFRAME);
    if (watched == qApp && m != nullptr && m->Message() == WM_OSC_HOSTREQUEST && m->lParam != 0) {
        const auto& request = *reinterpret_cast<const HostRequest*>(m->lParam);
        if (request.words[0] == kRequestHelpTopic)
            received.push_back("help topic " + std::to_string(request.words[1]));
    }
    return false;
}
