#pragma once

#include "OSCParms.h"
#include "WindowHandle.h"

#include <cstdint>
#include <vector>

// The editor module as a host sees it: the library's file name and the types
// of the entries it resolves there by name.
namespace editor_module {

constexpr const char* kLibraryName = "libVornOSCEditor.so";

// DllMain: reason 0 attaches the module, 1 detaches it.
using DllMainEntry = int (*)(void* instance, int reason);
// VornOSCEditor_Initialize and MacInstanceInitialize: the loaded nib, or 0.
using InitializeEntry = std::intptr_t (*)();
using MacInstanceInitializeEntry = std::intptr_t (*)(const char* nibName);
using GetIdEntry = unsigned (*)();
using ModuleEntry = void (*)();
// VornOSCEditor: an editor window on the layout at path (null: a new layout)
// inside a frame the host makes on request, or null.
using OpenEditorEntry = WindowHandle (*)(WindowHandle parent, const char* path);
using ExternalPasteEntry = void (*)(const std::vector<const _OSCParms*>& records);

}  // namespace editor_module
