#include "ToscNodeIds.h"

#include "document/OSCProject.h"
#include "document/TextField.h"

#include <string_view>

namespace {

// 64-bit FNV-1a, over the bytes that tell one layout from another.
class LayoutHash {
public:
    void Add(std::string_view bytes)
    {
        for (const char c : bytes)
            value_ = (value_ ^ static_cast<unsigned char>(c)) * 0x100000001B3;
        value_ = (value_ ^ 0xFF) * 0x100000001B3;  // ends the text: "ab","c" is not "a","bc"
    }
    void Add(long long number) { Add(std::to_string(number)); }
    std::uint64_t Value() const { return value_; }

private:
    std::uint64_t value_ = 0xCBF29CE484222325;
};

// Spreads a count's bits over the whole word (SplitMix64's finaliser).
std::uint64_t Mixed(std::uint64_t value)
{
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
}

void AppendHex(std::string& xml, std::uint64_t value, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        xml += "0123456789abcdef"[(value >> shift) & 0xF];
}

}  // namespace

ToscNodeIds::ToscNodeIds(const OSCProject& project)
{
    LayoutHash hash;
    hash.Add(project.device * 2 + project.orientation);
    for (const auto& page : project.pages) {
        hash.Add(TextOf(page->name));
        for (const auto& control : page->controls) {
            hash.Add(TextOf(control->name));
            hash.Add(TextOf(control->command));
            hash.Add(control->x);
            hash.Add(control->y);
            hash.Add(control->type);
        }
    }
    layout_ = hash.Value();
}

void ToscNodeIds::AppendNext(std::string& xml)
{
    // Version 4 and variant 10 as a random ID has them; the last group is the count.
    const std::uint64_t bits = Mixed(layout_ + count_);
    AppendHex(xml, bits >> 32, 8);
    xml += '-';
    AppendHex(xml, bits >> 16, 4);
    xml += "-4";
    AppendHex(xml, bits, 3);
    xml += '-';
    AppendHex(xml, 0x8000 | (layout_ >> 50), 4);
    xml += '-';
    AppendHex(xml, count_, 12);
    ++count_;
}
