#pragma once

#include "Utf8Text.h"

#include <cstddef>
#include <cstring>
#include <string_view>

// Layout texts live in fixed 256-byte fields. Every write goes through here so
// that a text too long for its field is cut, never written past the field, and
// a UTF-8 text is cut between its characters.
template <std::size_t N>
void CopyTextField(char (&field)[N], std::string_view text)
{
    const std::string_view kept = CutToFit(text, N - 1);
    std::memcpy(field, kept.data(), kept.size());
    field[kept.size()] = '\0';
}

// The text of a field: at most N - 1 bytes, even where the terminator is missing.
template <std::size_t N>
std::string_view TextOf(const char (&field)[N])
{
    return {field, ::strnlen(field, N - 1)};
}
