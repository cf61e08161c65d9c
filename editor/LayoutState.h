#pragma once

#include "document/ReceivedValues.h"

#include <cstdint>

class OSCProject;

// Answers a host's layout-state request on project: sets the control value
// its record carries, if any, then fills the snapshot it points to, if any.
// Says whether a value was set and whether it shows on the current page.
ValuesSet AnswerLayoutState(OSCProject& project, const std::intptr_t* words);
