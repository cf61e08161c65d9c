// The toolkit calls that the document and the canvas make, on Qt: messages
// are MessageEvents, message boxes are QMessageBoxes.
#include "MessageEvent.h"
#include "host/Toolkit.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QWidget>

namespace {

constexpr int kAnswerOk = 1;
constexpr int kAnswerNo = 3;

}  // namespace

namespace toolkit {

int MessageBox(WindowHandle owner, const char* text, const char* caption, int style)
{
    QMessageBox box(qobject_cast<QWidget*>(ObjectOf(owner)));
    box.setWindowTitle(QString::fromUtf8(caption != nullptr ? caption : ""));
    box.setText(QString::fromUtf8(text != nullptr ? text : ""));
    if (style == kYesNo) {
        box.setIcon(QMessageBox::Question);
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::No);
        return box.exec() == QMessageBox::Yes ? kAnswerYes : kAnswerNo;
    }
    box.setIcon(QMessageBox::Information);
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
    return kAnswerOk;
}

bool PostMessage(WindowHandle window, unsigned message, std::intptr_t wParam, std::intptr_t lParam)
{
    if (window == nullptr)
        return false;
    QCoreApplication::postEvent(ObjectOf(window),
                                new MessageEvent(message, wParam, lParam, MessageEvent::kPosted));
    return true;
}

std::intptr_t SendMessage(WindowHandle window, unsigned message, std::intptr_t wParam,
                          std::intptr_t lParam)
{
    if (window == nullptr)
        return 0;
    MessageEvent event(message, wParam, lParam, MessageEvent::kSent);
    QCoreApplication::sendEvent(ObjectOf(window), &event);
    return event.result;
}

}  // namespace toolkit
