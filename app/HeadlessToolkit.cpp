#include "HeadlessToolkit.h"

#include "host/Toolkit.h"

#include <utility>

namespace {

constexpr int kAnswerNo = 3;
constexpr int kAnswerOk = 1;

std::vector<std::string>& Messages()
{
    static std::vector<std::string> messages;
    return messages;
}

// A message box text may span lines; the command line prints one line.
std::string OneLine(std::string text)
{
    for (char& c : text) {
        if (c == '\n' || c == '\r')
            c = ' ';
    }
    return text;
}

}  // namespace

namespace headless {

std::vector<std::string> TakeMessages()
{
    return std::exchange(Messages(), {});
}

}  // namespace headless

namespace toolkit {

int MessageBox(WindowHandle, const char* text, const char* caption, int style)
{
    Messages().push_back(OneLine(std::string(caption != nullptr ? caption : "") + ": " +
                                 (text != nullptr ? text : "")));
    return style == kYesNo ? kAnswerNo : kAnswerOk;
}

bool PostMessage(WindowHandle, unsigned, std::intptr_t, std::intptr_t)
{
    return false;
}

std::intptr_t SendMessage(WindowHandle, unsigned, std::intptr_t, std::intptr_t)
{
    return 0;
}

}  // namespace toolkit
