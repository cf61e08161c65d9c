#include "LayoutTools.h"

#include "ControlTables.h"
#include "NumberedText.h"
#include "OSCPage.h"
#include "TextField.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kGap = 8;  // between a selection and its copy

struct Place {
    int x, y, width, height;
};

std::vector<OSCControl*> SelectedOf(const OSCPage& page)
{
    std::vector<OSCControl*> selected;
    page.GetSelectedControls(selected);
    return selected;
}

Place PlaceOf(const OSCControl& control)
{
    return {control.x, control.y, control.width, control.height};
}

Place BoundsOf(const std::vector<OSCControl*>& controls)
{
    int left = std::numeric_limits<int>::max(), top = left;
    int right = std::numeric_limits<int>::min(), bottom = right;
    for (const OSCControl* control : controls) {
        left = std::min<int>(left, control->x);
        top = std::min<int>(top, control->y);
        right = std::max(right, control->x + control->width);
        bottom = std::max(bottom, control->y + control->height);
    }
    return {left, top, right - left, bottom - top};
}

bool OnScreen(const Place& place, int screenW, int screenH)
{
    return place.x >= 0 && place.y >= 0 && place.x + place.width <= screenW &&
           place.y + place.height <= screenH;
}

// Gives each control its new place, or none of them when one would leave the screen.
bool PlaceAll(const std::vector<OSCControl*>& controls, const std::vector<Place>& places,
              int screenW, int screenH)
{
    for (const Place& place : places) {
        if (!OnScreen(place, screenW, screenH))
            return false;
    }
    for (std::size_t i = 0; i < controls.size(); ++i) {
        controls[i]->x = static_cast<std::int16_t>(places[i].x);
        controls[i]->y = static_cast<std::int16_t>(places[i].y);
        controls[i]->width = static_cast<std::int16_t>(places[i].width);
        controls[i]->height = static_cast<std::int16_t>(places[i].height);
    }
    return true;
}

std::string HostAddress(int deviceId, int controlNumber)
{
    char address[64];
    std::snprintf(address, sizeof address, "/TRVX/ID%d/SetVal/Ctl%d", deviceId, controlNumber);
    return address;
}

OSCControl CopyNumbered(const OSCControl& source, int k, const CopyPlan& plan)
{
    OSCControl copy = source;
    copy.x = static_cast<std::int16_t>(source.x + k * plan.stepX);
    copy.y = static_cast<std::int16_t>(source.y + k * plan.stepY);
    if (plan.numberNames)
        CopyTextField(copy.name, NumberedText(TextOf(source.name), k, true));
    const bool hostAddress =
        TextOf(source.command) == HostAddress(source.deviceId, source.controlNumber);
    if (plan.numberControlNumbers) {
        copy.controlNumber = static_cast<std::int16_t>(source.controlNumber + k);
        // An address built from the host's numbers keeps following them.
        if (hostAddress)
            CopyTextField(copy.command, HostAddress(copy.deviceId, copy.controlNumber));
    }
    if (plan.numberAddresses && !(plan.numberControlNumbers && hostAddress))
        CopyTextField(copy.command, NumberedText(TextOf(source.command), k, false));
    return copy;
}

bool CopyFits(const OSCControl& source, int k, const CopyPlan& plan, int screenW, int screenH)
{
    const Place place{source.x + k * plan.stepX, source.y + k * plan.stepY, source.width,
                      source.height};
    const bool numberFits =
        !plan.numberControlNumbers || source.controlNumber + k <= std::numeric_limits<std::int16_t>::max();
    return OnScreen(place, screenW, screenH) && numberFits;
}

}  // namespace

bool AlignSelected(OSCPage& page, AlignTo to, int screenW, int screenH)
{
    const std::vector<OSCControl*> selected = SelectedOf(page);
    const Place box = BoundsOf(selected);
    std::vector<Place> places;
    for (const OSCControl* control : selected) {
        Place place = PlaceOf(*control);
        switch (to) {
            case AlignTo::kLeftEdges:
                place.x = box.x;
                break;
            case AlignTo::kRightEdges:
                place.x = box.x + box.width - place.width;
                break;
            case AlignTo::kTops:
                place.y = box.y;
                break;
            case AlignTo::kBottoms:
                place.y = box.y + box.height - place.height;
                break;
            case AlignTo::kHorizontalCentres:
                place.x = box.x + box.width / 2 - place.width / 2;
                break;
            case AlignTo::kVerticalCentres:
                place.y = box.y + box.height / 2 - place.height / 2;
                break;
        }
        places.push_back(place);
    }
    return PlaceAll(selected, places, screenW, screenH);
}

bool DistributeSelected(OSCPage& page, Along along, int screenW, int screenH)
{
    std::vector<OSCControl*> selected = SelectedOf(page);
    if (selected.size() < 3)
        return false;
    const bool across = along == Along::kHorizontal;
    const auto start = [across](const OSCControl* c) { return across ? c->x : c->y; };
    const auto size = [across](const OSCControl* c) { return across ? c->width : c->height; };
    std::stable_sort(selected.begin(), selected.end(),
                     [&](const OSCControl* a, const OSCControl* b) { return start(a) < start(b); });
    std::int64_t sizes = 0;
    for (const OSCControl* control : selected)
        sizes += size(control);
    const OSCControl* last = selected.back();
    const std::int64_t span = start(last) + size(last) - start(selected.front());
    const std::int64_t gaps = static_cast<std::int64_t>(selected.size()) - 1;
    std::vector<Place> places;
    std::int64_t before = 0;  // the sizes of the controls before this one
    for (std::size_t i = 0; i < selected.size(); ++i) {
        Place place = PlaceOf(*selected[i]);
        // Each gap is the free space shared out, the remainder spread from the start.
        const auto at = static_cast<int>(start(selected.front()) + before +
                                         (span - sizes) * static_cast<std::int64_t>(i) / gaps);
        (across ? place.x : place.y) = at;
        places.push_back(place);
        before += size(selected[i]);
    }
    return PlaceAll(selected, places, screenW, screenH);
}

bool SameSizeSelected(OSCPage& page, Along along, int screenW, int screenH)
{
    const std::vector<OSCControl*> selected = SelectedOf(page);
    const bool across = along == Along::kHorizontal;
    int largest = 0;
    for (const OSCControl* control : selected)
        largest = std::max<int>(largest, across ? control->width : control->height);
    std::vector<Place> places;
    for (const OSCControl* control : selected) {
        Place place = PlaceOf(*control);
        (across ? place.width : place.height) = largest;
        if (control->type == kKnob)
            place.width = place.height = largest;
        places.push_back(place);
    }
    return PlaceAll(selected, places, screenW, screenH);
}

Duplicated DuplicateSelected(OSCPage& page, const CopyPlan& plan, int screenW, int screenH)
{
    const std::vector<OSCControl*> selected = SelectedOf(page);
    if (selected.empty())
        return {};
    int fit = 0;
    while (fit < plan.count &&
           std::all_of(selected.begin(), selected.end(), [&](const OSCControl* control) {
               return CopyFits(*control, fit + 1, plan, screenW, screenH);
           }))
        ++fit;
    if (fit < plan.count)
        return {false, fit};

    std::vector<std::unique_ptr<OSCControl>> copies;
    for (int k = plan.count; k >= 1; --k) {
        for (const OSCControl* control : selected) {
            copies.push_back(std::make_unique<OSCControl>(CopyNumbered(*control, k, plan)));
            copies.back()->selected = 1;
        }
    }
    for (OSCControl* control : selected)
        control->selected = 0;
    page.controls.insert(page.controls.begin(), std::make_move_iterator(copies.begin()),
                         std::make_move_iterator(copies.end()));
    return {true, plan.count};
}

CopyPlan CopyBeside(const OSCPage& page, int screenW)
{
    const Place box = BoundsOf(SelectedOf(page));
    // Numbered as an array numbers its copies: a row made copy by copy drives
    // one parameter a control, not one parameter for all.
    CopyPlan plan;
    plan.numberNames = plan.numberAddresses = plan.numberControlNumbers = true;
    if (box.x + 2 * box.width + kGap <= screenW)
        plan.stepX = box.width + kGap;
    else
        plan.stepY = box.height + kGap;
    return plan;
}

bool SnapFrontControls(OSCPage& page, int count, int step, int screenW, int screenH)
{
    std::vector<OSCControl*> front;
    for (int i = 0; i < count && i < static_cast<int>(page.controls.size()); ++i)
        front.push_back(page.controls[static_cast<std::size_t>(i)].get());
    if (front.empty())
        return false;
    const Place box = BoundsOf(front);
    const auto down = [step](int v) { return v >= 0 ? v / step * step : -((-v + step - 1) / step) * step; };
    const int belowX = down(box.x), belowY = down(box.y);
    // The nearest corner first, then the others from the grid square around it.
    const bool nearLeft = box.x - belowX < belowX + step - box.x;
    const bool nearTop = box.y - belowY < belowY + step - box.y;
    for (const int tryX : {nearLeft ? belowX : belowX + step, nearLeft ? belowX + step : belowX}) {
        for (const int tryY : {nearTop ? belowY : belowY + step, nearTop ? belowY + step : belowY}) {
            std::vector<Place> places;
            for (const OSCControl* control : front) {
                Place place = PlaceOf(*control);
                place.x += tryX - box.x;
                place.y += tryY - box.y;
                places.push_back(place);
            }
            if (PlaceAll(front, places, screenW, screenH))
                return true;
        }
    }
    return false;
}
