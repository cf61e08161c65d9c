#pragma once

#include <cstdint>
#include <optional>

// The canvas's scroll arithmetic on one axis, in layout units. Pure, so that
// each rule can be checked against its numbers.

// Scroll requests, as the scroll bars make them.
enum ScrollCode {
    kLineForward = 0,
    kPageForward = 1,
    kLineBack = 2,
    kPageBack = 3,
    kThumbPosition = 4,
    kThumbTrack = 5,
};
constexpr int kScrollLine = 16;

// How far a request moves the position: lines and pages stop at the ends,
// the thumb goes where it is put. Nothing at all (not even a step of 0) for a
// line forward at the end or a line back at 0.
std::optional<int> ScrollStep(int code, int thumb, int position, int max, int page);

// One axis after the client size or the screen size changed.
struct ScrollAxis {
    std::int16_t position;
    std::int16_t max;
    int shift;  // how far the position moved: the content moves the other way
};
// screen is the device's size on this axis; margin the system metric below
// which the whole screen counts as fitting, so that the position goes back to 0.
ScrollAxis FitScrollAxis(std::int16_t position, int screen, int client, int margin);
