#pragma once

#include <functional>

class QDialog;

// Runs a filled dialog and returns its result (QDialog::Accepted for OK). The
// editor window passes one that shows it modally over itself; tests pass one
// that plays the user.
using DialogRunner = std::function<int(QDialog&)>;
