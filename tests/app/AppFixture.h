#pragma once

#include "app/desktop/EditorFrame.h"
#include "app/desktop/MainWindow.h"
#include "app/desktop/ModuleLibrary.h"
#include "editor/TVornOSCEditor.h"
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
    // The editor of the active frame. Its fields are read as the module keeps them.
    TVornOSCEditor& Editor() const;
    // Runs the module's menu item of command id as a user picking it would.
    void PickModuleCommand(int id);
    // Presses the button in the message boxes that open next, one per answer;
    // unanswered counts those still waiting for their box.
    void Answer(std::vector<QMessageBox::StandardButton> answers);
    // Drops the answers whose boxes never came.
    void CancelAnswers();
    std::shared_ptr<int> unanswered = std::make_shared<int>(0);
    std::shared_ptr<QStringList> answeredTexts = std::make_shared<QStringList>();

    TempFolder folder;
    OscReceiver receiver;
    std::unique_ptr<MainWindow> window;
};
