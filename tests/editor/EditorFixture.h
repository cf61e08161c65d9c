#pragma once

#include "TestHost.h"
#include "editor/DialogRunner.h"
#include "editor/TVornOSCEditor.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestFiles.h"

#include <QMessageBox>

#include <gtest/gtest.h>

#include <string>

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
    // The module's menu item of id after the editor's rules ran, as before a menu opens.
    QAction& Item(int id);
    // Presses button in the next message box that opens.
    static void AnswerNextMessageBox(QMessageBox::StandardButton button);

    TestBasics& basics = TheTestBasics();
    TestHostWindow hostWindow;
    TempFolder folder;
    TVornOSCEditor* editor = nullptr;
};

// The cases stored under key in data/editor.json; none at all fails the test.
nlohmann::json EditorCases(const char* key);

// Answers a save dialog by choosing path (empty: Cancel) after noting its
// settings in seen: "title|folder|name|filter|suffix|confirms".
DialogRunner Choosing(const std::string& path, std::string* seen = nullptr);

// Runs the dialog modally and plays a user on it once it is up, steps split by
// '|': "name=text" types text into the edit of that object name, over what it
// held, or into the combo box of that name, which selects the first item
// starting so; "OK" and "Cancel" press those buttons; any other step clicks the
// widget of that name. Then check, when given, looks at the dialog. A user who
// leaves the dialog open, as after clicking a disabled OK, cancels it.
DialogRunner Playing(const QString& script, std::function<void(QDialog&)> check = {});
bool OkEnabled(QDialog& dialog);
