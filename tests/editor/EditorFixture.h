#pragma once

#include "TestHost.h"
#include "editor/DialogRunner.h"
#include "editor/SearchMemory.h"
#include "editor/TVornOSCEditor.h"
#include "tests/support/TempFolder.h"
#include "tests/view/QtTestSupport.h"

#include <QEvent>
#include <QTimer>

#include <gtest/gtest.h>

#include <string>

// The cases stored under key in data/editor.json.
json EditorCases(const char* key);

// An editor opened through the module's entry in a frame of a test host, with
// the current folder, and the host's data folder in it, a temporary folder TEMP.
// A user sits at it: any menu or message box that comes up gets the keys and
// answers given for it, or else is closed.
class EditorTest : public ::testing::Test {
protected:
    EditorTest();
    ~EditorTest() override;

    // Opens another editor on path; null when the module refuses.
    TVornOSCEditor* Open(const char* path);
    // Sends a host request with the pointers its words 8 and 9 carry; its answer.
    std::intptr_t Request(std::intptr_t code, const void* word8 = nullptr,
                          const void* word9 = nullptr);
    // Lays out the case's "layout", then plays its "steps", each an action
    // and what it leaves.
    void PlayCase(const json& c);
    // Makes the editor's layout {"pages": names, "current", "controls" on
    // every page, "path", "modified", "memory": the search dialog's [search,
    // replace, inName, inCommand]} and the host's "saveAnswer" and
    // "titleAnswer"; the canvas shows all of an iPad page, TEMP is emptied.
    void Lay(const json& layout);
    // One action of the user or the host: "command NAME", "request NAME [PATH]",
    // "message NAME", "key KEYS", "click editor", "click list ROW [Ctrl]",
    // "double editor", "right KEYS" (a right click beside the canvas, then
    // keys into the menus it opens); "answer Yes|No" for the next message box,
    // "dialog SCRIPT" and "choose PATH" for the next dialogs (see Playing and
    // Choosing). On the canvas, in its pixels: "press X Y [Shift|Ctrl|Right]",
    // "release X Y [keys]", "move X Y", "drag X Y X2 Y2 [keys]", "double X Y",
    // "size W H" for its client area, "thumb X Y" for both scroll bars and
    // "bar h|v line+|line-|page+|page-".
    void Do(const std::string& step);
    // Checks the editor against wanted, key by key: see the keys in Expect.
    void Expect(const json& wanted);
    // The canvas's client area as painted now.
    QImage Paint();

    TestBasics& basics = TheTestBasics();
    TestWindow hostWindow;
    TempFolder folder;
    TVornOSCEditor* editor = nullptr;

private:
    // Runs a dialog and plays a user on it once it is up, steps split by '|':
    // "name=text" types text into the edit of that object name over what it
    // held, or into the combo box of that name, which selects the first item
    // starting so; "OK" and "Cancel" press those buttons; any other step
    // clicks the widget of that name. A user who leaves it open cancels it.
    DialogRunner Playing(const QString& script);
    // Answers a file dialog by choosing path, or Cancel for none, after noting
    // its title, folder, name, filters, suffix and whether it confirms.
    DialogRunner Choosing(const std::string& path);
    void Reply();
    void Mouse(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers keys);
    json Files() const;
    std::string Relative(std::string text) const;

    // What the canvas repaints.
    struct PaintedRegion : QObject {
        QRegion region;
        bool eventFilter(QObject*, QEvent* event) override;
    } painted_;
    QTimer user_;
    std::string menuKeys_;
    std::vector<bool> answers_;  // yes or no for the next message boxes
    json answer_, shown_ = json::array();
    Qt::MouseButtons held_;
    const std::filesystem::path startFolder_ = std::filesystem::current_path();
    const std::string search_ = Search, replace_ = Replace;
    const int inName_ = inName, inCommand_ = inCommand;
};
