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
    QSettings settings(folder.filePath(QStringLiteral("vornosc.ini")), QSettings::IniFormat);
    SaveOscTarget(settings, {"::1", 7000});
    EXPECT_EQ(settings.value(QStringLiteral("osc/target")), QStringLiteral("[::1]:7000"));
    EXPECT_EQ(ToString(LoadOscTarget(settings)), "[::1]:7000");
    for (const char* stored : {"", "nonsense", "example.org:0"}) {
        settings.setValue(QStringLiteral("osc/target"), QString::fromUtf8(stored));
        EXPECT_EQ(ToString(LoadOscTarget(settings)), "127.0.0.1:9000") << stored;
    }
}

TEST(OscTarget, TheDialogShowsTheTargetAndAllowsOkOnlyForAHostAndPortThatRead)
{
    OscSettingsDialog dialog({"my host", 8000});
    const QPushButton* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_EQ(ToString(dialog.Target()), "my host:8000");
    EXPECT_FALSE(ok->isEnabled());
    // Each field typed as a user does: select all, erase, type. A port the box refuses leaves the
    // one before.
    for (const auto& c : OscCases("dialog")) {
        SCOPED_TRACE(c.dump());
        for (const char* field : {"host", "port"}) {
            QWidget* widget = dialog.findChild<QWidget*>(QString::fromUtf8(field));
            QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(widget, Qt::Key_Backspace);
            QTest::keyClicks(widget, QString::fromStdString(c[field]));
        }
        EXPECT_EQ(ToString(dialog.Target()), c["target"]);
        EXPECT_EQ(ok->isEnabled(), c["ok"]);
    }
}

}  // namespace
