#include "ScreenFit.h"

#include "ImportReport.h"
#include "ImportedFields.h"
#include "document/ControlTables.h"
#include "document/OSCControl.h"

#include <algorithm>
#include <cmath>
#include <string>

std::uint8_t NearestDevice(double width, double height)
{
    std::uint8_t nearest = 0;
    double best = 0;
    for (int device = 0; device < kDeviceCount; ++device) {
        const int index = ScreenIndex(device, kVertical);
        const double distance =
            std::abs(width - ScreenW[index]) + std::abs(height - ScreenH[index]);
        if (device == 0 || distance < best) {
            best = distance;
            nearest = static_cast<std::uint8_t>(device);
        }
    }
    return nearest;
}

ScreenFit::ScreenFit(double width, double height, int device, int orientation) : device_(device)
{
    const int index = ScreenIndex(device, orientation);
    const double fitsWidth = ScreenW[index] / width;
    const double fitsHeight = ScreenH[index] / height;
    if (width > 0 && height > 0)
        factor_ = std::min({1.0, fitsWidth, fitsHeight});
}

void ScreenFit::Place(OSCControl& control, double x, double y, double width, double height,
                      ImportReport& report) const
{
    if (factor_ < 1 && control.type == kKnob)
        width = height = std::min(width, height);
    control.x = ImportedShort(x * factor_, report);
    control.y = ImportedShort(y * factor_, report);
    control.width = ImportedShort(width * factor_, report);
    control.height = ImportedShort(height * factor_, report);
}

void ScreenFit::Report(ImportReport& report) const
{
    if (factor_ < 1) {
        report.Note("scaled to " + std::to_string(static_cast<int>(std::lround(factor_ * 100))) +
                    "% to fit the " + DeviceNames[device_] + " screen");
    }
}
