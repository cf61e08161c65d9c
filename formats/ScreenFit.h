#pragma once

#include <cstdint>

class ImportReport;
class OSCControl;

// The device whose upright screen is nearest in size to width x height (upright too).
std::uint8_t NearestDevice(double width, double height);

// Puts the rectangles of a file made for another screen on the editor's page.
// When the file's screen is larger than the device's, every rectangle is scaled
// by the one factor that fits the whole screen; otherwise they are kept as they
// are, off-screen ones too.
class ScreenFit {
public:
    // width x height: the file's screen as the layout's orientation shows it.
    ScreenFit(double width, double height, int device, int orientation);

    double Factor() const { return factor_; }
    // Sets the control's rectangle from one in editor units; a scaled knob keeps
    // equal sides. Call once the control's type is set.
    void Place(OSCControl& control, double x, double y, double width, double height,
               ImportReport& report) const;
    // Tells the user when the layout was scaled.
    void Report(ImportReport& report) const;

private:
    double factor_ = 1;
    int device_ = 0;
};
