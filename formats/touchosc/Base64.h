#pragma once

#include <string>

// Standard base64 (A-Z, a-z, 0-9, '+', '/', padded with '='), one unbroken run
// of characters. TouchOSC files carry page and control names this way.
class Base64 {
public:
    // Characters of the encoding of byteCount bytes: 4 for every started group of 3.
    static int GetCodeLength(int byteCount);

    // An upper bound of the bytes that charCount characters decode to; padding
    // is not subtracted.
    static int GetDataLength(int charCount);

    // Replaces code with the encoding of data; returns its length.
    static int Encode(const unsigned char* data, int byteCount, std::wstring& code);

    // Decodes up to charCount characters of code (never more than it holds)
    // into data, which must hold GetDataLength(charCount) bytes; returns the
    // bytes written. Kept lenient on purpose: a character outside the alphabet
    // counts as 0, the first '=' ends decoding, and a trailing quartet without
    // padding yields nothing.
    static int Decode(const std::wstring& code, int charCount, unsigned char* data);
};
