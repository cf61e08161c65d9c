#include "DialogPlay.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

QPushButton* Button(QDialog& dialog, QDialogButtonBox::StandardButton button)
{
    return dialog.findChild<QDialogButtonBox*>()->button(button);
}

void Click(QWidget* widget)
{
    // Near the left edge: a check box answers only on its box and caption.
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(4, widget->height() / 2));
}

void Play(QDialog& dialog, const QString& script)
{
    for (const QString& step : script.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        if (step == QStringLiteral("OK") || step == QStringLiteral("Cancel")) {
            Click(Button(dialog, step == QStringLiteral("OK") ? QDialogButtonBox::Ok
                                                              : QDialogButtonBox::Cancel));
            continue;
        }
        const QString name = step.section(QLatin1Char('='), 0, 0);
        auto* widget = dialog.findChild<QWidget*>(name);
        if (widget == nullptr) {
            ADD_FAILURE() << "no widget " << name.toStdString();
            return;
        }
        if (!step.contains(QLatin1Char('='))) {
            Click(widget);
            continue;
        }
        if (qobject_cast<QLineEdit*>(widget) != nullptr)
            QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(widget, step.section(QLatin1Char('='), 1));
    }
}

}  // namespace

DialogRunner Playing(const QString& script, std::function<void(QDialog&)> check)
{
    return [script, check](QDialog& dialog) {
        QTimer::singleShot(0, &dialog, [&dialog, script, check] {
            Play(dialog, script);
            if (check)
                check(dialog);
            if (dialog.isVisible())
                dialog.reject();
        });
        return dialog.exec();
    };
}

bool OkEnabled(QDialog& dialog)
{
    return Button(dialog, QDialogButtonBox::Ok)->isEnabled();
}
