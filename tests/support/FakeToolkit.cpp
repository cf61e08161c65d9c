#include "FakeToolkit.h"

#include <memory>

FakeToolkit& Toolkit()
{
    static FakeToolkit fake;
    return fake;
}

namespace toolkit {

int MessageBox(WindowHandle, const char* text, const char* caption, int style)
{
    FakeToolkit& fake = Toolkit();
    fake.messageBoxes.push_back({text, caption, style});
    if (fake.answers.empty())
        return style == kYesNo ? 3 : 1;
    const int answer = fake.answers.front();
    fake.answers.pop_front();
    return answer;
}

bool PostMessage(WindowHandle window, unsigned message, std::intptr_t wParam, std::intptr_t lParam)
{
    FakeToolkit& fake = Toolkit();
    if (fake.refusePosts)
        return false;
    PostedMessage posted{window, message, wParam, lParam, {}};
    if (message == WM_OSC_TESTVALUE) {
        std::unique_ptr<AddressComponents> owned(reinterpret_cast<AddressComponents*>(lParam));
        posted.components = *owned;
    }
    fake.posts.push_back(std::move(posted));
    return true;
}

std::intptr_t SendMessage(WindowHandle, unsigned, std::intptr_t, std::intptr_t)
{
    return 0;
}

}  // namespace toolkit
