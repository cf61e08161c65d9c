#include "LayoutState.h"

#include "document/LayoutChange.h"
#include "document/OSCProject.h"
#include "host/Messages.h"

ValuesSet AnswerLayoutState(OSCProject& project, const std::intptr_t* words)
{
    ValuesSet set;
    // The host names a control as it last saw the layout; one gone since is left alone.
    if (const auto* value =
            reinterpret_cast<const ControlValue*>(words[kRequestControlValueWord])) {
        const bool pageExists = value->page >= 0 && value->page < std::ssize(project.pages);
        const OSCPage* page = pageExists ? project.pages[value->page].get() : nullptr;
        if (page != nullptr && value->control >= 0 && value->control < std::ssize(page->controls)) {
            page->controls[value->control]->value = value->value;
            set.controls = 1;
            set.onCurrentPage = page == project.CurrentPage();
        }
    }
    if (auto* snapshot = reinterpret_cast<LayoutSnapshot*>(words[kRequestSnapshotWord]))
        *snapshot = LayoutSnapshot::Of(project);
    return set;
}
