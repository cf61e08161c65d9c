#include "ControlClipboard.h"

ControlList clipboard;

ControlList* GetControlClipboard()
{
    return &clipboard;
}

void ClearClipboard()
{
    clipboard.clear();
}

void ExternalPasteToClipboard(const std::vector<const _OSCParms*>& records)
{
    ClearClipboard();
    for (const _OSCParms* record : records) {
        if (record == nullptr)
            continue;
        auto control = std::make_unique<OSCControl>();
        control->SetOSCParms(record);
        clipboard.push_back(std::move(control));
    }
}
