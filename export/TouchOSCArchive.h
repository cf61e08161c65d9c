#pragma once

#include <cstddef>

// Creates (or replaces) the zip archive at path holding xml as its one entry
// "index.xml", deflated at level 9. Returns false when libzip fails; no
// archive is left behind then.
bool WriteTouchOSCArchive(const char* path, const void* xml, std::size_t size);
