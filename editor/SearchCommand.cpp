#include "SearchCommand.h"

#include "SearchMemory.h"
#include "VornOscSearchAndReplace.h"
#include "document/OSCProject.h"

bool RunSearchAndReplace(OSCProject& project, const DialogRunner& run)
{
    VornOscSearchAndReplace dialog;
    dialog.searchText = QString::fromStdString(Search);
    dialog.replaceText = QString::fromStdString(Replace);
    dialog.inControlName = inName != 0;
    dialog.inControlCommand = inCommand != 0;
    const int result = run(dialog);

    // After Cancel the fields still hold what came from the memory.
    Search = dialog.searchText.toStdString();
    Replace = dialog.replaceText.toStdString();
    inName = dialog.inControlName;
    inCommand = dialog.inControlCommand;
    if (result != QDialog::Accepted)
        return false;
    project.SearchAndReplace(Search, Replace, inName != 0, inCommand != 0);
    return true;
}
