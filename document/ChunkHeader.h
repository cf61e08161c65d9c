#pragma once

#include <cstdint>

class ByteReader;
class VornBasics;

// Every failure to read a layout file is told to the user with this one line.
constexpr char kLayoutReadError[] = "Error reading Vorn OSC file";

// Reads a chunk's four-character tag and its body length. When the tag is not
// the expected one, tells the user and returns false.
bool ReadChunkHeader(ByteReader& file, VornBasics* host, const char* tag, int& length);
