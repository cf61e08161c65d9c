// The desktop application hosting the built module: test-mode values reaching
// an OSC receiver, closing and quitting with changes, inserting controls, and
// reopening recent layouts.
#include "AppFixture.h"
#include "app/osc/OscMonitor.h"
#include "document/ControlClipboard.h"
#include "document/ControlTables.h"
#include "editor/CommandIds.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QStatusBar>

#include <fstream>

namespace {

using Messages = std::vector<std::pair<std::string, std::int32_t>>;

Messages Received(OscReceiver& receiver, std::size_t count)
{
    QCoreApplication::sendPostedEvents();
    Messages messages;
    for (const auto& message : receiver.WaitFor(count))
        messages.emplace_back(message.address, message.value);
    return messages;
}

void Mouse(QWidget& view, QEvent::Type type, QPoint at, Qt::MouseButtons held)
{
    QMouseEvent event(type, QPointF(at), view.mapToGlobal(QPointF(at)), Qt::LeftButton, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &event);
}

TEST_F(AppTest, InTestModeFaderAndToggleValuesArriveAsOscInTheOrderPlayed)
{
    ASSERT_TRUE(window->OpenLayout(QString::fromStdString(CopyOfExample("Demo.VornOsc"))));
    PickModuleCommand(ID_OSCTESTMODE);
    QWidget& view = Canvas();
    // Level 1 is a fader at (44, 170), 40 by 400, 0 to 127; Mute 1 a toggle at (20, 600).
    Mouse(view, QEvent::MouseButtonPress, {64, 171}, Qt::LeftButton);
    Mouse(view, QEvent::MouseMove, {64, 370}, Qt::LeftButton);
    Mouse(view, QEvent::MouseButtonRelease, {64, 569}, Qt::NoButton);
    Mouse(view, QEvent::MouseButtonPress, {40, 620}, Qt::LeftButton);
    Mouse(view, QEvent::MouseButtonRelease, {40, 620}, Qt::NoButton);
    const Messages expected = {{"/TRVX/ID1/SetVal/Ctl1", 127},
                               {"/TRVX/ID1/SetVal/Ctl1", 64},
                               {"/TRVX/ID1/SetVal/Ctl1", 0},
                               {"/TRVX/ID1/SetVal/Ctl17", 1}};
    EXPECT_EQ(Received(receiver, expected.size()), expected);
    EXPECT_EQ(window->Monitor().Count(), 4);
    EXPECT_EQ(window->Monitor().AddressAt(0), QStringLiteral("/TRVX/ID1/SetVal/Ctl17"));
    EXPECT_TRUE(window->statusBar()->currentMessage().startsWith(QStringLiteral("Level 1: ")))
        << window->statusBar()->currentMessage().toStdString();
}

TEST_F(AppTest, ClosingAChangedLayoutSavesDiscardsOrStaysOpenStillChanged)
{
    const std::string path = CopyOfExample("Show.VornOsc");
    const std::string original = Contents(path);
    const struct {
        QMessageBox::StandardButton answer;
        bool closes;
        bool written;
    } cases[] = {{QMessageBox::Cancel, false, false},
                 {QMessageBox::Discard, true, false},
                 {QMessageBox::Save, true, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.answer);
        ASSERT_TRUE(window->OpenLayout(QString::fromStdString(path)));
        window->InsertControl(kFader);
        Answer({c.answer});
        window->ActiveFrame()->close();
        EXPECT_EQ(window->Frames().size(), c.closes ? 0 : 1);
        EXPECT_EQ(Contents(path) != original, c.written);
        if (c.closes)
            continue;
        EXPECT_TRUE(Modified()) << "a cancelled close keeps the layout changed";
        PickModuleCommand(ID_FILE_SAVE);
        EXPECT_NE(Contents(path), original) << "Save is still there for it";
        std::ofstream(path, std::ios::binary) << original;
        window->ActiveFrame()->close();
    }
}

TEST_F(AppTest, QuitAsksEveryChangedLayoutAndStopsAtTheFirstCancel)
{
    window->OpenLayout(QString::fromStdString(CopyOfExample("A.VornOsc")));
    window->InsertControl(kKnob);
    window->OpenLayout(QString::fromStdString(CopyOfExample("B.VornOsc")));
    window->InsertControl(kKnob);
    Answer({QMessageBox::Discard, QMessageBox::Cancel});
    EXPECT_FALSE(window->close());
    EXPECT_EQ(window->Frames().size(), 1);
    Answer({QMessageBox::Discard});
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(window->Frames().isEmpty());
}

TEST_F(AppTest, InsertPutsEachKindOfControlOnAnEmptyPageAndABadParameterFileNothing)
{
    window->NewLayout();
    for (int type = 0; type < kControlTypeCount; ++type)
        window->InsertControl(type);
    const auto controls = [this] { return std::move(Layout()->pages[0]->controls); };
    const ControlList inserted = controls();
    ASSERT_EQ(inserted.size(), 5u);
    for (int type = 0; type < kControlTypeCount; ++type) {
        const OSCControl& control = *inserted[static_cast<std::size_t>(4 - type)];
        EXPECT_EQ(control.type, type);
        EXPECT_GE(control.y, 40) << "below the title strip";
    }
    EXPECT_TRUE(Modified());

    const std::string bad = folder / "bad.json";
    std::ofstream(bad) << R"([{"name": "Cutoff", "device": 2, "control": 74}])";
    Answer({QMessageBox::Ok});
    window->InsertParametersFrom(QString::fromStdString(bad));
    EXPECT_EQ(controls().size(), 5u);

    const std::string good = folder / "good.json";
    std::ofstream(good) << R"([{"name": "Cutoff", "device": 2, "control": 74, "x": 0, "y": 0,
        "width": 60, "height": 60, "min": 0, "max": 127, "type": "Knob"}])";
    window->InsertParametersFrom(QString::fromStdString(good));
    const ControlList withParameters = controls();
    ASSERT_EQ(withParameters.size(), 6u);
    EXPECT_STREQ(withParameters[0]->command, "/TRVX/ID2/SetVal/Ctl74");
}

TEST_F(AppTest, OpenRecentOffersTheLayoutsOpenedLatestFirst)
{
    const std::string first = CopyOfExample("First.VornOsc");
    const std::string second = CopyOfExample("Second.VornOsc");
    window->OpenLayout(QString::fromStdString(first));
    window->OpenLayout(QString::fromStdString(second));
    EXPECT_EQ(window->RecentFiles(),
              (QStringList{QString::fromStdString(second), QString::fromStdString(first)}));
    QMenu* recent = window->menuBar()->actions().front()->menu()->findChild<QMenu*>();
    ASSERT_NE(recent, nullptr);
    Q_EMIT recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 2);
    recent->actions().back()->trigger();
    EXPECT_EQ(window->Frames().size(), 3);
    EXPECT_EQ(Frame().LayoutPath().toStdString(), first);
}

}  // namespace
