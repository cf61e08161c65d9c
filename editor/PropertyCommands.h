#pragma once

#include "DialogRunner.h"

class OSCProject;

enum class ControlPropertiesOutcome {
    kEditPage,   // nothing selected: the page's properties are edited instead
    kUnchanged,  // several selected, or the dialog was cancelled
    kChanged,    // the control took the dialog's values
};

// Edits the one selected control of the current page in OSCParameterEditorDlg.
// Used by the editor's Properties command and by a double click on a control.
ControlPropertiesOutcome EditControlProperties(OSCProject& project, const DialogRunner& run);

// Edits the selected controls of the current page, two or more, in
// OSCParameterEditorDlg: a field all of them share shows its value, the others
// show blank, and OK gives every one of them the fields the user changed.
ControlPropertiesOutcome EditSelectionProperties(OSCProject& project, const DialogRunner& run);

// What the editor window must do after the page dialog.
struct PagePropertiesOutcome {
    bool modified = false;  // OK was pressed: mark the layout changed, scroll the view home
    bool renamed = false;   // the page list shows an old name
};

// Edits the current page's name and the layout's device and orientation in
// OSCPageEditorDlg. Used by the Page Properties command, by a double click on
// the editor's own area and by Properties with nothing selected.
PagePropertiesOutcome EditPageProperties(OSCProject& project, const DialogRunner& run);
