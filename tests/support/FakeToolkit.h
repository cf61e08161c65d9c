#pragma once

#include "host/Messages.h"
#include "host/Toolkit.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

// The toolkit as tests see it: message boxes answer from a script, posted
// messages are recorded. Test-value posts hand over their address
// components, which the fake keeps and frees.
struct ShownMessageBox {
    std::string text;
    std::string caption;
    int style = 0;
};

struct PostedMessage {
    WindowHandle window = nullptr;
    unsigned message = 0;
    std::intptr_t wParam = 0;
    std::intptr_t lParam = 0;
    AddressComponents components;  // for WM_OSC_TESTVALUE
};

struct FakeToolkit {
    std::deque<int> answers;  // next answers to message boxes; empty answers "No"
    std::vector<ShownMessageBox> messageBoxes;
    std::vector<PostedMessage> posts;
    bool refusePosts = false;

    void Reset() { *this = FakeToolkit(); }
};

// The one fake that the toolkit functions of the test programs use.
FakeToolkit& Toolkit();
