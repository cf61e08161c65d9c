// Where test mode sends: the target as HOST:PORT text, in the settings and in its dialog.
#include "app/osc/OscSettings.h"
#include "app/osc/OscSettingsDialog.h"
#include "tests/support/TestFiles.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

nlohmann::json OscCases(const char* rule)
{
    return Cases(DATA_DIR "/osc.json", rule);
}

TEST(OscTarget, ReadsHostPortAndWritesTheSameTextBackOrTellsWhatToType)
{
    for (const auto& c : OscCases("targets")) {
        const std::string text = c[0], expected = c[1];
        SCOPED_TRACE(text);
        std::string error;
        const std::optional<OscTarget> target = ParseOscTarget(text, error);
        EXPECT_EQ(target ? ToString(*target) : error,
                  expected.empty() ? text : "OSC target \"" + text + "\" " + expected);
    }
}

TEST(OscTarget, TheSavedTargetLoadsInTheNextRunAndOneThatDoesNotReadLoadsTheDefault)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("vornosc.ini"));
    QSettings lastRun(file, QSettings::IniFormat);
    SaveOscTarget(lastRun, {"::1", 7000});
    lastRun.sync();
    QSettings settings(file, QSettings::IniFormat);
    EXPECT_EQ(settings.value(QStringLiteral("osc/target")), QStringLiteral("[::1]:7000"));
    EXPECT_EQ(ToString(LoadOscTarget(settings)), "[::1]:7000");
    for (const char* stored : {"", "nonsense", "example.org:0"}) {
        settings.setValue(QStringLiteral("osc/target"), QString::fromUtf8(stored));
        EXPECT_EQ(ToString(LoadOscTarget(settings)), "127.0.0.1:9000") << stored;
    }
}

// Replaces the text of the widget of that name as a user does: select all, erase, type.
void Type(QDialog& dialog, const char* name, const std::string& text)
{
    QWidget* widget = dialog.findChild<QWidget*>(QString::fromUtf8(name));
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(widget, Qt::Key_Backspace);
    QTest::keyClicks(widget, QString::fromStdString(text));
}

bool OkEnabled(const QDialog& dialog)
{
    return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled();
}

TEST(OscTarget, TheDialogShowsTheTargetAndAllowsOkOnlyForAHostAndPortThatRead)
{
    EXPECT_FALSE(OkEnabled(OscSettingsDialog({"", 9000})));
    OscSettingsDialog dialog({"example.org", 8000});
    EXPECT_EQ(ToString(dialog.Target()), "example.org:8000");
    // A port the box refuses leaves the one before.
    for (const auto& c : OscCases("dialog")) {
        SCOPED_TRACE(c.dump());
        Type(dialog, "host", c["host"]);
        Type(dialog, "port", c["port"]);
        EXPECT_EQ(ToString(dialog.Target()), c["target"]);
        EXPECT_EQ(OkEnabled(dialog), c["ok"]);
    }
}

}  // namespace
