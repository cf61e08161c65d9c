#pragma once

#include "DialogRunner.h"
#include "document/EditHistory.h"
#include "document/OSCProject.h"
#include "host/CRect.h"
#include "view/TVornOSCView.h"

#include <QListWidget>
#include <QWidget>

#include <cstdint>
#include <optional>
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
    // The user's changes to the layout, to undo and redo; it also knows
    // whether the layout stands as last saved.
    EditHistory history;
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

    void OnEditUndo();
    void OnEditRedo();
    void OnFileSave();
    void OnFileSaveAs();
    void OnEditCut();
    void OnEditCopy();
    void OnEditPaste();
    void OnEditInsert();
    void OnEditClear();
    void OnOsceditorSelectall();
    void OnOsceditorProperties();
    void OnOsceditorSelectionProperties();
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
    // The layout tools.
    void OnEditDuplicate();
    void OnEditDuplicateArray();
    void OnAlignLeft();
    void OnAlignRight();
    void OnAlignTop();
    void OnAlignBottom();
    void OnAlignCentre();
    void OnAlignMiddle();
    void OnDistributeAcross();
    void OnDistributeDown();
    void OnSameWidth();
    void OnSameHeight();
    void OnViewGrid();
    void OnViewSnap();
    void OnViewZoomIn();
    void OnViewZoomOut();
    void OnViewActualSize();
    void OnViewFitPage();
    void OnGridLeft();
    void OnGridRight();
    void OnGridUp();
    void OnGridDown();

    // The enable rules of the command table.
    bool CanSave() const;
    bool CanUndo() const;
    bool CanRedo() const;
    bool HasSelection() const;
    bool HasOneSelected() const;
    bool ClipboardHasControls() const;
    bool PageHasControls() const;
    bool HasSeveralPages() const;
    bool HasSeveralSelected() const;
    bool HasThreeSelected() const;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    using Handler = void (TVornOSCEditor::*)();
    // Runs handler as one step of the history, named name; inside a drag it
    // joins the drag's step.
    void RunStep(const char* name, Handler handler);
    // A change of the user's runs from BeginStep to EndStep; without a name it
    // is a mouse edit, named for what it did.
    void BeginStep(const char* name);
    void EndStep();
    // Shows the layout as undo or redo left it.
    void ShowRestored(std::uint8_t device, std::uint8_t orientation);
    void NoteSavedState();
    // Writes the layout to its path; false, after saying why, when it could not.
    bool SaveToLayoutPath();
    // Shows the canvas at percent, placed and scrolled for it.
    void SetZoom(int percent);
    // Runs a tool on the selection; one that would leave the screen is
    // refused with message.
    void Arrange(bool (*tool)(OSCPage&, int, int, int), int how, const char* message);
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

    std::optional<LayoutSnapshot> stepStart_;  // the layout as the open step found it
    const char* stepName_ = nullptr;
};
