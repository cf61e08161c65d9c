#pragma once

#include "formats/ImportLimits.h"

#include <string>
#include <string_view>

// The XML of a current TouchOSC file: inflated from a zlib stream, or the bytes
// as they stand when they already start as XML. Inflating stops at the limit.
// False with one line in error otherwise.
bool ToscXml(std::string_view bytes, std::string& xml, const ImportLimits& limits,
             std::string& error);
