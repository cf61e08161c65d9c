#pragma once

#include "TestHost.h"
#include "editor/TVornOSCEditor.h"
#include "tests/support/TempFolder.h"

#include <QMessageBox>

#include <gtest/gtest.h>

#include <string>

class QFileDialog;

// An editor opened through the module's entry in a frame of a test host,
// with the host's data folder in a temporary folder.
class EditorTest : public ::testing::Test {
protected:
    EditorTest();
    ~EditorTest() override;

    // Opens an editor on path (null: a new layout); null when the module refuses.
    TVornOSCEditor* Open(const char* path = nullptr);
    OSCControl& Add(int x, int y, int w, int h, bool selected = false, const char* name = "c");
    // Sends a command as the frame's menu does.
    void Command(int id);
    // Whether the module's menu item of id is enabled (checked) after the
    // editor's rules ran, as before a menu opens.
    bool Enabled(int id);
    bool Checked(int id);
    // Presses button in the next message box that opens.
    static void AnswerNextMessageBox(QMessageBox::StandardButton button);

    TestBasics& basics = TheTestBasics();
    TestHostWindow hostWindow;
    TempFolder folder;
    TVornOSCEditor* editor = nullptr;
};

// What a save dialog was set to when it opened.
struct SaveDialogSeen {
    std::string title, folder, name, filter, suffix;
    bool confirmsOverwrite = false;
};

// Answers a save dialog by choosing path (empty: Cancel) after noting its settings.
DialogRunner Choosing(const std::string& path, SaveDialogSeen* seen = nullptr);
