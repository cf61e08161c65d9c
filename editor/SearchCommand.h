#pragma once

#include "DialogRunner.h"

class OSCProject;

// Asks in VornOscSearchAndReplace what to replace, starting from the last
// answers, remembers the answers, and on OK replaces in every page. Returns
// whether the layout counts as changed: on every OK, even when nothing matched.
// Used by the editor's Search and Replace command.
bool RunSearchAndReplace(OSCProject& project, const DialogRunner& run);
