#include "XmlCharacterData.h"

#include "formats/EscapedAttribute.h"

#include <algorithm>

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

bool IsPlainAscii(unsigned char byte)
{
    return (byte >= 0x20 && byte < 0x80) || byte == '\t' || byte == '\n';
}

// The character at the front of text: how many bytes it takes, and whether
// XML allows it. A byte that starts no well-formed UTF-8 is one not allowed.
struct Character {
    std::size_t length;
    bool allowed;
};

Character FrontCharacter(std::string_view text)
{
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return {1, IsPlainAscii(lead) || lead == '\r'};
    constexpr Character kBroken{1, false};
    std::size_t length = 0;
    char32_t code = 0;
    char32_t lowest = 0;  // below it, the form is overlong
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, code = lead & 0x1F, lowest = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3, code = lead & 0x0F, lowest = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, code = lead & 0x07, lowest = 0x10000;
    } else {
        return kBroken;
    }
    if (text.size() < length)
        return kBroken;
    for (std::size_t at = 1; at < length; ++at) {
        if ((byte(at) & 0xC0) != 0x80)
            return kBroken;
        code = code << 6 | (byte(at) & 0x3F);
    }
    if (code < lowest || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return kBroken;
    return {length, code != 0xFFFE && code != 0xFFFF};
}

std::string XmlCharacters(std::string_view text)
{
    std::string kept;
    kept.reserve(text.size());
    while (!text.empty()) {
        const Character character = FrontCharacter(text);
        kept.append(character.allowed ? text.substr(0, character.length) : kReplacement);
        text.remove_prefix(character.length);
    }
    return kept;
}

void AppendCdata(std::string& xml, std::string_view text)
{
    xml += "<![CDATA[";
    xml += text;
    xml += "]]>";
}

}  // namespace

void AppendCharacterData(std::string& xml, std::string_view text)
{
    // Nearly every name and address is plain ASCII: copied as it stands.
    const bool plain = std::all_of(text.begin(), text.end(), [](char c) {
        return IsPlainAscii(static_cast<unsigned char>(c));
    });
    if (plain && text.find("]]>") == std::string_view::npos)
        return AppendCdata(xml, text);
    const std::string kept = plain ? std::string(text) : XmlCharacters(text);
    if (kept.find("]]>") == std::string::npos && kept.find('\r') == std::string::npos)
        return AppendCdata(xml, kept);
    // A carriage return as it stands would read back as a line feed.
    for (const char c : EscapedAttribute(kept)) {
        if (c == '\r')
            xml += "&#13;";
        else
            xml += c;
    }
}
