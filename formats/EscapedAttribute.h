#pragma once

#include <string>
#include <string_view>

// Text as an XML attribute value between double quotes: "&", "<", ">" and '"'
// become entities, every other byte stays as it is.
inline std::string EscapedAttribute(std::string_view text)
{
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}
