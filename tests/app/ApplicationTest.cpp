// The desktop application hosting the built module: test-mode values reaching an OSC receiver,
// inserting controls, and reopening recent layouts.
#include "AppFixture.h"
#include "app/osc/OscMonitor.h"
#include "document/ControlClipboard.h"
#include "document/ControlTables.h"
#include "document/LayoutFile.h"
#include "editor/CommandIds.h"
#include "tests/support/FakeHost.h"

#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QStatusBar>

#include <filesystem>

namespace {

// The controls on the first page of the layout at path, the newest first.
ControlList ControlsOfLayout(const std::string& path)
{
    OSCProject layout;
    FakeHost host;
    EXPECT_EQ(ReadLayoutFile(ReadWholeFile(path).value_or(""), layout, &host), 0) << path;
    return layout.pages.empty() ? ControlList() : std::move(layout.pages[0]->controls);
}

void Mouse(QWidget& view, QEvent::Type type, QPoint at, Qt::MouseButtons held)
{
    QMouseEvent event(type, QPointF(at), view.mapToGlobal(QPointF(at)), Qt::LeftButton, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &event);
}

TEST_F(AppTest, InTestModeFaderAndToggleValuesArriveAsOscInTheOrderPlayed)
{
    ASSERT_TRUE(Open(CopyOfExample("Demo.VornOsc")));
    Pick(ID_OSCTESTMODE);
    QWidget* view = nullptr;
    for (QWidget* child : Frame().Editor()->findChildren<QWidget*>())
        view = child->inherits("TVornOSCView") ? child : view;
    ASSERT_NE(view, nullptr);
    // Level 1 is a fader at (44, 170), 40 by 400, 0 to 127; Mute 1 a toggle at (20, 600).
    Mouse(*view, QEvent::MouseButtonPress, {64, 171}, Qt::LeftButton);
    Mouse(*view, QEvent::MouseMove, {64, 370}, Qt::LeftButton);
    Mouse(*view, QEvent::MouseButtonRelease, {64, 569}, Qt::NoButton);
    Mouse(*view, QEvent::MouseButtonPress, {40, 620}, Qt::LeftButton);
    Mouse(*view, QEvent::MouseButtonRelease, {40, 620}, Qt::NoButton);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(receiver.WaitFor(4),
              (std::vector<std::string>{"/TRVX/ID1/SetVal/Ctl1 127", "/TRVX/ID1/SetVal/Ctl1 64",
                                        "/TRVX/ID1/SetVal/Ctl1 0", "/TRVX/ID1/SetVal/Ctl17 1"}));
    EXPECT_EQ(window->Monitor().Count(), 4);
    EXPECT_EQ(window->Monitor().AddressAt(0), QStringLiteral("/TRVX/ID1/SetVal/Ctl17"));
    EXPECT_TRUE(window->statusBar()->currentMessage().startsWith(QStringLiteral("Level 1: ")))
        << window->statusBar()->currentMessage().toStdString();
}

TEST_F(AppTest, InsertPutsEachTypeOfControlOnAnEmptyPageAndParametersFromAFileOnlyWhenItReads)
{
    window->NewLayout();
    for (int type = 0; type < kControlTypeCount; ++type)
        window->InsertControl(type);
    answers = {"Ok", "Save", "Inserted.VornOsc"};
    window->InsertParametersFrom(QStringLiteral(DATA_DIR "/parameters-without-place.json"));
    window->InsertParametersFrom(QStringLiteral(DATA_DIR "/parameters.json"));
    Frame().close();
    EXPECT_EQ(answered,
              (std::vector<std::string>{"The parameters in \u201c" DATA_DIR
                                        "/parameters-without-place.json\u201d were "
                                        "not inserted: in parameter 1, \"x\" is missing.",
                                        "Save the changes to \u201cNew\u201d before closing?"}));
    const ControlList controls = ControlsOfLayout(folder / "Inserted.VornOsc");
    ASSERT_EQ(controls.size(), 6u);
    EXPECT_STREQ(controls[0]->command, "/TRVX/ID2/SetVal/Ctl74");
    for (std::size_t type = 0; type < kControlTypeCount; ++type) {
        EXPECT_EQ(controls[5 - type]->type, type);
        EXPECT_GE(controls[5 - type]->y, 40) << "below the title strip";
    }
}

TEST_F(AppTest, OpenRecentOffersTheLayoutsOpenedLatestFirstAndToForgetOneThatIsGone)
{
    const std::string first = CopyOfExample("First.VornOsc");
    const std::string second = CopyOfExample("Second.VornOsc");
    Open(first);
    Open(second);
    EXPECT_EQ(window->RecentFiles(),
              (QStringList{QString::fromStdString(second), QString::fromStdString(first)}));
    QMenu* recent = window->menuBar()->actions().front()->menu()->findChild<QMenu*>();
    Q_EMIT recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 2);
    recent->actions().back()->trigger();
    EXPECT_EQ(Frame().LayoutPath().toStdString(), first);

    std::filesystem::remove(second);
    answers = {"Yes"};
    recent->actions().front()->trigger();
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(window->RecentFiles(), QStringList{QString::fromStdString(first)});
    EXPECT_EQ(window->Frames().size(), 3) << "nothing more opened";
}

}  // namespace
