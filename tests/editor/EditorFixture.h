#pragma once

#include "TestHost.h"
#include "editor/DialogRunner.h"
#include "editor/SearchMemory.h"
#include "editor/TVornOSCEditor.h"
#include "tests/support/TempFolder.h"
#include "tests/view/QtTestSupport.h"

#include <QEvent>
#include <QTimer>

#include <map>
#include <string>

#include <gtest/gtest.h>

// The cases stored under key in data/editor.json.
json EditorCases(const char* key);

// An editor opened through the module's entry in a frame of a test host; the
// current folder, with the host's data folder in it, is a temporary folder
// TEMP. A user sits at it: a menu or message box that comes up gets the keys
// or answer given for it, or else is closed.
class EditorTest : public ::testing::Test {
protected:
    EditorTest();
    ~EditorTest() override;

    // Lays out the case's "layout", then plays its "steps": [action, wanted].
    // Texts, paths and steps spell bytes that are not UTF-8 as \xHH.
    void PlayCase(const json& c);
    // Makes the layout {"pages": names, "current", "controls" on every page,
    // "path", "modified", "memory": [search, replace, inName, inCommand]} with
    // the host's answers "saveAnswer" and "titleAnswer"; the canvas shows all
    // of an iPad page; TEMP is emptied.
    void Lay(const json& layout);
    // An action: "command NAME", "request NAME [PATH]" ("request setdevice
    // N" with a device), "message NAME",
    // "key KEYS", "editor click", "editor double", "editor W H" (its size),
    // "list ROW [Ctrl]" (a click), "keep NAME" (remembers the layout as it
    // stands, for "as"), "write PATH" (a layout file), "open PATH"
    // (another editor), "right KEYS" (then KEYS into the menus that open),
    // "answer Yes|No" for the next message box, "wheel DX DY [Shift]" (a
    // turn in eighths of a degree, over the canvas), "dialog SCRIPT" (see Playing)
    // and "choose PATH" or "accept" (see Choosing) for the next dialogs. On the canvas, in
    // its pixels: "press X Y [Shift|Ctrl|Right]", "release X Y [keys]", "move
    // X Y", "drag X Y X2 Y2 [keys]", "double X Y", "size W H" for its client
    // area, "thumb X Y" and "bar h|v line+|line-|page+|page-" for its scroll bars,
    // "bar h|v menu AT ITEM" for the ITEM of a bar's own menu opened AT pixels along it.
    void Do(const std::string& step);
    // Checks what the editor shows against wanted, key by key (see Expect).
    void Expect(const json& wanted);
    QImage Paint();  // the canvas with its scroll bars

    TestBasics& basics = theTestBasics;
    TestWindow hostWindow;
    TempFolder folder;
    TVornOSCEditor* editor = nullptr;

private:
    // Runs a dialog with a user on it, steps split by '|': "name=text" types
    // text into the edit of that object name over what it held, or into the
    // combo box of that name, which selects the first item starting so; "OK"
    // and "Cancel" press those buttons; any other step clicks the widget of
    // that name. A user who leaves it open cancels it.
    DialogRunner Playing(const QString& script);
    // Answers a file dialog by choosing path, or Cancel for none, or OK on what
    // it proposes, after noting its title, folder, name, filters, suffix and
    // whether it confirms.
    DialogRunner Choosing(const std::string& path, bool asProposed = false);
    std::intptr_t Request(std::intptr_t code, const void* word8 = nullptr,
                          const void* word9 = nullptr, std::intptr_t word1 = 0);
    void Mouse(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers keys);
    void Reply();
    json Files() const;
    std::string Relative(std::string text) const;

    struct PaintedRegion : QObject {  // what the canvas repaints
        QRegion region;
        bool eventFilter(QObject*, QEvent* event) override;
    } painted_;
    QTimer user_;
    std::string keys_;      // for the next menus, or Y and N for message boxes
    std::string menuItem_;  // chosen by arrow keys in the next menu, before keys_
    // The layout as it stands: its file's bytes, the screen, the current page
    // and the selection.
    std::string StateOfLayout() const;

    json answer_, shown_ = json::array();
    std::map<std::string, std::string> kept_;  // states kept by name
    Qt::MouseButtons held_;
    const std::filesystem::path startFolder_ = std::filesystem::current_path();
    const std::string search_ = Search, replace_ = Replace;
    const int inName_ = inName, inCommand_ = inCommand;
};
