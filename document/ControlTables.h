#pragma once

#include "host/ModuleExport.h"

#include <cstdint>

// The vocabulary of a layout: control types, colours, target screens.

enum ControlType : std::uint8_t {
    kLabel = 0,
    kFader = 1,
    kKnob = 2,
    kToggle = 3,
    kPushButton = 4,
};
constexpr int kControlTypeCount = 5;

enum DeviceType : std::uint8_t {
    kIPhone = 0,
    kIPad = 1,
};
constexpr int kDeviceCount = 2;

enum Orientation : std::uint8_t {
    kVertical = 0,
    kHorizontal = 1,
};
constexpr int kOrientationCount = 2;

constexpr int kNamedColorCount = 9;  // the colours a user can pick by name
constexpr int kColorCount = 10;      // index 9, white, has a value but no name
constexpr std::uint8_t kGray = 5;    // the colour of controls made from host records

// The top band of every page, kept free of pasted controls.
constexpr int kTitleBandHeight = 40;

VORNOSC_EXPORT extern const char* const ControlTypes[kControlTypeCount];
VORNOSC_EXPORT extern const char* const ColorTypes[kNamedColorCount];
VORNOSC_EXPORT extern const std::uint32_t Colors[kColorCount];  // 0x00BBGGRR
extern const char* const DeviceNames[kDeviceCount];
extern const char* const OrientationNames[kOrientationCount];

// The value of a colour index; indexes past the table, as a damaged file may
// hold, take gray's.
inline std::uint32_t ColorOf(int index);

// Indexed by device + 2 * orientation.
VORNOSC_EXPORT extern const std::int32_t ScreenW[4];
VORNOSC_EXPORT extern const std::int32_t ScreenH[4];

// TouchOSC's orientation words: index 0 "horizontal", index 1 "vertical".
VORNOSC_EXPORT extern const char* const OrientationStr[2];

VORNOSC_EXPORT extern const char EditorName[16];

// Index into ScreenW and ScreenH. A device or orientation byte out of range,
// as a damaged file may hold, counts as the nearest valid one.
constexpr int ScreenIndex(int device, int orientation)
{
    const auto valid = [](int value) { return value < 0 ? 0 : value > 1 ? 1 : value; };
    return valid(device) + 2 * valid(orientation);
}

inline std::uint32_t ColorOf(int index)
{
    return Colors[index >= 0 && index < kColorCount ? index : kGray];
}
