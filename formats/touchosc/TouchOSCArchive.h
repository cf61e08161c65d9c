#pragma once

#include "formats/ImportLimits.h"

#include <cstddef>
#include <string>
#include <string_view>

// Creates (or replaces) the zip archive at path holding xml as its one entry
// "index.xml", deflated at level 9. Returns false when libzip fails; no
// archive is left behind then.
bool WriteTouchOSCArchive(const char* path, const void* xml, std::size_t size);

// Inflates the entry "index.xml" of the archive in bytes into xml. The size the
// archive states is checked before inflating and inflating stops at the limit,
// whatever the archive states. False with one line in error otherwise.
bool ReadTouchOSCArchive(std::string_view bytes, std::string& xml, const ImportLimits& limits,
                         std::string& error);
