#pragma once

#include "OscTarget.h"

class QSettings;

// The OSC target kept between runs, as "HOST:PORT" under "osc/target". A stored value that does
// not read falls back to the default target.
OscTarget LoadOscTarget(QSettings& settings);
void SaveOscTarget(QSettings& settings, const OscTarget& target);

// Whether and where the application listens for OSC, under "osc/input/...".
OscInput LoadOscInput(QSettings& settings);
void SaveOscInput(QSettings& settings, const OscInput& input);
