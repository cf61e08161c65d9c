#pragma once

#include <cstdio>
#include <string_view>

// Writes xml to out as one zlib stream at zlib's default level, as the app
// compresses its files (they start 78 9C). False when zlib or the stream fails.
bool WriteDeflated(std::string_view xml, std::FILE* out);
