#pragma once

#include "Accelerators.h"
#include "host/ModuleExport.h"
#include "host/WindowHandle.h"

#include <cstdint>

class QMenu;

// What the editor module shows its host, by plain names. The tables of the
// layout document, the clipboard, the shared font and the search memory are
// exported where they are declared.

constexpr int kAttach = 0;
constexpr int kDetach = 1;
constexpr unsigned kModuleIdentifier = 17016;
constexpr int kEditorMenuId = 1000;
constexpr int kLargeIconId = 1002;
constexpr int kSmallIconId = 1003;

extern "C" {

VORNOSC_EXPORT extern unsigned char Inited[32];  // for the host; the module never touches it
VORNOSC_EXPORT extern void* hInstance;           // the module's nib, set on attach
VORNOSC_EXPORT extern QMenu* hMenu;  // menu 1000, loaded for the first editor in a frame
VORNOSC_EXPORT extern const AcceleratorRecord* hAccel;

VORNOSC_EXPORT int DllMain(void* instance, int reason);
VORNOSC_EXPORT std::intptr_t VornOSCEditor_Initialize();
VORNOSC_EXPORT unsigned GETID();
VORNOSC_EXPORT void ModuleInitialize();
VORNOSC_EXPORT void ModuleCleanup();
VORNOSC_EXPORT std::intptr_t MacInstanceInitialize(const char* nibName);

// Opens an editor on the layout at path, or on a new layout when path is null,
// in a frame that the host makes on request. Null when there is no
// application, the file does not exist, or the host makes no frame. With a
// null parent the editor is made and initialised but gets no window.
VORNOSC_EXPORT WindowHandle VornOSCEditor(WindowHandle parent, const char* path);
}
