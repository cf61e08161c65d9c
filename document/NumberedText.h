#pragma once

#include <string>
#include <string_view>

// Texts of numbered copies: "Mute 1" and 2 make "Mute 3", "/mix/ch09/mute"
// and 1 make "/mix/ch10/mute". Only the last run of digits counts, however
// long; its width is kept with leading zeros.
// Without digits the text is given back as it is, or, with appendWhenNone, with
// " N" added, N being add + 1 ("Mute" and 1 make "Mute 2").
std::string NumberedText(std::string_view text, int add, bool appendWhenNone);
