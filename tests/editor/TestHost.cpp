#include "TestHost.h"

#include "host/Toolkit.h"
#include "view/MessageEvent.h"
#include "view/QtWindowHandle.h"

#include <QMenu>

namespace {

// What a message event carries, or null for any other event.
MessageEvent* Message(QEvent* event, unsigned message)
{
    MessageEvent* m = MessageEvent::From(event);
    return m != nullptr && m->Message() == message ? m : nullptr;
}

// A stand-in for a frame that is no window at all: it only notes being closed.
class NotAWindow : public QObject {
public:
    explicit NotAWindow(bool& closed) : closed_(closed) {}

protected:
    bool event(QEvent* event) override
    {
        closed_ = closed_ || Message(event, WM_OSC_CLOSEFRAME) != nullptr;
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
    for (QAction* top : moduleMenu != nullptr ? moduleMenu->actions() : QList<QAction*>()) {
        QMenu* submenu = top->menu();
        menuBar->addMenu(submenu);
        connect(submenu, &QMenu::triggered, this, [this](QAction* action) {
            toolkit::SendMessage(HandleOf(editor), WM_COMMAND, action->data().toInt(), 0);
        });
    }
}

bool TestFrame::event(QEvent* event)
{
    if (MessageEvent* m = Message(event, WM_OSC_SETEDITOR))
        editor = qobject_cast<QWidget*>(ObjectOf(reinterpret_cast<WindowHandle>(m->lParam)));
    else if (MessageEvent* m = Message(event, WM_OSC_SETTITLE))
        title = reinterpret_cast<const char*>(m->lParam);
    return MessageEvent::From(event) != nullptr || QWidget::event(event);
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
    MessageEvent* m = Message(event, WM_OSC_HOSTREQUEST);
    if (m == nullptr || m->lParam == 0)
        return MessageEvent::From(event) != nullptr || QWidget::event(event);
    lastRequest = *reinterpret_cast<const HostRequest*>(m->lParam);
    QObject* made = nullptr;
    if (lastRequest.words[0] != kRequestOpenEditor || answer == Answer::kNoFrame)
        return true;
    if (answer == Answer::kFrame) {
        frame = new TestFrame(this, reinterpret_cast<QMenu*>(lastRequest.words[kRequestMenuWord]));
        frame->resize(600, 400);
        made = frame;
    } else {
        made = notAWindow = new NotAWindow(notAWindowClosed);
    }
    m->result = reinterpret_cast<std::intptr_t>(HandleOf(made));
    return true;
}
