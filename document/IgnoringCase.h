#pragma once

#include <string_view>

// Table names, device names and extensions match in any case. They are all
// ASCII, so only ASCII letters are folded.
inline bool EqualsIgnoringCase(std::string_view a, std::string_view b)
{
    const auto lower = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (lower(a[i]) != lower(b[i]))
            return false;
    }
    return true;
}

inline bool EndsWithIgnoringCase(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() &&
           EqualsIgnoringCase(text.substr(text.size() - end.size()), end);
}
