#pragma once

#include "host/CRect.h"
#include "host/OSCParms.h"

#include <cstdint>
#include <cstdio>
#include <string_view>

class ByteReader;
class ByteWriter;
class OSCProject;
class VornBasics;

// What the pointer did, for test-mode values.
enum PointerEvent {
    kPointerDown = 0,
    kPointerMove = 1,
    kPointerUp = 2,
};

// One control on a page: a plain record, copied whole by value.
class OSCControl {
public:
    char name[256];
    char command[256];  // the OSC address the control sends
    std::int16_t deviceId = 0;
    std::int16_t controlNumber = 0;
    std::int16_t x = 0;
    std::int16_t y = 0;
    std::int16_t width = 32;
    std::int16_t height = 32;
    std::int32_t minValue = 0;
    std::int32_t maxValue = 127;
    std::int32_t reserved1 = 0;
    std::int32_t reserved2 = 0;
    std::int32_t reserved3 = 0;
    std::int32_t reserved4 = 0;
    std::uint8_t type = 0;
    std::uint8_t color = 0;
    std::uint8_t flags = 0;
    std::int32_t selected = 0;  // not stored
    std::int32_t value = 0;     // not stored: the last test-mode value

    OSCControl();

    // Bytes of the control's body in the layout file.
    int GetSize() const;
    void GetRect(CRect& r) const;
    CRect Rect() const;

    void SetOSCParms(const _OSCParms* p);
    void FlipThis(VornBasics* host);

    int Read(ByteReader& file, VornBasics* host, int& remaining);
    int Write(ByteWriter& file, VornBasics* host);

    // Computes the test-mode value for a pointer at (px, py) and posts it,
    // with the address components, to the host's window.
    void SetVal(VornBasics* host, int px, int py, int event);
    // Whether a press on the control keeps setting its value wherever the
    // pointer goes until the release, as a fader or knob does: past its ends
    // the value stays at its minimum or maximum.
    bool FollowsPointer() const;

    void SearchAndReplace(std::string_view search, std::string_view replace, bool inName,
                          bool inCommand);

    void ExportForTouchOSC(std::FILE* out, const OSCProject* project) const;
    void ExportForLemur(std::FILE* out);
};
