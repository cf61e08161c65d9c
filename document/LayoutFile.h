#pragma once

#include "OSCProject.h"

#include <cstddef>
#include <string>
#include <string_view>

class VornBasics;

// The ".VornOsc" layout file: "KLYF", the body length, then the pages.

constexpr int kNotLayoutFile = -1;

// Reads a whole file's bytes into project. Returns 0; kNotLayoutFile when the
// magic is missing (nothing is read and nothing shown); or the reader's code
// (1 bad or truncated content, 3 no memory) after showing the error through
// host, with project left exactly as it was. stoppedAt, when given, receives
// the offset where reading stopped.
int ReadLayoutFile(std::string_view bytes, OSCProject& project, VornBasics* host,
                   std::size_t* stoppedAt = nullptr);

// The file's bytes for project. The project is briefly converted to file order
// while it is written, hence not const.
std::string WriteLayoutFile(OSCProject& project, VornBasics* host);
