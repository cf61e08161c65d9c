// The toolkit's message boxes on Qt.
#include "host/Toolkit.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

TEST(QtToolkit, MessageBoxesShowTheirTextAndAnswerYesWithFourNoWithThreeAndANoticeWithOne)
{
    for (const auto& [style, press, answer] : {std::tuple{toolkit::kYesNo, QMessageBox::Yes, 4},
                                               {toolkit::kYesNo, QMessageBox::No, 3},
                                               {toolkit::kNotice, QMessageBox::Ok, 1}}) {
        QString shown;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            shown = box->windowTitle() + QLatin1Char('|') + box->text();
            box->button(press)->click();
        });
        EXPECT_EQ(toolkit::MessageBox(nullptr, "Delete them?", "OSC Editor", style), answer);
        EXPECT_EQ(shown, QStringLiteral("OSC Editor|Delete them?"));
    }
}

}  // namespace
