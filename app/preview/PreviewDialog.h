#pragma once

#include "PreviewPlace.h"
#include "app/osc/ListenPlaceDialog.h"

// Edits whether the phone preview is served, and where.
class PreviewDialog : public ListenPlaceDialog {
public:
    explicit PreviewDialog(const PreviewPlace& place, QWidget* parent = nullptr)
        : ListenPlaceDialog(tr("Phone Preview"),
                            tr("&Show the layout on phones and tablets on this network"), place.on,
                            place.host, place.port, parent)
    {
        // Both loopback addresses, for a browser on this computer.
        AcceptName(QStringLiteral("localhost"));
    }

    PreviewPlace Place() const { return {On(), Host(), Port()}; }
};
