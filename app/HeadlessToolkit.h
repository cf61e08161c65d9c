#pragma once

#include <string>
#include <vector>

// The toolkit of the command line (host/Toolkit.h). No dialog is ever shown:
// a message box is kept as one line "caption: text" for the command to print
// with the name of the file it concerns, questions are answered No and
// notices OK, and there is no window to post or send messages to.
namespace headless {

// The message boxes shown since the last call, oldest first. The document
// only shows one on its own when something failed.
std::vector<std::string> TakeMessages();

}  // namespace headless
