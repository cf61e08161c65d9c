#include "OSCControl.h"

#include "ByteReader.h"
#include "ByteWriter.h"
#include "ControlTables.h"
#include "TextField.h"
#include "host/Messages.h"
#include "host/Toolkit.h"
#include "host/VornBasics.h"

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

template <std::size_t N>
void ReadText(ByteReader& file, char (&field)[N], int& remaining)
{
    const std::uint8_t length = file.ReadByte();
    file.Read(field, length);
    field[length] = '\0';
    remaining -= length + 1;
}

template <std::size_t N>
void WriteText(ByteWriter& file, const char (&field)[N])
{
    const std::string_view text = TextOf(field);
    file.WriteByte(static_cast<std::uint8_t>(text.size()));
    file.Write(text.data(), text.size());
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
    for (std::int16_t* field : {&deviceId, &controlNumber, &x, &y, &width, &height})
        host->FlipShort(*field);
    for (std::int32_t* field :
         {&minValue, &maxValue, &reserved1, &reserved2, &reserved3, &reserved4})
        host->FlipLong(*field);
}

int OSCControl::Read(ByteReader& file, VornBasics* host, int& remaining)
{
    ReadText(file, name, remaining);
    ReadText(file, command, remaining);
    for (std::int16_t* field : {&deviceId, &controlNumber, &x, &y, &width, &height})
        file.Read(field, sizeof *field);
    for (std::int32_t* field :
         {&minValue, &maxValue, &reserved1, &reserved2, &reserved3, &reserved4})
        file.Read(field, sizeof *field);
    type = file.ReadByte();
    color = file.ReadByte();
    flags = file.ReadByte();
    remaining -= kFixedFieldBytes;
    // Controls written by later versions may carry more fields; skip them.
    if (remaining > 0) {
        file.Skip(static_cast<std::size_t>(remaining));
        remaining = 0;
    }
    FlipThis(host);
    if (file.Failed()) {
        host->ShowError("Error reading Vorn OSC file");
        return 1;
    }
    return 0;
}

int OSCControl::Write(ByteWriter& file, VornBasics* host)
{
    FlipThis(host);
    file.Write("CTRL", 4);
    std::uint32_t length = static_cast<std::uint32_t>(GetSize());
    host->FlipULong(length);
    file.WriteRaw(length);
    WriteText(file, name);
    WriteText(file, command);
    for (const std::int16_t* field : {&deviceId, &controlNumber, &x, &y, &width, &height})
        file.WriteRaw(*field);
    for (const std::int32_t* field :
         {&minValue, &maxValue, &reserved1, &reserved2, &reserved3, &reserved4})
        file.WriteRaw(*field);
    file.WriteByte(type);
    file.WriteByte(color);
    file.WriteByte(flags);
    FlipThis(host);
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

void OSCControl::SearchAndReplace(std::string_view search, std::string_view replace, bool inName,
                                  bool inCommand)
{
    if (inName)
        ReplaceFirst(name, search, replace);
    if (inCommand)
        ReplaceFirst(command, search, replace);
}
