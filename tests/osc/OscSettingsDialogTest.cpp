#include "app/osc/OscSettingsDialog.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

namespace {

// Replaces the text of the widget of that name as a user does: select all, erase, type.
void Type(QDialog& dialog, const QString& name, const QString& text)
{
    QWidget* widget = dialog.findChild<QWidget*>(name);
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(widget, Qt::Key_Backspace);
    QTest::keyClicks(widget, text);
}

TEST(OscSettingsDialog, ShowsTheTargetAndReadsTheTypedOneBack)
{
    OscSettingsDialog dialog({"example.org", 8000});
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("host"))->text(),
              QStringLiteral("example.org"));
    const auto* port = dialog.findChild<QSpinBox*>(QStringLiteral("port"));
    EXPECT_EQ(port->value(), 8000);
    EXPECT_EQ(port->minimum(), 1);
    EXPECT_EQ(port->maximum(), 65535);

    Type(dialog, QStringLiteral("host"), QStringLiteral("::1"));
    Type(dialog, QStringLiteral("port"), QStringLiteral("65535"));
    EXPECT_EQ(ToString(dialog.Target()), "[::1]:65535");
}

TEST(OscSettingsDialog, OkOnlyForAHostTheTargetAccepts)
{
    OscSettingsDialog dialog({"", 9000});
    const QPushButton* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_FALSE(ok->isEnabled());
    for (const auto& [host, enabled] : {std::pair{"a", true}, {"my host", false}, {"", false}}) {
        SCOPED_TRACE(host);
        Type(dialog, QStringLiteral("host"), QString::fromUtf8(host));
        EXPECT_EQ(ok->isEnabled(), enabled);
    }
}

}  // namespace
