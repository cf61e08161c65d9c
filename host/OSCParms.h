#pragma once

#include <cstddef>
#include <cstdint>

// The host's description of one control, from which the editor makes controls.
// The host lays it out packed, in its own byte order.
#pragma pack(push, 1)
struct _OSCParms {
    char name[256];  // NUL-terminated when shorter than the field
    std::int16_t deviceNumber;
    std::int16_t controlNumber;
    std::int16_t x;
    std::int16_t y;
    std::int16_t width;
    std::int16_t height;
    std::int32_t minValue;
    std::int32_t maxValue;
    std::uint8_t type;
    std::uint8_t flags;
};
#pragma pack(pop)

static_assert(sizeof(_OSCParms) == 278);
static_assert(offsetof(_OSCParms, deviceNumber) == 256);
static_assert(offsetof(_OSCParms, controlNumber) == 258);
static_assert(offsetof(_OSCParms, x) == 260);
static_assert(offsetof(_OSCParms, y) == 262);
static_assert(offsetof(_OSCParms, width) == 264);
static_assert(offsetof(_OSCParms, height) == 266);
static_assert(offsetof(_OSCParms, minValue) == 268);
static_assert(offsetof(_OSCParms, maxValue) == 272);
static_assert(offsetof(_OSCParms, type) == 276);
static_assert(offsetof(_OSCParms, flags) == 277);
