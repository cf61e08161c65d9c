#pragma once

#include "OSCControl.h"

#include <memory>
#include <vector>

// The module's own clipboard of controls, shared by every editor window.
// It holds controls in the reverse of the page order they were taken from.
using ControlList = std::vector<std::unique_ptr<OSCControl>>;

ControlList* GetControlClipboard();
void ClearClipboard();

// Fills the clipboard with controls made from the host's records, which stay
// the caller's. Null records are passed over.
void ExternalPasteToClipboard(const std::vector<const _OSCParms*>& records);
