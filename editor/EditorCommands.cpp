// The editor's command table: each command's handler and the rule that
// enables its menu item, and the handlers that edit the layout.
#include "CommandIds.h"
#include "ModuleEntry.h"
#include "ModuleResources.h"
#include "PropertyCommands.h"
#include "SearchCommand.h"
#include "TVornOSCEditor.h"
#include "document/ControlClipboard.h"
#include "document/ControlTables.h"
#include "document/LayoutTools.h"
#include "host/Messages.h"
#include "host/Toolkit.h"
#include "view/QtWindowHandle.h"

#include <QApplication>
#include <QCursor>
#include <QMenu>

#include <iterator>
#include <memory>

namespace {

using Handler = void (TVornOSCEditor::*)();
using Rule = bool (TVornOSCEditor::*)() const;

struct Command {
    int id;
    Handler handler;
    Rule enabled;      // null: always enabled
    const char* step;  // what undo calls the change it makes; null: it changes nothing
};

using E = TVornOSCEditor;
constexpr Command kCommands[] = {
    {ID_FILE_SAVE, &E::OnFileSave, &E::CanSave, nullptr},
    {ID_FILE_SAVE_AS, &E::OnFileSaveAs, nullptr, nullptr},
    {ID_EDIT_UNDO, &E::OnEditUndo, &E::CanUndo, nullptr},
    {ID_EDIT_REDO, &E::OnEditRedo, &E::CanRedo, nullptr},
    {ID_EDIT_CUT, &E::OnEditCut, &E::HasSelection, "Cut"},
    {ID_EDIT_COPY, &E::OnEditCopy, &E::HasSelection, nullptr},
    {ID_EDIT_PASTE, &E::OnEditPaste, &E::ClipboardHasControls, "Paste"},
    {ID_EDIT_INSERT, &E::OnEditInsert, &E::ClipboardHasControls, "Insert"},
    {ID_EDIT_INSERTPARAMETERS, &E::OnEditInsert, &E::ClipboardHasControls, "Insert Parameters"},
    {ID_EDIT_CLEAR, &E::OnEditClear, &E::HasSelection, "Delete"},
    {ID_OSCEDITOR_SELECTALL, &E::OnOsceditorSelectall, &E::PageHasControls, nullptr},
    {ID_OSCEDITOR_PROPERTIES, &E::OnOsceditorProperties, &E::HasOneSelected, "Properties"},
    {ID_OSCEDITOR_TOFRONT, &E::OnOsceditorTofront, &E::PageHasControls, "Bring to Front"},
    {ID_OSCEDITOR_TOBACK, &E::OnOsceditorToback, &E::PageHasControls, "Send to Back"},
    {ID_OSCEDITOR_ADDPAGE, &E::OnOsceditorAddpage, nullptr, "Add Page"},
    {ID_OSCEDITOR_REMOVEPAGE, &E::OnOsceditorRemovepage, &E::HasSeveralPages, "Remove Page"},
    {ID_LEFT, &E::OnLeft, nullptr, "Move"},
    {ID_RIGHT, &E::OnRight, nullptr, "Move"},
    {ID_UP, &E::OnUp, nullptr, "Move"},
    {ID_DOWN, &E::OnDown, nullptr, "Move"},
    {ID_CTLLEFT, &E::OnCtlleft, nullptr, "Resize"},
    {ID_CTLRIGHT, &E::OnCtlright, nullptr, "Resize"},
    {ID_CTLUP, &E::OnCtlup, nullptr, "Resize"},
    {ID_CTLDOWN, &E::OnCtldown, nullptr, "Resize"},
    {ID_OSCEDITOR_EXPORTASTOUCHOSCFILE, &E::OnOscEditorExportAsTouchOSCFile, nullptr, nullptr},
    {ID_OSCEDITOR_EXPORTASLEMURFILE, &E::OnOscEditorExportAsLemurFile, nullptr, nullptr},
    {ID_OSCEDITOR_PAGEPROPERTIES, &E::OnOsceditorPageproperties, nullptr, "Page Properties"},
    {ID_OSCTESTMODE, &E::OnOsctestmode, nullptr, nullptr},  // checked in test mode
    {ID_OSCEDITOR_SEARCHANDREPLACE, &E::OnOsceditorSearchandreplace, nullptr, "Replace"},
    {ID_HELP_FINDER, &E::OnHelpFinder, nullptr, nullptr},
    {ID_SETCOLOR_RED, &E::OnSetcolorRed, &E::HasSelection, "Color"},
    {ID_SETCOLOR_GREEN, &E::OnSetcolorGreen, &E::HasSelection, "Color"},
    {ID_SETCOLOR_BLUE, &E::OnSetcolorBlue, &E::HasSelection, "Color"},
    {ID_SETCOLOR_YELLOW, &E::OnSetcolorYellow, &E::HasSelection, "Color"},
    {ID_SETCOLOR_PURPLE, &E::OnSetcolorPurple, &E::HasSelection, "Color"},
    {ID_SETCOLOR_GRAY, &E::OnSetcolorGray, &E::HasSelection, "Color"},
    {ID_SETCOLOR_ORANGE, &E::OnSetcolorOrange, &E::HasSelection, "Color"},
    {ID_SETCOLOR_BROWN, &E::OnSetcolorBrown, &E::HasSelection, "Color"},
    {ID_SETCOLOR_PINK, &E::OnSetcolorPink, &E::HasSelection, "Color"},
    {ID_OSCEDITOR_SELECTIONPROPERTIES, &E::OnOsceditorSelectionProperties, &E::HasSeveralSelected,
     "Properties of Selection"},
    {ID_EDIT_DUPLICATE, &E::OnEditDuplicate, &E::HasSelection, "Duplicate"},
    {ID_EDIT_DUPLICATEARRAY, &E::OnEditDuplicateArray, &E::HasSelection, "Duplicate as Array"},
    {ID_ALIGN_LEFT, &E::OnAlignLeft, &E::HasSeveralSelected, "Align"},
    {ID_ALIGN_RIGHT, &E::OnAlignRight, &E::HasSeveralSelected, "Align"},
    {ID_ALIGN_TOP, &E::OnAlignTop, &E::HasSeveralSelected, "Align"},
    {ID_ALIGN_BOTTOM, &E::OnAlignBottom, &E::HasSeveralSelected, "Align"},
    {ID_ALIGN_CENTRE, &E::OnAlignCentre, &E::HasSeveralSelected, "Align"},
    {ID_ALIGN_MIDDLE, &E::OnAlignMiddle, &E::HasSeveralSelected, "Align"},
    {ID_DISTRIBUTE_ACROSS, &E::OnDistributeAcross, &E::HasThreeSelected, "Distribute"},
    {ID_DISTRIBUTE_DOWN, &E::OnDistributeDown, &E::HasThreeSelected, "Distribute"},
    {ID_SAME_WIDTH, &E::OnSameWidth, &E::HasSeveralSelected, "Same Width"},
    {ID_SAME_HEIGHT, &E::OnSameHeight, &E::HasSeveralSelected, "Same Height"},
    {ID_VIEW_GRID, &E::OnViewGrid, nullptr, nullptr},  // checked while shown
    {ID_VIEW_SNAP, &E::OnViewSnap, nullptr, nullptr},  // checked while on
    {ID_VIEW_ZOOMIN, &E::OnViewZoomIn, nullptr, nullptr},
    {ID_VIEW_ZOOMOUT, &E::OnViewZoomOut, nullptr, nullptr},
    {ID_VIEW_ACTUALSIZE, &E::OnViewActualSize, nullptr, nullptr},
    {ID_VIEW_FITPAGE, &E::OnViewFitPage, nullptr, nullptr},
    {ID_GRID_LEFT, &E::OnGridLeft, nullptr, "Move"},
    {ID_GRID_RIGHT, &E::OnGridRight, nullptr, "Move"},
    {ID_GRID_UP, &E::OnGridUp, nullptr, "Move"},
    {ID_GRID_DOWN, &E::OnGridDown, nullptr, "Move"},
};

const Command* FindCommand(int id)
{
    for (const Command& command : kCommands) {
        if (command.id == id)
            return &command;
    }
    return nullptr;
}

}  // namespace

bool TVornOSCEditor::OnCommand(int id)
{
    const Command* command = FindCommand(id);
    if (command == nullptr)
        return false;
    if (command->step != nullptr)
        RunStep(command->step, command->handler);
    else
        (this->*command->handler)();
    return true;
}

void TVornOSCEditor::OnInitMenuPopup(QMenu* menu, int, bool)
{
    for (QAction* action : menu->actions()) {
        if (QMenu* submenu = action->menu()) {
            OnInitMenuPopup(submenu, 0, false);
            continue;
        }
        const Command* command = FindCommand(action->data().toInt());
        if (command == nullptr)
            continue;
        action->setEnabled(command->enabled == nullptr || (this->*command->enabled)());
        if (command->id == ID_OSCTESTMODE)
            action->setChecked(view.testMode != 0);
        else if (command->id == ID_VIEW_GRID)
            action->setChecked(view.showGrid != 0);
        else if (command->id == ID_VIEW_SNAP)
            action->setChecked(view.snapToGrid != 0);
        else if (command->id == ID_EDIT_UNDO)
            action->setText(QStringLiteral("&Undo %1").arg(QString::fromStdString(history.UndoName())).trimmed());
        else if (command->id == ID_EDIT_REDO)
            action->setText(QStringLiteral("R&edo %1").arg(QString::fromStdString(history.RedoName())).trimmed());
    }
}

bool TVornOSCEditor::CanSave() const
{
    return modified != 0 && layoutPath[0] != '\0' && std::string_view(layoutPath) != "New";
}

bool TVornOSCEditor::HasSelection() const
{
    return project.GetNumSelected() >= 1;
}

bool TVornOSCEditor::HasOneSelected() const
{
    return project.GetNumSelected() == 1;
}

bool TVornOSCEditor::ClipboardHasControls() const
{
    return !GetControlClipboard()->empty();
}

bool TVornOSCEditor::PageHasControls() const
{
    return project.GetNumControls() != 0;
}

bool TVornOSCEditor::HasSeveralPages() const
{
    return project.pages.size() >= 2;
}

bool TVornOSCEditor::HasSeveralSelected() const
{
    return project.GetNumSelected() >= 2;
}

bool TVornOSCEditor::HasThreeSelected() const
{
    return project.GetNumSelected() >= 3;
}

void TVornOSCEditor::MarkChangedAndRepaint()
{
    modified = 1;
    view.update();
}

void TVornOSCEditor::OnEditCut()
{
    project.Cut();
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnEditCopy()
{
    project.Copy();
    view.update();
}

void TVornOSCEditor::OnEditPaste()
{
    OSCPage& page = *project.CurrentPage();
    const std::size_t before = page.controls.size();
    project.Paste();
    // Pasted and inserted controls come in front; with the grid on they land on it.
    if (view.snapToGrid != 0 && page.controls.size() > before) {
        SnapFrontControls(page, static_cast<int>(page.controls.size() - before),
                          TVornOSCView::gridStep, project.GetScreenW(), project.GetScreenH());
    }
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnEditInsert()
{
    OSCPage& page = *project.CurrentPage();
    const std::size_t before = page.controls.size();
    OnEditPaste();
    const std::size_t inserted = page.controls.size() - before;
    if (inserted == 0)
        return;
    // The keys that follow act on what was just inserted, in front of the page.
    page.UnselectAll();
    for (std::size_t i = 0; i < inserted; ++i)
        page.controls[i]->selected = 1;
}

void TVornOSCEditor::OnEditClear()
{
    project.Clear();
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnOsceditorSelectall()
{
    project.SelectAll();
    view.update();
}

void TVornOSCEditor::OnOsceditorTofront()
{
    project.ToFront();
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnOsceditorToback()
{
    project.ToBack();
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnLeft()
{
    project.ShiftLeft(1);
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnRight()
{
    project.ShiftRight(1);
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnUp()
{
    project.ShiftUp(1);
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnDown()
{
    project.ShiftDown(1);
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnCtlleft()
{
    project.ResizeW(-1, host);
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnCtlright()
{
    project.ResizeW(1, host);
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnCtlup()
{
    project.ResizeH(-1, host);
    MarkChangedAndRepaint();
}

void TVornOSCEditor::OnCtldown()
{
    project.ResizeH(1, host);
    MarkChangedAndRepaint();
}

void TVornOSCEditor::SetColorOfSelection(int color)
{
    project.SetColor(color);
    modified = 1;
    update();
    view.update();
}

void TVornOSCEditor::OnSetcolorRed()
{
    SetColorOfSelection(0);
}

void TVornOSCEditor::OnSetcolorGreen()
{
    SetColorOfSelection(1);
}

void TVornOSCEditor::OnSetcolorBlue()
{
    SetColorOfSelection(2);
}

void TVornOSCEditor::OnSetcolorYellow()
{
    SetColorOfSelection(3);
}

void TVornOSCEditor::OnSetcolorPurple()
{
    SetColorOfSelection(4);
}

void TVornOSCEditor::OnSetcolorGray()
{
    SetColorOfSelection(kGray);
}

void TVornOSCEditor::OnSetcolorOrange()
{
    SetColorOfSelection(6);
}

void TVornOSCEditor::OnSetcolorBrown()
{
    SetColorOfSelection(7);
}

void TVornOSCEditor::OnSetcolorPink()
{
    SetColorOfSelection(8);
}

void TVornOSCEditor::OnOsctestmode()
{
    view.testMode = view.testMode != 0 ? 0 : 1;
    view.update();
}

void TVornOSCEditor::OnOsceditorProperties()
{
    const HoldInstance resources;
    switch (EditControlProperties(project, runDialog)) {
        case ControlPropertiesOutcome::kEditPage:
            OnOsceditorPageproperties();
            return;
        case ControlPropertiesOutcome::kUnchanged:
            return;
        case ControlPropertiesOutcome::kChanged:
            MarkChangedAndRepaint();
            return;
    }
}

void TVornOSCEditor::OnOsceditorSelectionProperties()
{
    const HoldInstance resources;
    if (EditSelectionProperties(project, runDialog) == ControlPropertiesOutcome::kChanged)
        view.update();
}

void TVornOSCEditor::OnOsceditorPageproperties()
{
    const PagePropertiesOutcome outcome = EditPageProperties(project, runDialog);
    if (!outcome.modified)
        return;
    if (outcome.renamed)
        UpdateListbox();
    modified = 1;
    FitViewToScreen();
}

void TVornOSCEditor::FitViewToScreen()
{
    // The screen may have changed: the canvas starts again at its origin.
    view.scrollX = view.scrollXMax = view.scrollY = view.scrollYMax = 0;
    view.setGeometry(200, 0, view.Zoomed(project.GetScreenW()), view.Zoomed(project.GetScreenH()));
    PositionOSCView(width(), height());
    view.update();
    update();
}

void TVornOSCEditor::OnOsceditorSearchandreplace()
{
    if (!RunSearchAndReplace(project, runDialog))
        return;
    modified = 1;
    update();
    view.update();
}

void TVornOSCEditor::OnHelpFinder()
{
    // The application shows help, when it has any, for the module's topic.
    QCoreApplication* application = QCoreApplication::instance();
    if (qobject_cast<QApplication*>(application) == nullptr)
        return;
    HostRequest request;
    request.words[0] = kRequestHelpTopic;
    request.words[1] = kHelpTopic;
    toolkit::SendMessage(HandleOf(application), WM_OSC_HOSTREQUEST, 0,
                         reinterpret_cast<std::intptr_t>(&request));
}

void TVornOSCEditor::RMBMenu()
{
    const HoldInstance resources;
    if (parentWidget() != nullptr)
        parentWidget()->raise();
    const QPoint cursor = QCursor::pos();
    const std::unique_ptr<QMenu> menu(LoadMenu(kEditorMenuId));
    if (menu == nullptr)
        return;
    OnInitMenuPopup(menu.get(), 0, false);
    if (QAction* chosen = menu->exec(cursor))
        OnCommand(chosen->data().toInt());
}
