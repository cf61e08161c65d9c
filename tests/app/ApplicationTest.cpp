// The desktop application hosting the built module: test mode sending each control's own address,
// inserting controls, the layouts' windows, titles and keys, and what it remembers of layouts.
#include "AppFixture.h"
#include "app/desktop/FramePlaces.h"
#include "app/osc/OscMonitor.h"
#include "document/ControlClipboard.h"
#include "document/ControlTables.h"
#include "editor/CommandIds.h"
#include "host/Messages.h"

#include <QCoreApplication>
#include <QMenu>
#include <QHeaderView>
#include <QMenuBar>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTableWidget>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <filesystem>
#include <map>

namespace {

QMenu* MenuTitled(const QMainWindow& window, const QString& title)
{
    for (QAction* top : window.menuBar()->actions()) {
        if (top->text() == title)
            return top->menu();
    }
    return nullptr;
}

// Every item that can take a key: the menus', the frames' own and the module's.
void CollectItems(const QList<QAction*>& actions, std::vector<QAction*>& items)
{
    for (QAction* action : actions) {
        items.push_back(action);
        if (action->menu() != nullptr)
            CollectItems(action->menu()->actions(), items);
    }
}

// The Undo item's text, as its menu shows it when it opens.
std::string UndoItem(const QMainWindow& window)
{
    for (QAction* top : window.menuBar()->actions()) {
        Q_EMIT top->menu()->aboutToShow();
        for (const QAction* item : top->menu()->actions()) {
            if (item->data().toInt() == ID_EDIT_UNDO)
                return item->text().toStdString();
        }
    }
    return {};
}

TEST_F(AppTest, TestModeSendsEachControlsOwnAddressAsATouchSurfaceDoes)
{
    const nlohmann::json c = Cases(DATA_DIR "/app.json", "testMode")[0];
    ASSERT_TRUE(Open(WriteLayout("Surface.VornOsc", c["controls"])));
    // One address typed into the control's dialog, as a user gives it.
    const QPoint typedAt(c["typed"]["at"][0], c["typed"]["at"][1]);
    Mouse(QEvent::MouseButtonPress, typedAt, Qt::LeftButton);
    Mouse(QEvent::MouseButtonRelease, typedAt, Qt::NoButton);
    answers = {c["typed"]["answer"]};
    Pick(ID_OSCEDITOR_PROPERTIES);
    Pick(ID_OSCTESTMODE);
    // Each step a click [x, y] or a drag [x, y, x2, y2], released where it ends.
    for (const nlohmann::json& step : c["steps"]) {
        const QPoint at(step[0], step[1]);
        const QPoint end = step.size() == 4 ? QPoint(step[2], step[3]) : at;
        Mouse(QEvent::MouseButtonPress, at, Qt::LeftButton);
        if (end != at)
            Mouse(QEvent::MouseMove, end, Qt::LeftButton);
        Mouse(QEvent::MouseButtonRelease, end, Qt::NoButton);
    }
    Mouse(QEvent::MouseMove, {150, 120}, Qt::NoButton);
    QCoreApplication::sendPostedEvents();
    const auto sent = c["sent"].get<std::vector<std::string>>();
    EXPECT_EQ(receiver.WaitFor(sent.size()), sent);
    std::vector<std::string> monitor;  // newest first
    for (int row = 0; row < window->Monitor().Count(); ++row)
        monitor.push_back((window->Monitor().AddressAt(row) + u' ' + window->Monitor().ValueAt(row))
                              .trimmed()
                              .toStdString());
    EXPECT_EQ(monitor, c["monitor"].get<std::vector<std::string>>());
    EXPECT_TRUE(window->statusBar()->currentMessage().startsWith(QStringLiteral("Volume: ")))
        << window->statusBar()->currentMessage().toStdString();
}

TEST_F(AppTest,
       InsertNumbersControlsAfterTheirKindOnTheLayoutSelectsThemAndReadsParametersOnlyWhenTheyRead)
{
    window->NewLayout();
    for (int type = 0; type < kControlTypeCount; ++type)
        window->InsertControl(type);
    window->InsertControl(kFader);
    answers = {"Ok", "Save", "Inserted.VornOsc"};
    window->InsertParametersFrom(QStringLiteral(DATA_DIR "/parameters-without-place.json"));
    window->InsertParametersFrom(QStringLiteral(DATA_DIR "/parameters.json"));
    EXPECT_EQ(UndoItem(*window), "&Undo Insert Parameters");
    Frame().close();
    EXPECT_EQ(answered,
              (std::vector<std::string>{"The parameters in \u201c" DATA_DIR
                                        "/parameters-without-place.json\u201d were "
                                        "not inserted: in parameter 1, \"x\" is missing.",
                                        "Save the changes to \u201cNew\u201d before closing?"}));
    const ControlList controls = ControlsOfLayout(folder / "Inserted.VornOsc");
    ASSERT_EQ(controls.size(), 7u);
    EXPECT_STREQ(controls[0]->command, "/TRVX/ID2/SetVal/Ctl74");
    EXPECT_STREQ(controls[1]->name, "Fader 2");
    EXPECT_STREQ(controls[1]->command, "/TRVX/ID1/SetVal/Ctl6");
    for (std::size_t type = 0; type < kControlTypeCount; ++type) {
        EXPECT_EQ(controls[6 - type]->type, type);
        EXPECT_EQ(controls[6 - type]->name, ControlTypes[type] + std::string(" 1"));
        EXPECT_EQ(controls[6 - type]->controlNumber, type + 1);
        EXPECT_GE(controls[6 - type]->y, 40) << "below the title strip";
    }

    // Numbers follow the layout's own, not those of other layouts.
    Open(WriteLayout("Numbered.VornOsc",
                     {{{"at", {0, 50, 40, 40}}, {"type", "fader"}, {"name", "Fader 41"}},
                      {{"at", {50, 50, 40, 40}}, {"type", "fader"}, {"name", "Fader 9x"}},
                      {{"at", {100, 50, 40, 40}}, {"type", "knob"}, {"name", "Fader 99999"}}}));
    window->InsertControl(kFader);
    window->InsertControl(kKnob);
    EXPECT_EQ(UndoItem(*window), "&Undo Insert");
    // What was inserted is selected: Ctrl+D copies the knob alone.
    QApplication::setActiveWindow(window.get());
    Frame().Editor()->setFocus();
    QTest::keyClick(window.get(), Qt::Key_D, Qt::ControlModifier);
    window->InsertControl(kLabel);
    Frame().Send(WM_COMMAND, ID_EDIT_UNDO);  // an insert is a step of its own
    answers = {"Save"};
    Frame().close();
    const ControlList numbered = ControlsOfLayout(folder / "Numbered.VornOsc");
    ASSERT_EQ(numbered.size(), 6u);
    EXPECT_EQ(std::string(numbered[2]->name) + ", " + numbered[1]->name + ", " + numbered[0]->name,
              "Fader 42, Knob 1, Knob 2");
}

TEST_F(AppTest, OpenRecentListsTheLayoutsOpenedAndSavedLatestFirstAndForgetsThoseThatAreGone)
{
    const std::string first = CopyOfExample("First.VornOsc");
    const std::string second = CopyOfExample("Second.VornOsc");
    QMenu* recent = window->menuBar()->actions().front()->menu()->findChild<QMenu*>();
    Q_EMIT recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 1);
    EXPECT_FALSE(recent->actions().front()->isEnabled());
    Open(first);
    Open(second);
    window->NewLayout();
    answers = {"Third.VornOsc"};
    window->SaveLayout();
    const std::string third = folder / "Third.VornOsc";
    EXPECT_EQ(window->RecentFiles(),
              (QStringList{QString::fromStdString(third), QString::fromStdString(second),
                           QString::fromStdString(first)}));
    Q_EMIT recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 3);
    EXPECT_TRUE(recent->isEnabled());
    recent->actions().back()->trigger();
    EXPECT_EQ(Frame().LayoutPath().toStdString(), first);

    std::filesystem::remove(second);
    Q_EMIT recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 2) << "a layout that is gone is not offered";
    std::filesystem::remove(first);
    answers = {"Ok"};
    recent->actions().front()->trigger();  // First, opened latest
    EXPECT_EQ(answered, std::vector<std::string>{"\u201c<folder>/First.VornOsc\u201d is no longer "
                                                 "there; it has left Open Recent."});
    EXPECT_EQ(window->RecentFiles(), QStringList{QString::fromStdString(third)});
    EXPECT_EQ(window->Frames().size(), 4) << "nothing more opened";
}

TEST(FramePlaces, CascadedAndTiledFramesTakeTwoThirdsOfTheAreaAndStayInsideIt)
{
    const auto expectPlace = [](const nlohmann::json& c, const QRect& place) {
        EXPECT_EQ(nlohmann::json({place.x(), place.y(), place.width(), place.height()}), c["place"])
            << c;
    };
    const auto area = [](const nlohmann::json& c) {
        return QRect(c["area"][0], c["area"][1], c["area"][2], c["area"][3]);
    };
    for (const nlohmann::json& c : Cases(DATA_DIR "/app.json", "cascade"))
        expectPlace(c, CascadePlace(area(c), c["index"], c["step"]));
    for (const nlohmann::json& c : Cases(DATA_DIR "/app.json", "tile"))
        expectPlace(c, TilePlace(area(c), c["index"], c["count"]));
}

TEST_F(AppTest, LayoutsOpenWholeAsTheOthersAreAndTheWindowMenuListsCyclesTilesAndCascadesThem)
{
    Open(CopyOfExample("One.VornOsc"));
    Open(CopyOfExample("Two.VornOsc"));
    const QRect area = Frame().parentWidget()->rect();
    EXPECT_EQ(Frame().geometry(), area) << "the second fills the area as the first does";
    // Whole in the area, with room to work and the title bar showing.
    const auto expectWhole = [&area](const EditorFrame* frame, const char* after) {
        EXPECT_FALSE(frame->isMaximized()) << after;
        EXPECT_TRUE(area.contains(frame->geometry())) << after;
        EXPECT_GE(frame->width() * 3, area.width() * 2 - 2) << after;
        EXPECT_GE(frame->height() * 3, area.height() * 2 - 2) << after;
    };
    // The monitor below shows eight rows.
    const auto* monitor = window->Monitor().findChild<QTableWidget*>();
    EXPECT_GE(monitor->viewport()->height(), 8 * monitor->verticalHeader()->defaultSectionSize());
    QMenu* windows = MenuTitled(*window, QStringLiteral("&Window"));
    ASSERT_NE(windows, nullptr);
    const auto listed = [windows] {
        Q_EMIT windows->aboutToShow();
        std::vector<std::string> items;
        for (const QAction* item : windows->actions())
            items.push_back(item->text().toStdString() + (item->isChecked() ? " (here)" : ""));
        return items;
    };
    EXPECT_TRUE(Frame().isMaximized());
    EXPECT_EQ(listed(),
              (std::vector<std::string>{"&Tile", "&Cascade", "", "&Next Layout", "&Previous Layout",
                                        "", "&1 One", "&2 Two (here)"}));
    QTest::keyClick(window.get(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("One[*]"));
    EXPECT_TRUE(Frame().isMaximized());
    QTest::keyClick(window.get(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("Two[*]"));
    windows->actions()[6]->trigger();
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("One[*]"));
    windows->actions()[1]->trigger();
    QList<int> tops;
    for (const EditorFrame* frame : window->Frames()) {
        expectWhole(frame, "cascaded");
        tops.append(frame->y());
    }
    EXPECT_GE(std::abs(tops[1] - tops[0]), Frame().TitleHeight()) << "both titles show";
    window->NewLayout();
    expectWhole(&Frame(), "opened beside cascaded ones");
    EXPECT_EQ(Frame().y(), 2 * Frame().TitleHeight()) << "the next place of the cascade";
    windows->actions()[0]->trigger();
    for (const EditorFrame* frame : window->Frames()) {
        expectWhole(frame, "tiled");
        const QWidget* shown = frame->parentWidget()->childAt(frame->pos() + QPoint(4, 4));
        EXPECT_TRUE(shown == frame || frame->isAncestorOf(shown)) << "its title bar shows";
    }
}

TEST_F(AppTest, EachKeyHasOneItemAndTheKeysForClosingSavingAndDeletingDoWhatTheySay)
{
    Open(CopyOfExample("Keys.VornOsc"));
    std::vector<QAction*> items;
    CollectItems(window->menuBar()->actions(), items);
    CollectItems(Frame().systemMenu()->actions(), items);
    CollectItems(TheModuleMenu()->actions(), items);
    std::map<std::string, std::string> bound;
    for (const nlohmann::json& key : Cases(DATA_DIR "/app.json", "editorKeys"))
        bound[key] = "the editor's key";
    for (const QAction* item : items) {
        for (const QKeySequence& key : item->shortcuts()) {
            const std::string name = key.toString().toStdString();
            const auto [place, added] = bound.emplace(name, item->text().toStdString());
            EXPECT_TRUE(added || place->second == item->text().toStdString())
                << name << " is both " << place->second << " and " << item->text().toStdString();
        }
    }
    EXPECT_EQ(bound.at("Ctrl+D"), "Dupl&icate");

    const auto press = [this](QKeyCombination key) {
        // The offscreen platform does not give the keyboard back when a box closes, as a window
        // system does: the layout's editor takes it again, as after a click.
        if (QApplication::focusWidget() == nullptr && !window->Frames().isEmpty()) {
            QApplication::setActiveWindow(window.get());
            Frame().Editor()->setFocus();
        }
        QTest::keyClick(window.get(), key.key(), key.keyboardModifiers());
        QCoreApplication::processEvents();
    };
    const std::size_t count = ControlsOfLayout(folder / "Keys.VornOsc").size();
    Drag({64, 200}, {64, 200});  // selects Level 1
    press(Qt::CTRL | Qt::Key_D);  // a copy of it, which Delete takes again
    EXPECT_TRUE(answered.empty()) << "no question: nothing deleted";
    answers = {"No", "Yes"};
    press(QKeyCombination(Qt::Key_Delete));
    press(QKeyCombination(Qt::Key_Backspace));
    EXPECT_EQ(answered.size(), 2u);
    answers = {"Save"};
    press(Qt::CTRL | Qt::Key_W);
    EXPECT_TRUE(window->Frames().isEmpty());
    QMenu* file = window->menuBar()->actions().front()->menu();
    Q_EMIT file->aboutToShow();
    for (const QAction* item : file->actions()) {
        if (item->text() == QStringLiteral("&Close") || item->text() == QStringLiteral("&Save")) {
            EXPECT_FALSE(item->isEnabled()) << "nothing to close or save";
        }
    }
    EXPECT_EQ(ControlsOfLayout(folder / "Keys.VornOsc").size(), count);

    window->NewLayout();
    answers = {"Saved.VornOsc"};
    press(Qt::CTRL | Qt::Key_S);
    EXPECT_TRUE(answers.empty()) << "Save asked for a name";
    EXPECT_TRUE(std::filesystem::exists(folder / "Saved.VornOsc"));
    EXPECT_EQ(Frame().LayoutPath().toStdString(), folder / "Saved.VornOsc");
}

TEST_F(AppTest, TitlesMarkUnsavedChangesAndAboutNamesTheVersions)
{
    Open(CopyOfExample("Show.VornOsc"));
    // The frame's title, and the main window's as shown, which takes the maximized frame's.
    const auto titles = [this] {
        QCoreApplication::processEvents();
        return Frame().ShownTitle().toStdString() + " | " +
               window->windowHandle()->title().toStdString();
    };
    EXPECT_EQ(titles(), "Show | VornOSC - [Show]");
    window->InsertControl(kFader);
    EXPECT_EQ(titles(), "Show* | VornOSC - [Show*]");
    window->SaveLayout();
    EXPECT_EQ(titles(), "Show | VornOSC - [Show]");
    answers = {"Discard"};
    Drag({64, 200}, {74, 210});
    EXPECT_EQ(titles(), "Show* | VornOSC - [Show*]");
    Frame().close();
    std::sort(buttons.begin(), buttons.end());
    EXPECT_EQ(buttons, (std::vector<std::string>{"Cancel", "Don't Save", "Save"}));
    EXPECT_EQ(window->windowHandle()->title(), QStringLiteral("VornOSC"));

    const QString about = MainWindow::AboutText();
    for (const char* part : {"VornOSC 0.1\n", "Qt 6.", "libzip 1.", "liblo 0."})
        EXPECT_TRUE(about.contains(QString::fromUtf8(part))) << about.toStdString();
}

TEST_F(AppTest, EachLayoutReopensForTheDeviceItWasKeptForAndPathsAndFoldersAreTheUsers)
{
    // Started on nothing, a new layout is ready; on a name, the layout of the working folder.
    const std::filesystem::path working = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    window->Start({}, "");
    ASSERT_EQ(window->Frames().size(), 1);
    EXPECT_TRUE(Frame().IsNeverSaved());
    answers = {""};
    Pick(ID_FILE_SAVE_AS);
    const std::string documents =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
    EXPECT_EQ(fileFolders, std::vector<std::string>{documents + "/vornosc/OSC"});
    CopyOfExample("Phone.VornOsc");
    window->Start({"Phone.VornOsc"}, "");
    EXPECT_EQ(Frame().LayoutPath().toStdString(), folder / "Phone.VornOsc");
    EXPECT_EQ(Frame().Device(), 1) << "a layout never kept opens for the iPad";

    answers = {"device=iPhone/iPod Touch"};
    Pick(ID_OSCEDITOR_PAGEPROPERTIES);
    window->SaveLayout();
    CopyOfExample("Closed.VornOsc");
    Open(folder / "Closed.VornOsc");
    answers = {"device=iPhone/iPod Touch", "Save"};
    Pick(ID_OSCEDITOR_PAGEPROPERTIES);
    Frame().close();
    for (QMdiSubWindow* frame : window->Frames())
        delete frame;
    for (const std::string name : {"Phone.VornOsc", "Closed.VornOsc"}) {
        Open(folder / name);
        EXPECT_EQ(Frame().Device(), 0) << name;
        EXPECT_FALSE(Frame().IsModified()) << name;
    }
    answers = {""};
    QApplication::setActiveWindow(window.get());  // taken by the last box, as above
    QTest::keyClick(window.get(), Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(fileFolders.back(), folder.path().string()) << "Open starts beside the last layout";

    // A name that is not UTF-8 opens and saves under its own bytes.
    const std::string latin1 = CopyOfExample("Caf\xE9.VornOsc");
    window->Start({"Caf\xE9.VornOsc"}, "");
    answers = {"pageName=Renamed"};
    Pick(ID_OSCEDITOR_PAGEPROPERTIES);
    window->SaveLayout();
    EXPECT_EQ(Frame().ShownTitle().toStdString(), "Caf\uFFFD");
    EXPECT_NE(ReadWholeFile(latin1).value_or("").find("Renamed"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder / "Caf\uFFFD.VornOsc"));
    // A link is saved through, to a file that keeps its permissions.
    namespace fs = std::filesystem;
    const fs::perms privately = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(latin1, privately);
    fs::create_symlink("Caf\xE9.VornOsc", folder / "Link.VornOsc");
    Open(folder / "Link.VornOsc");
    answers = {"pageName=Linked"};
    Pick(ID_OSCEDITOR_PAGEPROPERTIES);
    window->SaveLayout();
    EXPECT_TRUE(fs::is_symlink(folder / "Link.VornOsc"));
    EXPECT_NE(ReadWholeFile(latin1).value_or("").find("Linked"), std::string::npos);
    EXPECT_EQ(fs::status(latin1).permissions(), privately);
    std::filesystem::current_path(working);
}

}  // namespace

TEST_F(AppTest, TheGridStepChosenInSettingsReachesEveryCanvasAndTheNextOnes)
{
    window->NewLayout();
    EXPECT_EQ(Frame().GridStep(), 10) << "the first start's step";
    window->ApplyGridStep(25);
    EXPECT_EQ(Frame().GridStep(), 25);
    EXPECT_EQ(Frame().GridStep(1), 25) << "a step under 2 is refused";
    Frame().GridStep(7);
    window->NewLayout();
    EXPECT_EQ(Frame().GridStep(), 25) << "a new layout takes the remembered step";
}
