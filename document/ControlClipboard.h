#pragma once

#include "host/ModuleExport.h"

#include "OSCControl.h"

#include <memory>
#include <vector>

// The module's own clipboard of controls, shared by every editor window.
// It holds controls in the reverse of the page order they were taken from.
// Hosts reach it by the plain names below.
using ControlList = std::vector<std::unique_ptr<OSCControl>>;
VORNOSC_EXPORT extern ControlList clipboard;

extern "C" {

VORNOSC_EXPORT ControlList* GetControlClipboard();
VORNOSC_EXPORT void ClearClipboard();

// Fills the clipboard with controls made from the host's records, which stay
// the caller's. Null records are passed over.
VORNOSC_EXPORT void ExternalPasteToClipboard(const std::vector<const _OSCParms*>& records);
}
