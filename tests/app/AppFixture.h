#pragma once

#include "OscReceiver.h"
#include "app/desktop/EditorFrame.h"
#include "app/desktop/MainWindow.h"
#include "document/ControlClipboard.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QEvent>
#include <QTimer>

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>

// The controls on the first page of the layout at path, the newest first.
ControlList ControlsOfLayout(const std::string& path);

// The menu of the module the tests load.
QMenu* TheModuleMenu();

// Where the application of process run keeps its recovery copies.
QString RecoveryFolder(qint64 run);

// Types text into a dialog's field as a user does: select all, erase, type.
void Retype(QWidget* field, const QString& text);

// The application's main window with the built module loaded, sending test values to a
// receiver of the test's own.
class AppTest : public ::testing::Test {
protected:
    AppTest();

    // A copy of the example layout in the test's folder.
    std::string CopyOfExample(const std::string& name);
    // A layout of one page holding controls (as tests/support/TestControls
    // writes them) in the test's folder.
    std::string WriteLayout(const std::string& name, const nlohmann::json& controls);
    // The active layout's canvas, and the mouse on it, at a point in its pixels.
    QWidget& Canvas() const;
    void Mouse(QEvent::Type type, QPoint at, Qt::MouseButtons held);
    void Drag(QPoint from, QPoint to);
    bool Open(const std::string& path) { return window->OpenLayout(QString::fromStdString(path)); }
    EditorFrame& Frame() const { return *window->ActiveFrame(); }
    // Runs the menu item of the module's command id as a user picking it would.
    void Pick(int id);

    TempFolder folder;
    OscReceiver receiver;
    std::unique_ptr<MainWindow> window;
    // The answers for the boxes and dialogs that open next, in order, each taken when its box
    // comes: a message box's is the name of its button ("Save"), a file dialog's a path in the
    // test's folder ("" cancels it), another dialog's "NAME=TEXT|..." for the fields it fills
    // before OK.
    std::deque<std::string> answers;
    std::vector<std::string> answered;     // the text of each box answered
    std::vector<std::string> buttons;      // the buttons of the last box answered, in order
    std::vector<std::string> fileFolders;  // where each file dialog answered started
    std::vector<std::string> fileNames;    // the name each file dialog answered proposed
    QTimer answering;
};
