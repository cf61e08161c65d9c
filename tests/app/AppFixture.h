#pragma once

#include "app/desktop/EditorFrame.h"
#include "app/desktop/MainWindow.h"
#include "app/desktop/ModuleLibrary.h"
#include "document/OSCProject.h"
#include "host/Messages.h"
#include "tests/osc/OscReceiver.h"
#include "tests/support/TempFolder.h"

#include <QMessageBox>

#include <gtest/gtest.h>

#include <memory>
#include <string>

// The bytes of the file at path; empty when there is none.
std::string Contents(const std::string& path);

// The application's main window with the built module loaded, sending test
// values to a receiver of the test's own, with settings and data kept apart.
class AppTest : public ::testing::Test {
protected:
    AppTest();
    ~AppTest() override;

    // A copy of the example layout in the test's folder.
    std::string CopyOfExample(const std::string& name);
    // The active editor's canvas, and what its host can ask of it: whether its
    // layout has unsaved changes, and the layout as it stands.
    QWidget& Canvas() const;
    bool Modified() const;
    std::unique_ptr<OSCProject> Layout() const;
    // Chooses path in the next file dialog that opens, or cancels it when empty.
    void AnswerFileDialog(const std::string& path);
    // Runs the module's menu item of command id as a user picking it would.
    void PickModuleCommand(int id);
    // Presses the button in the message boxes that open next, one per answer;
    // unanswered counts those still waiting for their box.
    void Answer(std::vector<QMessageBox::StandardButton> answers);
    // Drops the answers whose boxes never came.
    void CancelAnswers();
    std::shared_ptr<int> unanswered = std::make_shared<int>(0);
    std::shared_ptr<QStringList> answeredTexts = std::make_shared<QStringList>();

    EditorFrame& Frame() const;
    std::intptr_t Ask(HostRequest& request) const;

    TempFolder folder;
    OscReceiver receiver;
    std::unique_ptr<MainWindow> window;
};
