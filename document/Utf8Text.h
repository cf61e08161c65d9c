#pragma once

#include <cstddef>
#include <string_view>

// Layout texts are bytes. Most are UTF-8, but layouts from other tools hold
// texts in other encodings, which the editor keeps as they are.

// Whether text is well-formed UTF-8: no stray or missing continuation bytes,
// no overlong forms, no surrogates, nothing above U+10FFFF.
bool IsValidUtf8(std::string_view text);

// The longest start of text that fits in maxBytes. A valid UTF-8 text is cut
// between characters, never inside one; any other text at maxBytes.
std::string_view CutToFit(std::string_view text, std::size_t maxBytes);
