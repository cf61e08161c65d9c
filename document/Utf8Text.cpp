#include "Utf8Text.h"

namespace {

bool IsContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

// The length of the character that lead starts, or 0 when no character starts so.
std::size_t SequenceLength(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 4;
    return 0;
}

// The second byte's range is narrower after these leads: it rules out overlong
// forms, surrogates and code points above U+10FFFF.
bool SecondByteFits(unsigned char lead, unsigned char second)
{
    switch (lead) {
        case 0xE0:
            return second >= 0xA0;
        case 0xED:
            return second < 0xA0;
        case 0xF0:
            return second >= 0x90;
        case 0xF4:
            return second < 0x90;
        default:
            return true;
    }
}

}  // namespace

bool IsValidUtf8(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::size_t length = SequenceLength(lead);
        if (length == 0 || text.size() - at < length)
            return false;
        for (std::size_t i = 1; i < length; ++i) {
            if (!IsContinuation(static_cast<unsigned char>(text[at + i])))
                return false;
        }
        if (length > 1 && !SecondByteFits(lead, static_cast<unsigned char>(text[at + 1])))
            return false;
        at += length;
    }
    return true;
}

std::string_view CutToFit(std::string_view text, std::size_t maxBytes)
{
    if (text.size() <= maxBytes)
        return text;
    std::size_t cut = maxBytes;
    // Continuation bytes at the cut belong to a character that is left out whole.
    if (IsValidUtf8(text)) {
        while (cut > 0 && IsContinuation(static_cast<unsigned char>(text[cut])))
            --cut;
    }
    return text.substr(0, cut);
}
