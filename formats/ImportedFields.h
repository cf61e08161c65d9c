#pragma once

#include <cstdint>
#include <string_view>

class ImportReport;
class OSCControl;

// Values read from other apps' files, put into the editor's fixed fields.

// Sets the address the control sends. One of the form /TRVX/ID<d>/SetVal/Ctl<c>
// also gives the host's device and control numbers it stands for.
void SetImportedAddress(OSCControl& control, std::string_view address, ImportReport& report);

// The number a file's text holds, 0 when it holds none.
double NumberIn(std::string_view text);

// Rounded to a whole number; clamped to the field, and counted, when it does not fit.
std::int16_t ImportedShort(double value, ImportReport& report);
std::int32_t ImportedLong(double value, ImportReport& report);

// The named colour that red, green and blue (0..255 each) look like: gray when
// nearly colourless or nearly black, otherwise the colour of its hue, so that a
// dark red stays red and a navy blue.
std::uint8_t ColorByHue(double red, double green, double blue);
