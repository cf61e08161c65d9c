#include "TestHost.h"

#include "host/Toolkit.h"
#include "view/MessageEvent.h"
#include "view/QtWindowHandle.h"

#include <QMenu>

namespace {

// A stand-in for a frame that is no window at all: it only notes being closed.
class NotAWindow : public QObject {
public:
    explicit NotAWindow(bool& closed) : closed_(closed) {}

protected:
    bool event(QEvent* event) override
    {
        if (MessageEvent* message = MessageEvent::From(event))
            closed_ = closed_ || message->Message() == WM_OSC_CLOSEFRAME;
        return QObject::event(event);
    }

private:
    bool& closed_;
};

}  // namespace

TestBasics& TheTestBasics()
{
    static TestBasics basics;
    return basics;
}

extern "C" VornBasics* AllocVornBasics(WindowHandle, int kind, int flags, void* reserved1,
                                       void* reserved2)
{
    TheTestBasics().allocArguments = {kind, flags, reserved1 != nullptr, reserved2 != nullptr};
    return &TheTestBasics();
}

TestFrame::TestFrame(QWidget* parent, QMenu* moduleMenu)
    : QWidget(parent), menuBar(new QMenuBar(this))
{
    setContentsMargins(0, menuBar->sizeHint().height(), 0, 0);
    if (moduleMenu == nullptr)
        return;
    for (QAction* top : moduleMenu->actions()) {
        QMenu* submenu = top->menu();
        menuBar->addMenu(submenu);
        connect(submenu, &QMenu::aboutToShow, this, [this, submenu] {
            toolkit::SendMessage(HandleOf(editor), WM_INITMENUPOPUP,
                                 reinterpret_cast<std::intptr_t>(submenu), 0);
        });
        connect(submenu, &QMenu::triggered, this, [this](QAction* action) {
            toolkit::SendMessage(HandleOf(editor), WM_COMMAND, action->data().toInt(), 0);
        });
    }
}

bool TestFrame::event(QEvent* event)
{
    MessageEvent* message = MessageEvent::From(event);
    if (message == nullptr)
        return QWidget::event(event);
    if (message->Message() == WM_OSC_SETEDITOR)
        editor = qobject_cast<QWidget*>(ObjectOf(reinterpret_cast<WindowHandle>(message->lParam)));
    else if (message->Message() == WM_OSC_SETTITLE)
        title = reinterpret_cast<const char*>(message->lParam);
    else if (message->Message() == WM_OSC_CLOSEFRAME)
        closed = true;
    return true;
}

void TestFrame::resizeEvent(QResizeEvent*)
{
    // The editor fills the frame below its menu bar.
    menuBar->setGeometry(0, 0, width(), contentsMargins().top());
    if (editor != nullptr)
        editor->setGeometry(contentsRect());
}

bool TestHostWindow::event(QEvent* event)
{
    MessageEvent* message = MessageEvent::From(event);
    if (message == nullptr)
        return QWidget::event(event);
    if (message->Message() != WM_OSC_HOSTREQUEST || message->lParam == 0)
        return true;
    lastRequest = *reinterpret_cast<const HostRequest*>(message->lParam);
    if (lastRequest.words[0] != kRequestOpenEditor)
        return true;
    switch (answer) {
        case Answer::kFrame:
            frame =
                new TestFrame(this, reinterpret_cast<QMenu*>(lastRequest.words[kRequestMenuWord]));
            frame->resize(600, 400);
            message->result = reinterpret_cast<std::intptr_t>(HandleOf(frame));
            break;
        case Answer::kNoFrame:
            break;
        case Answer::kNotAWindow:
            notAWindow = new NotAWindow(notAWindowClosed);
            message->result = reinterpret_cast<std::intptr_t>(HandleOf(notAWindow));
            break;
    }
    return true;
}
