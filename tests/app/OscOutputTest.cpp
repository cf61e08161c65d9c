// Where test mode sends, as HOST:PORT text, in the settings and in its dialog; the sender against
// a real receiver on a loopback port; and the list of what was sent.
#include "AppFixture.h"
#include "OscReceiver.h"
#include "app/osc/OscMonitor.h"
#include "app/osc/OscSender.h"
#include "app/osc/OscSettings.h"
#include "app/osc/OscSettingsDialog.h"
#include "tests/support/TestFiles.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QSettings>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTime>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace std::string_literals;

using namespace Qt::StringLiterals;
using Messages = std::vector<std::string>;

TEST(OscTarget, ReadsHostPortAndWritesTheSameTextBackOrTellsWhatToType)
{
    for (const auto& c : Cases(DATA_DIR "/osc.json", "targets")) {
        const std::string text = c[0], expected = c[1];
        SCOPED_TRACE(text);
        std::string error;
        const std::optional<OscTarget> target = ParseOscTarget(text, error);
        EXPECT_EQ(target ? ToString(*target) : error,
                  expected.empty() ? text : "OSC target \"" + text + "\" " + expected);
    }
}

TEST(OscTarget, TheSavedTargetAndInputLoadInTheNextRunAndATargetThatDoesNotReadLoadsTheDefault)
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
    // The input is off on port 8000 of every interface until chosen, then as chosen.
    const OscInput first = LoadOscInput(settings);
    EXPECT_EQ(std::make_tuple(first.on, first.host, first.port), std::make_tuple(false, ""s, 8000));
    SaveOscInput(settings, {true, "127.0.0.1", 9001});
    const OscInput next = LoadOscInput(settings);
    EXPECT_EQ(std::make_tuple(next.on, next.host, next.port),
              std::make_tuple(true, "127.0.0.1"s, 9001));
}

TEST(OscTarget, TheDialogShowsTheTargetAndAllowsOkOnlyForAHostAndPortThatRead)
{
    OscSettingsDialog dialog({"my host", 8000});
    const QPushButton* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("OSC Target"));  // the Settings item's own name
    EXPECT_EQ(ToString(dialog.Target()), "my host:8000");
    EXPECT_FALSE(ok->isEnabled());
    // Each field typed as a user does: select all, erase, type. A port the box refuses leaves the
    // one before.
    for (const auto& c : Cases(DATA_DIR "/osc.json", "dialog")) {
        SCOPED_TRACE(c.dump());
        for (const char* field : {"host", "port"}) {
            Retype(dialog.findChild<QWidget*>(QString::fromUtf8(field)),
                   QString::fromStdString(c[field]));
        }
        EXPECT_EQ(ToString(dialog.Target()), c["target"]);
        EXPECT_EQ(ok->isEnabled(), c["ok"]);
    }
}

TEST(OscSender, SendsEachValueAsOneInt32InOrderToTheTargetSetLastOrFailsNamingIt)
{
    OscReceiver first, second;
    OscSender sender({"127.0.0.1", first.Port()});
    std::string error;
    EXPECT_TRUE(sender.Send("/TRVX/", std::numeric_limits<std::int32_t>::min(), error)) << error;
    sender.SetTarget({"127.0.0.1", second.Port()});
    for (const std::int32_t value : {0, std::numeric_limits<std::int32_t>::max(), -1})
        EXPECT_TRUE(sender.Send("/TRVX/ID3/SetVal/Ctl7", value, error)) << error;
    EXPECT_EQ(second.WaitFor(3),
              (Messages{"/TRVX/ID3/SetVal/Ctl7 0", "/TRVX/ID3/SetVal/Ctl7 2147483647",
                        "/TRVX/ID3/SetVal/Ctl7 -1"}));
    // A stray message to the first would have come by now.
    EXPECT_EQ(first.WaitFor(1), Messages{"/TRVX/ -2147483648"});
    sender.SetTarget({"no-such-host.invalid", 9000});
    EXPECT_FALSE(sender.Send("/TRVX/a", 1, error));
    EXPECT_NE(error.find("no-such-host.invalid:9000"), std::string::npos) << error;
}

TEST(OscMonitor, ShowsTheLast200RowsInAndOutNewestFirstAndErrorsInRedInRowsNobodyEditsUntilCleared)
{
    OscMonitor monitor;
    const QTime time(12, 34, 56, 789);
    monitor.AddSent(u"/TRVX/a"_s, 1, time);
    monitor.AddError(u"Could not send"_s, time);
    monitor.AddReceived(u"/in"_s, u"0.5"_s, time);
    monitor.AddSent(u"/TRVX/b"_s, -5, time);
    const QTableWidget& table = *monitor.findChild<QTableWidget*>();
    QStringList shown;  // the headers, then each cell, marked when red
    for (int row = -1; row < table.rowCount(); ++row) {
        for (int column = 0; column < table.columnCount(); ++column) {
            const QTableWidgetItem* item =
                row < 0 ? table.horizontalHeaderItem(column) : table.item(row, column);
            shown << item->text() + (item->foreground().color() == Qt::red ? u"!"_s : QString());
        }
    }
    EXPECT_EQ(shown.join(u'|'),
              u"Dir.|Address|Value|Time|out|/TRVX/b|-5|12:34:56.789|in|/in|0.5|12:34:56.789|"
              u"!|Could not send!|!|12:34:56.789!|out|/TRVX/a|1|12:34:56.789"_s);
    EXPECT_EQ(monitor.AddressAt(2) + monitor.ValueAt(3) + monitor.DirectionAt(1),
              u"Could not send1in"_s);
    EXPECT_EQ(table.editTriggers(), QAbstractItemView::NoEditTriggers);
    for (int rows = 5; rows <= 201; ++rows) {
        monitor.AddSent(u"/TRVX/c"_s, rows, time);
        ASSERT_EQ(monitor.Count(), std::min(rows, 200));
    }
    EXPECT_EQ(monitor.ValueAt(0) + u'|' + monitor.AddressAt(199), u"201|Could not send"_s)
        << "the oldest went";
    monitor.findChild<QPushButton*>(u"clear"_s)->click();
    EXPECT_EQ(monitor.Count(), 0);
}

}  // namespace
