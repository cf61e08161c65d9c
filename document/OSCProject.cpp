#include "OSCProject.h"

#include "ByteReader.h"
#include "ByteWriter.h"
#include "ChunkHeader.h"
#include "ControlClipboard.h"
#include "ControlTables.h"
#include "TextField.h"
#include "host/Toolkit.h"
#include "host/VornBasics.h"

#include <algorithm>
#include <new>

namespace {

constexpr int kChunkHeaderBytes = 8;   // tag and length
constexpr int kPasteMargin = 8;        // free space kept around a pasted group
constexpr int kNoGroupCorner = 32767;  // start of the group rectangle's search

}  // namespace

OSCProject::OSCProject()
{
    pages.push_back(std::make_unique<OSCPage>());
}

int OSCProject::GetScreenW() const
{
    return ScreenW[ScreenIndex(device, orientation)];
}

int OSCProject::GetScreenH() const
{
    return ScreenH[ScreenIndex(device, orientation)];
}

OSCPage* OSCProject::CurrentPage() const
{
    if (pages.empty())
        return nullptr;
    const int last = static_cast<int>(pages.size()) - 1;
    return pages[static_cast<std::size_t>(std::clamp(currentPage, 0, last))].get();
}

void OSCProject::SelectAll()
{
    CurrentPage()->SelectAll();
}
void OSCProject::UnselectAll()
{
    CurrentPage()->UnselectAll();
}
int OSCProject::GetNumSelected() const
{
    return CurrentPage()->GetNumSelected();
}
int OSCProject::GetNumControls() const
{
    return CurrentPage()->GetNumControls();
}

void OSCProject::GetSelectedControls(std::vector<OSCControl*>& out) const
{
    CurrentPage()->GetSelectedControls(out);
}

void OSCProject::SelectRange(int l, int t, int r, int b)
{
    CurrentPage()->SelectRange(l, t, r, b);
}
OSCControl* OSCProject::GetAt(int x, int y) const
{
    return CurrentPage()->GetAt(x, y);
}

bool OSCProject::MoveSelected(int dx, int dy)
{
    return CurrentPage()->MoveSelected(dx, dy, GetScreenW(), GetScreenH());
}

void OSCProject::ShiftUp(int n)
{
    CurrentPage()->ShiftUp(n);
}
void OSCProject::ShiftDown(int n)
{
    CurrentPage()->ShiftDown(n, GetScreenH());
}
void OSCProject::ShiftLeft(int n)
{
    CurrentPage()->ShiftLeft(n);
}
void OSCProject::ShiftRight(int n)
{
    CurrentPage()->ShiftRight(n, GetScreenW());
}

void OSCProject::ResizeW(int delta, VornBasics* host)
{
    CurrentPage()->ResizeW(delta, GetScreenW(), host);
}

void OSCProject::ResizeH(int delta, VornBasics* host)
{
    CurrentPage()->ResizeH(delta, GetScreenH(), host);
}

void OSCProject::ToFront()
{
    CurrentPage()->ToFront();
}
void OSCProject::ToBack()
{
    CurrentPage()->ToBack();
}
void OSCProject::SetColor(int color)
{
    CurrentPage()->SetColor(color);
}

void OSCProject::Clear()
{
    const int answer =
        toolkit::MessageBox(nullptr, "Are you sure you want to remove the selected controls?",
                            "OSC Editor", toolkit::kYesNo);
    if (answer == toolkit::kAnswerYes)
        CurrentPage()->DeleteSelected();
}

void OSCProject::Cut()
{
    CurrentPage()->Cut();
}
void OSCProject::Copy()
{
    CurrentPage()->Copy();
}

void OSCProject::Paste()
{
    CRect group{kNoGroupCorner, kNoGroupCorner, 0, 0};
    for (const auto& control : *GetControlClipboard()) {
        group.left = std::min<int>(group.left, control->x);
        group.top = std::min<int>(group.top, control->y);
        group.right = std::max(group.right, control->x + control->width);
        group.bottom = std::max(group.bottom, control->y + control->height);
    }
    group.NormalizeRect();
    group.InflateRect(kPasteMargin, kPasteMargin);

    if (group.Width() > GetScreenW() || group.Height() > GetScreenH()) {
        toolkit::MessageBox(nullptr,
                            "The OSC controls on the clipboard are larger then the specified "
                            "screen.\nPlease create a smaller layout to paste.",
                            "OSC", toolkit::kNotice);
        return;
    }
    CurrentPage()->Paste(GetScreenW(), GetScreenH(), group);
}

void OSCProject::SetPageName(const char* s)
{
    CopyTextField(CurrentPage()->name, s);
}

OSCPage* OSCProject::AddPage()
{
    pages.push_back(std::make_unique<OSCPage>());
    currentPage = static_cast<std::int32_t>(pages.size()) - 1;
    return pages.back().get();
}

void OSCProject::RemovePage()
{
    if (pages.size() < 2)
        return;
    const int answer = toolkit::MessageBox(
        nullptr, "Are you sure you want to remove the current page and associated controls?",
        "OSC Editor", toolkit::kYesNo);
    if (answer != toolkit::kAnswerYes)
        return;
    const int last = static_cast<int>(pages.size()) - 1;
    pages.erase(pages.begin() + std::clamp(currentPage, 0, last));
    const int count = static_cast<int>(pages.size());
    if (currentPage >= count)
        currentPage = count - 1;
    if (currentPage < 0)
        currentPage = 0;
}

void OSCProject::SearchAndReplace(std::string_view search, std::string_view replace, bool inName,
                                  bool inCommand)
{
    for (auto& page : pages)
        page->SearchAndReplace(search, replace, inName, inCommand);
}

int OSCProject::GetSize() const
{
    int size = 4;
    for (const auto& page : pages)
        size += page->GetSize() + kChunkHeaderBytes;
    return size;
}

int OSCProject::Read(ByteReader& file, VornBasics* host, int& remaining)
{
    // The byte after the body length is where a device type would stand; the
    // device never travels through the file, so it only lands in the counter.
    remaining = (remaining & ~0xFF) | file.ReadByte();
    const std::uint8_t readOrientation = file.ReadByte();
    std::uint16_t count = file.ReadRaw<std::uint16_t>();
    host->FlipUShort(count);
    if (file.Failed()) {
        host->ShowError(kLayoutReadError);
        return 1;
    }

    // Pages are read aside, so that a bad file leaves the project untouched.
    std::vector<std::unique_ptr<OSCPage>> readPages;
    for (int i = 0; i < count; ++i) {
        std::unique_ptr<OSCPage> page(new (std::nothrow) OSCPage);
        if (!page) {
            host->ShowError("Error allocating Vorn OSC Page");
            return 3;
        }
        readPages.push_back(std::move(page));
        int pageRemaining = 0;
        if (!ReadChunkHeader(file, host, "PAGE", pageRemaining))
            return 1;
        if (const int result = readPages.back()->Read(file, host, pageRemaining))
            return result;
    }

    orientation = readOrientation;
    if (!readPages.empty())
        pages = std::move(readPages);
    return 0;
}

int OSCProject::Write(ByteWriter& file, VornBasics* host)
{
    file.Write("KLYF", 4);
    const std::uint32_t bodyLength = static_cast<std::uint32_t>(GetSize());
    std::uint32_t length = bodyLength;
    host->FlipULong(length);
    file.WriteRaw(length);
    // Readers take this byte for the device slot; it has always held the
    // length's low byte, and files must stay identical.
    file.WriteByte(static_cast<std::uint8_t>(bodyLength & 0xFF));
    file.WriteByte(orientation);
    std::uint16_t count = static_cast<std::uint16_t>(pages.size());
    host->FlipUShort(count);
    file.WriteRaw(count);
    for (auto& page : pages)
        if (const int result = page->Write(file, host))
            return result;
    return 0;
}
