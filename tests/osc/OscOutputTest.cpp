// The target as HOST:PORT text, in the settings and in its dialog, the address of a
// message, and the list of what was sent.
#include "app/osc/OscAddress.h"
#include "app/osc/OscMonitor.h"
#include "app/osc/OscSettings.h"
#include "app/osc/OscSettingsDialog.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTime>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(OscTarget, ReadsHostPortAndWritesTheSameTextBackOrTellsWhatToType)
{
    const std::string bad = "is not HOST:PORT, for example 127.0.0.1:9000";
    const std::string range = "the port must be 1 to 65535, for example 127.0.0.1:9000";
    const std::pair<std::string, std::string> cases[] = {
        {"127.0.0.1:9000", ""}, {"a:1", ""},           {"a:0", range},
        {"a:65535", ""},        {"a:65536", range},    {"a:" + std::string(20, '9'), range},
        {"[::1]:9000", ""},     {"::1:9000", bad},     {"[]:9000", bad},
        {"[::1]9000", bad},     {"[[::1]]:9000", bad}, {"a]:9000", bad},
        {"a9000", bad},         {":9000", bad},        {"a:", bad},
        {"a:9x", bad},          {"a:+9", bad},         {"my host:9000", bad},
    };
    for (const auto& [text, expected] : cases) {
        SCOPED_TRACE(text);
        std::string error;
        const std::optional<OscTarget> target = ParseOscTarget(text, error);
        EXPECT_EQ(target ? ToString(*target) : "refused", expected.empty() ? text : "refused");
        EXPECT_TRUE(expected.empty() || error.starts_with("OSC target \"" + text + "\" ")) << error;
        EXPECT_NE(error.find(expected), std::string::npos) << error;
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
    EXPECT_EQ(settings.value(QStringLiteral("osc/target")).toString(),
              QStringLiteral("[::1]:7000"));
    EXPECT_EQ(ToString(LoadOscTarget(settings)), "[::1]:7000");
    for (const char* stored : {"", "nonsense", "example.org:0"}) {
        settings.setValue(QStringLiteral("osc/target"), QString::fromUtf8(stored));
        EXPECT_EQ(ToString(LoadOscTarget(settings)), "127.0.0.1:9000") << stored;
    }
}

// Replaces the text of the widget of that name as a user does: select all, erase, type.
void Type(QDialog& dialog, const char* name, const char* text)
{
    QWidget* widget = dialog.findChild<QWidget*>(QString::fromUtf8(name));
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(widget, Qt::Key_Backspace);
    QTest::keyClicks(widget, QString::fromUtf8(text));
}

TEST(OscTarget, TheDialogShowsTheTargetAndAllowsOkOnlyForAHostAndPortThatRead)
{
    const OscSettingsDialog empty({"", 9000});
    EXPECT_FALSE(empty.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
    OscSettingsDialog dialog({"example.org", 8000});
    EXPECT_EQ(ToString(dialog.Target()), "example.org:8000");
    const QPushButton* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    const struct {
        const char *host, *port, *target;
        bool ok;
    } cases[] = {{"::1", "65535", "[::1]:65535", true},
                 {"a", "1", "a:1", true},
                 {"a", "0", "a:1", true},
                 {"a", "65536", "a:6553", true},
                 {"my host", "9", "my host:9", false},
                 {"", "9", ":9", false}};
    for (const auto& c : cases) {  // a port the box refuses leaves the one before
        Type(dialog, "host", c.host);
        Type(dialog, "port", c.port);
        EXPECT_EQ(ToString(dialog.Target()), c.target);
        EXPECT_EQ(ok->isEnabled(), c.ok) << c.target;
    }
}

TEST(OscAddress, JoinsTheComponentsUnderTheRoot)
{
    EXPECT_EQ(OscAddressOf({}), "/TRVX/");
    EXPECT_EQ(OscAddressOf({"ID3", "SetVal", "Ctl7"}), "/TRVX/ID3/SetVal/Ctl7");
}

const QTime kTime(12, 34, 56, 789);

TEST(OscMonitor, ShowsTheNewestFirstAndErrorsInRedInRowsNobodyEdits)
{
    OscMonitor monitor;
    monitor.AddSent(QStringLiteral("/TRVX/a"), 1, kTime);
    monitor.AddError(QStringLiteral("Could not send"), kTime);
    monitor.AddSent(QStringLiteral("/TRVX/b"), -5, kTime);
    const QTableWidget& table = *monitor.findChild<QTableWidget*>();
    QStringList shown;  // the headers, then each cell, marked when red
    for (int row = -1; row < table.rowCount(); ++row) {
        for (int column = 0; column < table.columnCount(); ++column) {
            const QTableWidgetItem* item =
                row < 0 ? table.horizontalHeaderItem(column) : table.item(row, column);
            shown << item->text() + (item->foreground().color() == Qt::red ? u"!"_s : QString());
        }
    }
    EXPECT_EQ(shown.join(QLatin1Char('|')),
              QStringLiteral("Address|Value|Time|/TRVX/b|-5|12:34:56.789|Could not send!|!|"
                             "12:34:56.789!|/TRVX/a|1|12:34:56.789"));
    EXPECT_EQ(monitor.AddressAt(1) + monitor.ValueAt(2), QStringLiteral("Could not send1"));
    EXPECT_EQ(table.editTriggers(), QAbstractItemView::NoEditTriggers);
}

TEST(OscMonitor, KeepsTheLast200RowsUntilCleared)
{
    OscMonitor monitor;
    monitor.show();
    for (int value = 0; value < 200; ++value)
        monitor.AddSent(QStringLiteral("/TRVX/a"), value, kTime);
    EXPECT_EQ(monitor.Count(), 200);
    EXPECT_EQ(monitor.ValueAt(199), u"0"_s);
    monitor.AddSent(QStringLiteral("/TRVX/a"), 200, kTime);
    EXPECT_EQ(monitor.Count(), 200);
    EXPECT_EQ(monitor.ValueAt(0) + u' ' + monitor.ValueAt(199), u"200 1"_s);
    QTest::mouseClick(monitor.findChild<QPushButton*>(QStringLiteral("clear")), Qt::LeftButton);
    EXPECT_EQ(monitor.Count(), 0);
}

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
