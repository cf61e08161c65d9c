#pragma once

#include "ListenPlaceDialog.h"
#include "OscTarget.h"

// Edits whether test mode listens for OSC, and where.
class OscInputDialog : public ListenPlaceDialog {
public:
    explicit OscInputDialog(const OscInput& input, QWidget* parent = nullptr)
        : ListenPlaceDialog(tr("OSC Input"), tr("&Listen for OSC in test mode"), input.on,
                            input.host, input.port, parent)
    {
    }

    OscInput Input() const { return {On(), Host(), Port()}; }
};
