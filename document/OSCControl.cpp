#include "OSCControl.h"

#include "ByteReader.h"
#include "ByteWriter.h"
#include "ChunkHeader.h"
#include "ControlTables.h"
#include "TextField.h"
#include "host/Messages.h"
#include "host/Toolkit.h"
#include "host/VornBasics.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

namespace {

// Addresses the editor builds start with this prefix; test mode sends the
// components after it.
constexpr std::size_t kAddressPrefixLength = 6;  // "/TRVX/"

// Test-mode arithmetic wraps around as on a 32-bit machine instead of being
// undefined when a wide value range overflows.
std::int32_t Wrap(std::int64_t value)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

// (to - from) * offset, wrapped.
std::int32_t ScaledSpan(std::int32_t from, std::int32_t to, int offset)
{
    return Wrap(static_cast<std::int64_t>(Wrap(std::int64_t{to} - from)) * offset);
}

// Fields after the two texts: six int16, six int32 and three bytes.
constexpr int kFixedFieldBytes = 39;

AddressComponents SplitAddress(std::string_view text)
{
    AddressComponents components;
    if (text.size() <= kAddressPrefixLength)
        return components;
    std::string_view rest = text.substr(kAddressPrefixLength);
    for (std::size_t slash; (slash = rest.find('/')) != std::string_view::npos;) {
        components.emplace_back(rest.substr(0, slash));
        rest.remove_prefix(slash + 1);
    }
    if (!rest.empty())
        components.emplace_back(rest);
    return components;
}

template <std::size_t N>
void ReplaceFirst(char (&field)[N], std::string_view search, std::string_view replace)
{
    std::string text(TextOf(field));
    const std::size_t at = text.find(search);
    if (at == std::string::npos)
        return;
    text.replace(at, search.size(), replace);
    CopyTextField(field, text);
}

// The numbers after the two texts, in file order: six int16 and six int32,
// then type, colour and flags.
constexpr std::int16_t OSCControl::*kShortFields[] = {
    &OSCControl::deviceId, &OSCControl::controlNumber, &OSCControl::x,
    &OSCControl::y,        &OSCControl::width,         &OSCControl::height};
constexpr std::int32_t OSCControl::*kLongFields[] = {
    &OSCControl::minValue,  &OSCControl::maxValue,  &OSCControl::reserved1,
    &OSCControl::reserved2, &OSCControl::reserved3, &OSCControl::reserved4};
constexpr std::uint8_t OSCControl::*kByteFields[] = {&OSCControl::type, &OSCControl::color,
                                                     &OSCControl::flags};
static_assert(sizeof kShortFields / sizeof *kShortFields * 2 +
                  sizeof kLongFields / sizeof *kLongFields * 4 + 3 ==
              kFixedFieldBytes);

// Reads a length byte and that many bytes of text; returns the bytes consumed.
template <std::size_t N>
int ReadText(ByteReader& file, char (&field)[N])
{
    const std::uint8_t length = file.ReadByte();
    file.Read(field, length);
    field[length] = '\0';
    return length + 1;
}

// Appends a length byte and the text; returns the new end.
template <std::size_t N>
unsigned char* PutText(unsigned char* out, const char (&field)[N])
{
    const std::string_view text = TextOf(field);
    *out++ = static_cast<unsigned char>(text.size());
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

}  // namespace

OSCControl::OSCControl()
{
    std::memset(name, 0, sizeof name);
    std::memset(command, 0, sizeof command);
}

int OSCControl::GetSize() const
{
    return static_cast<int>(TextOf(name).size() + TextOf(command).size()) + 41;
}

void OSCControl::GetRect(CRect& r) const
{
    r = Rect();
}

CRect OSCControl::Rect() const
{
    return {x, y, x + width, y + height};
}

void OSCControl::SetOSCParms(const _OSCParms* p)
{
    CopyTextField(name, TextOf(p->name));
    deviceId = p->deviceNumber;
    controlNumber = p->controlNumber;
    std::snprintf(command, sizeof command, "/TRVX/ID%d/SetVal/Ctl%d", deviceId, controlNumber);
    x = p->x < 0 ? 0 : p->x;
    y = p->y < 0 ? 0 : p->y;
    width = p->width;
    height = p->height;
    minValue = p->minValue;
    maxValue = p->maxValue;
    type = p->type;
    flags = p->flags;
    color = kGray;
}

void OSCControl::FlipThis(VornBasics* host)
{
    for (auto field : kShortFields)
        host->FlipShort(this->*field);
    for (auto field : kLongFields)
        host->FlipLong(this->*field);
}

int OSCControl::Read(ByteReader& file, VornBasics* host, int& remaining)
{
    // Counted in 64 bits: a damaged length may sit near the ends of int.
    std::int64_t left = remaining;
    left -= ReadText(file, name);
    left -= ReadText(file, command);

    unsigned char fixed[kFixedFieldBytes];
    file.Read(fixed, sizeof fixed);
    const unsigned char* in = fixed;
    for (auto field : kShortFields) {
        std::memcpy(&(this->*field), in, sizeof(std::int16_t));
        in += sizeof(std::int16_t);
    }
    for (auto field : kLongFields) {
        std::memcpy(&(this->*field), in, sizeof(std::int32_t));
        in += sizeof(std::int32_t);
    }
    for (auto field : kByteFields)
        this->*field = *in++;
    left -= kFixedFieldBytes;

    // Controls written by later versions may carry more fields; skip them.
    if (left > 0) {
        file.Skip(static_cast<std::size_t>(left));
        left = 0;
    }
    remaining = static_cast<int>(std::max<std::int64_t>(left, INT_MIN));
    FlipThis(host);
    if (file.Failed()) {
        host->ShowError(kLayoutReadError);
        return 1;
    }
    return 0;
}

int OSCControl::Write(ByteWriter& file, VornBasics* host)
{
    // The whole chunk is put together here and handed over in one piece.
    unsigned char chunk[8 + 2 * 256 + kFixedFieldBytes];
    unsigned char* out = chunk;
    std::memcpy(out, "CTRL", 4);
    std::uint32_t length = static_cast<std::uint32_t>(GetSize());
    host->FlipULong(length);
    std::memcpy(out + 4, &length, sizeof length);
    out = PutText(out + 8, name);
    out = PutText(out, command);

    FlipThis(host);
    for (auto field : kShortFields) {
        std::memcpy(out, &(this->*field), sizeof(std::int16_t));
        out += sizeof(std::int16_t);
    }
    for (auto field : kLongFields) {
        std::memcpy(out, &(this->*field), sizeof(std::int32_t));
        out += sizeof(std::int32_t);
    }
    FlipThis(host);
    for (auto field : kByteFields)
        *out++ = this->*field;

    file.Write(chunk, static_cast<std::size_t>(out - chunk));
    return 0;
}

void OSCControl::SetVal(VornBasics* host, int px, int py, int event)
{
    // Faders and knobs clamp one unit inside the near edge and two inside the
    // far edge, so the extremes are easy to reach with a finger.
    switch (type) {
        case kLabel:
            return;
        case kFader:
            if (width >= height) {
                if (px <= x + 1)
                    value = minValue;
                else if (px >= x + width - 2)
                    value = maxValue;
                else
                    value = Wrap(std::int64_t{minValue} +
                                 ScaledSpan(minValue, maxValue, px - x) / width);
                break;
            }
            [[fallthrough]];
        case kKnob:
            if (py <= y + 1)
                value = maxValue;
            else if (py >= y + height - 2)
                value = minValue;
            else
                value =
                    Wrap(std::int64_t{maxValue} - ScaledSpan(minValue, maxValue, py - y) / height);
            break;
        case kToggle:
            if (event != kPointerDown)
                return;
            value = value == minValue ? maxValue : minValue;
            break;
        case kPushButton:
            if (event != kPointerUp)
                return;
            break;
        default:
            break;
    }

    if (host == nullptr || host->hostWindow == nullptr)
        return;
    auto components = std::make_unique<AddressComponents>(SplitAddress(TextOf(command)));
    if (toolkit::PostMessage(host->hostWindow, WM_OSC_TESTVALUE, value,
                             reinterpret_cast<std::intptr_t>(components.get())))
        components.release();  // the receiver owns it now
}

bool OSCControl::FollowsPointer() const
{
    return type == kFader || type == kKnob;
}

void OSCControl::SearchAndReplace(std::string_view search, std::string_view replace, bool inName,
                                  bool inCommand)
{
    if (inName)
        ReplaceFirst(name, search, replace);
    if (inCommand)
        ReplaceFirst(command, search, replace);
}
