#include "EditorArea.h"

#include "EditorFrame.h"
#include "host/Messages.h"
#include "view/MessageEvent.h"

EditorArea::EditorArea(DesktopHost& host, QWidget* parent) : QMdiArea(parent), host_(host) {}

bool EditorArea::event(QEvent* event)
{
    MessageEvent* message = MessageEvent::From(event);
    if (message == nullptr)
        return QMdiArea::event(event);
    if (message->Message() != WM_OSC_HOSTREQUEST || message->lParam == 0)
        return true;
    const auto& request = *reinterpret_cast<const HostRequest*>(message->lParam);
    if (request.words[0] != kRequestOpenEditor)
        return true;
    auto* menu = reinterpret_cast<QMenu*>(request.words[kRequestMenuWord]);
    if (menu != nullptr && menu != moduleMenu_) {
        moduleMenu_ = menu;
        if (onModuleMenu)
            onModuleMenu(menu);
    }
    auto* frame = new EditorFrame(host_);
    addSubWindow(frame);
    if (onFrame)
        onFrame(frame);
    message->result = reinterpret_cast<std::intptr_t>(static_cast<QObject*>(frame));
    return true;
}
