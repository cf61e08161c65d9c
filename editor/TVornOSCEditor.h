#pragma once

#include "DialogRunner.h"
#include "document/OSCProject.h"
#include "host/CRect.h"
#include "view/TVornOSCView.h"

#include <QListWidget>
#include <QWidget>

#include <cstdint>
#include <string>

class QFileDialog;
class QMenu;
class VornBasics;
struct SplitPath;

// The editor window: the page list on the left, the canvas on the right, the
// layout it edits, and the commands of menu 1000 and the arrow keys.
class TVornOSCEditor : public QWidget {
    Q_OBJECT

public:
    TVornOSCEditor();

    QWidget* parentWnd = nullptr;  // the host window: parent of the file dialogs
    VornBasics* host = nullptr;
    CRect viewFrame;               // one pixel outside the view
    char layoutPath[256] = "New";  // "New" until the layout is first saved
    std::string newName;           // shown instead of "New" for a layout brought in
    std::uint8_t modified = 0;
    OSCProject project;
    QListWidget pageList;
    TVornOSCView view;
    // Where the frame last stood; while its size is empty, frames open in the
    // right half of the host window.
    std::int16_t frameLeft = 0;
    std::int16_t frameTop = 0;
    std::int16_t frameWidth = 0;
    std::int16_t frameHeight = 0;
    // Shows the property, search and file dialogs; tests play the user here.
    DialogRunner runDialog;

    // Loads the layout at path; a missing or foreign file leaves a new layout.
    void Init(QWidget* parent, const char* path);
    // Makes the window inside frame, covering rect, and shows it.
    void Create(QWidget* frame, const CRect& rect);

    void OnCreate();
    void OnSize(int type, int cx, int cy);
    void OnPaint();
    void OnRButtonDown(unsigned flags, CPoint point);
    void OnLButtonDblClk(unsigned flags, CPoint point);
    // Gives the items of menu the enable and check rules of their commands.
    void OnInitMenuPopup(QMenu* menu, int index, bool isSystemMenu);
    std::intptr_t WindowProc(unsigned message, std::intptr_t wParam, std::intptr_t lParam);
    // Runs the command id; false when the editor has none by that id.
    bool OnCommand(int id);

    void SetTitle();
    void PositionOSCView(int cx, int cy);
    void UpdateListbox();
    void RMBMenu();
    // Asks whether to save a changed layout before closing: 0 lets it close.
    std::uint8_t CanClose();

    void OnSelchangePage();
    void OnListBoxSelChange();

    void OnFileSave();
    void OnFileSaveAs();
    void OnEditCut();
    void OnEditCopy();
    void OnEditPaste();
    void OnEditClear();
    void OnOsceditorSelectall();
    void OnOsceditorProperties();
    void OnOsceditorTofront();
    void OnOsceditorToback();
    void OnOsceditorAddpage();
    void OnOsceditorRemovepage();
    void OnLeft();
    void OnRight();
    void OnUp();
    void OnDown();
    void OnCtlleft();
    void OnCtlright();
    void OnCtlup();
    void OnCtldown();
    void OnOscEditorExportAsTouchOSCFile();
    void OnOscEditorExportAsLemurFile();
    void OnOsceditorPageproperties();
    void OnOsctestmode();
    void OnOsceditorSearchandreplace();
    void OnHelpFinder();
    void OnSetcolorRed();
    void OnSetcolorGreen();
    void OnSetcolorBlue();
    void OnSetcolorYellow();
    void OnSetcolorPurple();
    void OnSetcolorGray();
    void OnSetcolorOrange();
    void OnSetcolorBrown();
    void OnSetcolorPink();

    // The enable rules of the command table.
    bool CanSave() const;
    bool HasSelection() const;
    bool HasOneSelected() const;
    bool ClipboardHasControls() const;
    bool PageHasControls() const;
    bool HasSeveralPages() const;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    std::intptr_t OnHostRequest(std::intptr_t* words);
    // Writes the layout to path as it stands, for a host's recovery copy.
    bool WriteCopy(const char* path);
    // Places and repaints the canvas for the project's screen, from its origin.
    void FitViewToScreen();
    void SetColorOfSelection(int color);
    void MarkChangedAndRepaint();
    // A save dialog set up as the file commands want, proposing a folder and
    // name; true with the chosen path's bytes on OK.
    bool RunSaveDialog(QFileDialog& dialog, const SplitPath& proposed, std::string& chosen);
    void Export(const char* subfolder, const char* extension, const char* filter, const char* title,
                void (OSCProject::*exporter)(VornBasics*, const char*));
    bool AcceptablePath(const std::string& path);
    void SetCurSel(int index);
    int GetCurSel() const;
};
