#pragma once

#include "WindowHandle.h"

#include <cstdint>

// What the layout document asks of the window toolkit. The toolkit layer
// defines these for real; the command line defines headless ones and tests
// define fakes with scripted answers.
namespace toolkit {

constexpr int kNotice = 1;  // one OK button
constexpr int kYesNo = 2;   // a question
constexpr int kAnswerYes = 4;

// Shows text in a message box with the given caption and style; returns the
// button pressed (kAnswerYes for Yes).
int MessageBox(WindowHandle owner, const char* text, const char* caption, int style);

// Queues a message for window; false when it could not be queued, in which
// case the sender still owns anything lParam points to.
bool PostMessage(WindowHandle window, unsigned message, std::intptr_t wParam, std::intptr_t lParam);

// Delivers a message to window at once and returns its answer.
std::intptr_t SendMessage(WindowHandle window, unsigned message, std::intptr_t wParam,
                          std::intptr_t lParam);

}  // namespace toolkit
