// Undo and redo: each change a user makes is one step of the layout's history.
#include "TVornOSCEditor.h"

void TVornOSCEditor::RunStep(const char* name, Handler handler)
{
    if (stepStart_ && view.mouseDown != 0) {
        (this->*handler)();  // a key pressed during a drag joins the drag
        return;
    }
    BeginStep(name);
    (this->*handler)();
    EndStep();
}

void TVornOSCEditor::BeginStep(const char* name)
{
    EndStep();  // a drag whose release never came ends here
    stepStart_ = LayoutSnapshot::Of(project);
    stepName_ = name;
}

void TVornOSCEditor::EndStep()
{
    if (!stepStart_)
        return;
    LayoutChange change = LayoutChange::Between(*stepStart_, project);
    stepStart_.reset();
    if (change.ChangesLayout()) {
        const char* name = stepName_ != nullptr ? stepName_
                           : change.MovesOnly() ? "Move"
                                                : "Resize";
        history.Add(name, std::move(change));
    }
    modified = history.AtSavedState() ? 0 : 1;
}

void TVornOSCEditor::NoteSavedState()
{
    history.MarkSaved();
    modified = 0;
}

bool TVornOSCEditor::CanUndo() const
{
    // A drag in progress changes the layout under the history.
    return history.CanUndo() && view.mouseDown == 0;
}

bool TVornOSCEditor::CanRedo() const
{
    return history.CanRedo() && view.mouseDown == 0;
}

void TVornOSCEditor::OnEditUndo()
{
    if (!CanUndo())
        return;
    const std::uint8_t device = project.device, orientation = project.orientation;
    history.Undo(project);
    ShowRestored(device, orientation);
}

void TVornOSCEditor::OnEditRedo()
{
    if (!CanRedo())
        return;
    const std::uint8_t device = project.device, orientation = project.orientation;
    history.Redo(project);
    ShowRestored(device, orientation);
}

void TVornOSCEditor::ShowRestored(std::uint8_t device, std::uint8_t orientation)
{
    modified = history.AtSavedState() ? 0 : 1;
    UpdateListbox();
    if (project.device != device || project.orientation != orientation) {
        FitViewToScreen();
        return;
    }
    update();
    view.update();
}
