#include "ControlTables.h"

const char* const ControlTypes[kControlTypeCount] = {"Label", "Fader", "Knob", "Toggle",
                                                     "Push Button"};

const char* const ColorTypes[kNamedColorCount] = {"red",  "green",  "blue",  "yellow", "purple",
                                                  "gray", "orange", "brown", "pink"};

const std::uint32_t Colors[kColorCount] = {0x000000FF, 0x0000FF00, 0x00FF0000, 0x0000FFFF,
                                           0x007F007F, 0x007F7F7F, 0x00007FFF, 0x00003F7F,
                                           0x009314FF, 0x00FFFFFF};

const char* const DeviceNames[kDeviceCount] = {"iPhone/iPod Touch", "iPad"};
const char* const OrientationNames[kOrientationCount] = {"Vertical", "Horizontal"};

const std::int32_t ScreenW[4] = {320, 768, 480, 1024};
const std::int32_t ScreenH[4] = {480, 1024, 320, 768};

const char* const OrientationStr[2] = {"horizontal", "vertical"};

const char EditorName[16] = "Vorn OSC Editor";
