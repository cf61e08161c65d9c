#pragma once

#include "SyncPlace.h"
#include "app/osc/ListenPlaceDialog.h"

// Edits whether touch apps on the network may add the active layout, and
// where they find it.
class SyncDialog : public ListenPlaceDialog {
public:
    explicit SyncDialog(const SyncPlace& place, QWidget* parent = nullptr)
        : ListenPlaceDialog(tr("Layout Sync"),
                            tr("&Let touch apps on this network add the active layout"), place.on,
                            place.host, place.port, parent)
    {
    }

    SyncPlace Place() const { return {On(), Host(), Port()}; }
};
