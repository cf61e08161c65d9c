#include "OSCPage.h"

#include "ByteReader.h"
#include "ByteWriter.h"
#include "ChunkHeader.h"
#include "ControlClipboard.h"
#include "ControlTables.h"
#include "FreePlace.h"
#include "TextField.h"
#include "host/Toolkit.h"
#include "host/VornBasics.h"

#include <cstring>
#include <functional>
#include <optional>

namespace {

constexpr int kChunkHeaderBytes = 8;  // tag and length

// The smallest width (or height) a control may be shrunk to, by the host's
// size limit mode; none for types that are never shrunk. A fader counts as
// horizontal here only when it is wider than high, unlike in test mode.
std::optional<int> MinimumSize(const OSCControl& control, int mode, bool width)
{
    const bool strict = mode != 0;
    switch (control.type) {
        case kLabel:
            return width ? (strict ? 50 : 20) : 20;
        case kFader:
            if (!strict)
                return 20;
            if (control.width > control.height)
                return width ? 200 : 44;
            return width ? 48 : 200;
        case kKnob:
            return strict ? 48 : 50;
        case kToggle:
        case kPushButton:
            return 15;
        default:
            return std::nullopt;
    }
}

}  // namespace

OSCPage::OSCPage()
{
    std::memset(name, 0, sizeof name);
    CopyTextField(name, "Page 1");
}

int OSCPage::GetSize() const
{
    int size = static_cast<int>(TextOf(name).size()) + 3;
    for (const auto& control : controls)
        size += control->GetSize() + kChunkHeaderBytes;
    return size;
}

int OSCPage::Read(ByteReader& file, VornBasics* host, int&)
{
    std::uint16_t count = file.ReadRaw<std::uint16_t>();
    host->FlipUShort(count);
    const std::uint8_t length = file.ReadByte();
    file.Read(name, length);
    name[length] = '\0';
    if (file.Failed()) {
        host->ShowError(kLayoutReadError);
        return 1;
    }
    controls.reserve(controls.size() + count);
    for (int i = 0; i < count; ++i) {
        controls.push_back(std::make_unique<OSCControl>());
        int remaining = 0;
        if (!ReadChunkHeader(file, host, "CTRL", remaining))
            return 1;
        if (const int result = controls.back()->Read(file, host, remaining))
            return result;
    }
    return 0;
}

int OSCPage::Write(ByteWriter& file, VornBasics* host)
{
    file.Write("PAGE", 4);
    std::uint32_t length = static_cast<std::uint32_t>(GetSize());
    host->FlipULong(length);
    file.WriteRaw(length);
    std::uint16_t count = static_cast<std::uint16_t>(controls.size());
    host->FlipUShort(count);
    file.WriteRaw(count);
    const std::string_view text = TextOf(name);
    file.WriteByte(static_cast<std::uint8_t>(text.size()));
    file.Write(text.data(), text.size());
    for (auto& control : controls)
        control->Write(file, host);
    return 0;
}

void OSCPage::SelectAll()
{
    for (auto& control : controls)
        control->selected = 1;
}

void OSCPage::UnselectAll()
{
    for (auto& control : controls)
        control->selected = 0;
}

int OSCPage::GetNumSelected() const
{
    int count = 0;
    for (const auto& control : controls)
        count += control->selected != 0;
    return count;
}

int OSCPage::GetNumControls() const
{
    return static_cast<int>(controls.size());
}

void OSCPage::GetSelectedControls(std::vector<OSCControl*>& out) const
{
    for (const auto& control : controls)
        if (control->selected)
            out.push_back(control.get());
}

void OSCPage::SelectRange(int l, int t, int r, int b)
{
    CRect range{l, t, r, b};
    range.NormalizeRect();
    for (auto& control : controls)
        if (RectsIntersect(control->Rect(), range))
            control->selected = 1;
}

OSCControl* OSCPage::GetAt(int px, int py) const
{
    for (const auto& control : controls)
        if (px >= control->x && px < control->x + control->width && py >= control->y &&
            py < control->y + control->height)
            return control.get();
    return nullptr;
}

bool OSCPage::MoveSelected(int dx, int dy, int screenW, int screenH)
{
    // Only the top-left corner must stay on the screen while dragging.
    return MoveSelectedUnless(dx, dy, [&](const OSCControl& c) {
        const int nx = c.x + dx;
        const int ny = c.y + dy;
        return nx < 0 || nx >= screenW - 1 || ny < 0 || ny >= screenH - 1;
    });
}

// The arrow keys keep the whole control on the screen.
void OSCPage::ShiftUp(int n)
{
    MoveSelectedUnless(0, -n, [&](const OSCControl& c) { return c.y < n; });
}

void OSCPage::ShiftDown(int n, int screenH)
{
    MoveSelectedUnless(0, n, [&](const OSCControl& c) { return c.y + c.height + n > screenH; });
}

void OSCPage::ShiftLeft(int n)
{
    MoveSelectedUnless(-n, 0, [&](const OSCControl& c) { return c.x < n; });
}

void OSCPage::ShiftRight(int n, int screenW)
{
    MoveSelectedUnless(n, 0, [&](const OSCControl& c) { return c.x + c.width + n > screenW; });
}

bool OSCPage::MoveSelectedUnless(int dx, int dy,
                                 const std::function<bool(const OSCControl&)>& wouldLeave)
{
    for (const auto& control : controls)
        if (control->selected && wouldLeave(*control))
            return false;
    bool moved = false;
    for (auto& control : controls) {
        if (control->selected) {
            control->x = static_cast<std::int16_t>(control->x + dx);
            control->y = static_cast<std::int16_t>(control->y + dy);
            moved = moved || dx != 0 || dy != 0;
        }
    }
    return moved;
}

void OSCPage::ResizeW(int delta, int screenW, VornBasics* host)
{
    Resize(delta, screenW, host, kWidth);
}

void OSCPage::ResizeH(int delta, int screenH, VornBasics* host)
{
    Resize(delta, screenH, host, kHeight);
}

void OSCPage::Resize(int delta, int screenLimit, VornBasics* host, Dimension dimension)
{
    const bool alongWidth = dimension == kWidth;
    auto size = alongWidth ? &OSCControl::width : &OSCControl::height;
    auto other = alongWidth ? &OSCControl::height : &OSCControl::width;
    auto position = alongWidth ? &OSCControl::x : &OSCControl::y;

    if (delta == 0)
        return;
    if (delta > 0) {
        for (const auto& control : controls)
            if (control->selected && (*control).*position + (*control).*size + delta > screenLimit)
                return;
        for (auto& control : controls) {
            if (!control->selected)
                continue;
            (*control).*size = static_cast<std::int16_t>((*control).*size + delta);
            if (control->type == kKnob)  // a knob keeps equal sides
                (*control).*other = static_cast<std::int16_t>((*control).*other + delta);
        }
        return;
    }
    // Shrinking goes control by control: one at its minimum stays as it is.
    const int mode = host->GetSizeLimitMode(-1);
    for (auto& control : controls) {
        if (!control->selected)
            continue;
        const std::optional<int> minimum = MinimumSize(*control, mode, alongWidth);
        const int shrunk = (*control).*size + delta;
        if (!minimum || shrunk < *minimum)
            continue;
        (*control).*size = static_cast<std::int16_t>(shrunk);
        if (control->type == kKnob)
            (*control).*other = (*control).*size;
    }
}

int OSCPage::TestForCollision(const CRect& r, int x, int y) const
{
    CRect moved = r;
    moved.OffsetRect(x - r.left, y - r.top);
    for (const auto& control : controls)
        if (RectsIntersect(control->Rect(), moved))
            return 0;
    return 1;
}

void OSCPage::ToFront()
{
    // Each selected control jumps to the front in turn, so a selected group
    // ends up reversed.
    for (std::size_t i = 1; i < controls.size(); ++i) {
        if (!controls[i]->selected)
            continue;
        auto control = std::move(controls[i]);
        controls.erase(controls.begin() + static_cast<std::ptrdiff_t>(i));
        controls.insert(controls.begin(), std::move(control));
    }
}

void OSCPage::ToBack()
{
    for (std::size_t i = controls.size(); i-- > 0;) {
        if (!controls[i]->selected)
            continue;
        auto control = std::move(controls[i]);
        controls.erase(controls.begin() + static_cast<std::ptrdiff_t>(i));
        controls.push_back(std::move(control));
    }
}

void OSCPage::SetColor(int color)
{
    for (auto& control : controls)
        if (control->selected)
            control->color = static_cast<std::uint8_t>(color);
}

void OSCPage::DeleteSelected()
{
    for (std::size_t i = controls.size(); i-- > 0;)
        if (controls[i]->selected)
            controls.erase(controls.begin() + static_cast<std::ptrdiff_t>(i));
}

void OSCPage::Cut()
{
    ClearClipboard();
    ControlList& clipboard = *GetControlClipboard();
    for (std::size_t i = controls.size(); i-- > 0;) {
        if (!controls[i]->selected)
            continue;
        clipboard.push_back(std::move(controls[i]));
        controls.erase(controls.begin() + static_cast<std::ptrdiff_t>(i));
    }
}

void OSCPage::Copy()
{
    ClearClipboard();
    ControlList& clipboard = *GetControlClipboard();
    for (std::size_t i = controls.size(); i-- > 0;)
        if (controls[i]->selected)
            clipboard.push_back(std::make_unique<OSCControl>(*controls[i]));
}

void OSCPage::Paste(int screenW, int screenH, const CRect& r)
{
    std::vector<CRect> occupied;
    occupied.reserve(controls.size());
    for (const auto& control : controls)
        occupied.push_back(control->Rect());

    std::optional<CPoint> place = FindFreePlace(occupied, r.Width(), r.Height(), screenW, screenH);
    if (!place) {
        const int answer = toolkit::MessageBox(
            nullptr,
            "Insufficient space could be found on the current page to add the controls\n"
            "without conflicting with existing controls.\n\n"
            "Click YES to add the controls\nClick NO to cancel the paste.\n\n"
            "(Alternately, create a new Page to paste the controls into)",
            "OSC", toolkit::kYesNo);
        if (answer != toolkit::kAnswerYes)
            return;
        place = CPoint{0, 0};
    }

    // Copies go to the front one by one; the clipboard's reversed order makes
    // the group keep the stacking it had.
    for (const auto& source : *GetControlClipboard()) {
        auto copy = std::make_unique<OSCControl>(*source);
        copy->x = static_cast<std::int16_t>(source->x - r.left + place->x);
        copy->y = static_cast<std::int16_t>(source->y - r.top + place->y);
        controls.insert(controls.begin(), std::move(copy));
    }
}

void OSCPage::SearchAndReplace(std::string_view search, std::string_view replace, bool inName,
                               bool inCommand)
{
    for (auto& control : controls)
        control->SearchAndReplace(search, replace, inName, inCommand);
}
