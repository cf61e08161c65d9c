#pragma once

#include "host/ModuleExport.h"

#include <cstdint>

class QKeyEvent;

// One key binding of the editor, in the host's layout: a command, the key
// (low byte its character, next byte its key code) and the host's three
// modifier words, of which the third marks the Control key.
struct AcceleratorRecord {
    std::int32_t command;
    std::int32_t key;
    std::int32_t flags[3];
};

// The eight arrow bindings, ended by a record of -1 command and key.
extern "C" VORNOSC_EXPORT const AcceleratorRecord AcceleratorsOSC[9];

// The command that table binds to the key event, or 0.
int TranslateAccelerator(const AcceleratorRecord* table, const QKeyEvent& event);

// Ours: the command that Shift with an arrow key gives, moving the selection by
// a grid step, or 0.
int TranslateGridMove(const QKeyEvent& event);
