#include "ModuleEntry.h"

#include "EditorGeometry.h"
#include "ModuleResources.h"
#include "TVornOSCEditor.h"
#include "host/Messages.h"
#include "host/Toolkit.h"
#include "view/ArialFont.h"
#include "view/QtWindowHandle.h"

#include <QApplication>
#include <QMenu>

#include <filesystem>
#include <memory>

unsigned char Inited[32] = {};
void* hInstance = nullptr;
QMenu* hMenu = nullptr;
const AcceleratorRecord* hAccel = nullptr;

namespace {

// Stopping the module, when the process ends or the host unloads it,
// detaches it and lets go of the nib; the shared font goes with the module.
struct ModuleLifetime {
    MacInstance macinstance;
    ~ModuleLifetime() { DestroyArialFont(); }
} module;

// The part of a window its content may cover: a frame keeps its menu bar out of it.
CRect ClientRectOf(const QWidget& window)
{
    const QRect r = window.contentsRect();
    return {r.left(), r.top(), r.left() + r.width(), r.top() + r.height()};
}

void PlaceFrame(QWidget& frame, const CRect& r)
{
    frame.setGeometry(r.left, r.top, r.Width(), r.Height());
}

}  // namespace

int DllMain(void* instance, int reason)
{
    if (reason == kAttach) {
        hInstance = instance;
        ModuleInitialize();
    } else if (reason == kDetach) {
        ModuleCleanup();
    }
    return 1;
}

std::intptr_t VornOSCEditor_Initialize()
{
    return MacInstanceInitialize("VornOSCEditor");
}

unsigned GETID()
{
    return kModuleIdentifier;
}

void ModuleInitialize()
{
    if (hAccel == nullptr)
        hAccel = AcceleratorsOSC;
    CreateArialFont();
}

void ModuleCleanup() {}

std::intptr_t MacInstanceInitialize(const char* nibName)
{
    return reinterpret_cast<std::intptr_t>(module.macinstance.Initialize(nibName));
}

WindowHandle VornOSCEditor(WindowHandle parent, const char* path)
{
    const HoldInstance resources;
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
        return nullptr;
    std::error_code error;
    if (path != nullptr && !std::filesystem::exists(path, error))
        return nullptr;

    auto editor = std::make_unique<TVornOSCEditor>();
    auto* parentWindow = qobject_cast<QWidget*>(ObjectOf(parent));
    editor->Init(parentWindow, path);
    if (parent == nullptr)
        return HandleOf(editor.release());

    if (hMenu == nullptr) {
        const HoldInstance menuResources;
        hMenu = LoadMenu(kEditorMenuId);
    }
    HostRequest request;
    request.words[0] = kRequestOpenEditor;
    request.words[kRequestMenuWord] = reinterpret_cast<std::intptr_t>(hMenu);
    request.words[kRequestAcceleratorsWord] = reinterpret_cast<std::intptr_t>(hAccel);
    const auto frameHandle = reinterpret_cast<WindowHandle>(toolkit::SendMessage(
        parent, WM_OSC_HOSTREQUEST, 0, reinterpret_cast<std::intptr_t>(&request)));
    if (frameHandle == nullptr)
        return nullptr;

    auto* frame = qobject_cast<QWidget*>(ObjectOf(frameHandle));
    if (frame == nullptr) {
        // The editor's window cannot live in what the host made.
        editor.reset();
        toolkit::SendMessage(frameHandle, WM_OSC_CLOSEFRAME, 0, 0);
        delete ObjectOf(frameHandle);
        return nullptr;
    }
    editor->Create(frame, ClientRectOf(*frame));
    toolkit::SendMessage(frameHandle, WM_OSC_SETEDITOR, 0,
                         reinterpret_cast<std::intptr_t>(HandleOf(editor.get())));

    const CRect stored{editor->frameLeft, editor->frameTop, editor->frameLeft + editor->frameWidth,
                       editor->frameTop + editor->frameHeight};
    if (parentWindow != nullptr)
        PlaceFrame(*frame, FramePlacement(stored, ClientRectOf(*parentWindow)));
    frame->show();
    QIcon icon;
    icon.addPixmap(LoadIcon(hInstance, kLargeIconId));
    icon.addPixmap(LoadIcon(hInstance, kSmallIconId));
    frame->setWindowIcon(icon);
    return HandleOf(editor.release());
}
