#pragma once

#include "host/Messages.h"

#include <cstdint>
#include <optional>
#include <string>

class OscMonitor;
class OscSender;

// What test mode sends for a control the user operates, as a touch surface
// would: faders and knobs their value on every press, move and release,
// wherever the pointer went; toggles their new value on press; push buttons
// their maximum on press and their minimum when the press ends, wherever it
// ends. Labels send nothing.
std::optional<std::int32_t> ValueToSend(const OperatedControl& control);

// Why a control's address cannot be sent ("its OSC address is empty"), or
// nothing when it can: an OSC address starts with "/".
std::optional<std::string> UnsendableAddress(const char* command);

// Sends what test mode sends for an operated control and shows it in the
// monitor: the value sent, or in red why the control sends nothing.
void SendOperated(const OperatedControl& control, OscSender& sender, OscMonitor& monitor);
