// The toolkit calls of the document and the canvas, on Qt.
#include "host/Toolkit.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

TEST(QtToolkit, MessageBoxesShowTheirTextAndAnswerYesWithFourAndNoWithThree)
{
    const struct {
        int style;
        QMessageBox::StandardButton press;
        int answer;
    } cases[] = {{toolkit::kYesNo, QMessageBox::Yes, toolkit::kAnswerYes},
                 {toolkit::kYesNo, QMessageBox::No, 3},
                 {toolkit::kNotice, QMessageBox::Ok, 1}};
    for (const auto& c : cases) {
        QString shown;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            shown = box->windowTitle() + QLatin1Char('|') + box->text();
            box->button(c.press)->click();
        });
        EXPECT_EQ(toolkit::MessageBox(nullptr, "Delete them?", "OSC Editor", c.style), c.answer);
        EXPECT_EQ(shown, QStringLiteral("OSC Editor|Delete them?"));
    }
}

}  // namespace
