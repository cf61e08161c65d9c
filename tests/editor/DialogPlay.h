#pragma once

#include "editor/DialogRunner.h"

#include <QString>

// Runs the dialog modally and plays a user on it once it is up, steps split by
// '|': "name=text" types text into the edit of that object name, over what it
// held, or into the combo box of that name, which selects the first item
// starting so; "OK" and "Cancel" press those buttons; any other step clicks the
// widget of that name. Then check, when given, looks at the dialog. A user who
// leaves the dialog open, as after clicking a disabled OK, cancels it.
DialogRunner Playing(const QString& script, std::function<void(QDialog&)> check = {});

bool OkEnabled(QDialog& dialog);
