#pragma once

#include "OSCPage.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

// A whole layout: the target screen and the pages. Most operations act on the
// current page.
class OSCProject {
public:
    std::uint8_t device = 1;       // DeviceType
    std::uint8_t orientation = 1;  // Orientation
    std::vector<std::unique_ptr<OSCPage>> pages;
    std::int32_t currentPage = 0;

    OSCProject();

    int GetScreenW() const;
    int GetScreenH() const;
    OSCPage* CurrentPage() const;

    void SelectAll();
    void UnselectAll();
    int GetNumSelected() const;
    int GetNumControls() const;
    void GetSelectedControls(std::vector<OSCControl*>& out) const;
    void SelectRange(int l, int t, int r, int b);
    OSCControl* GetAt(int x, int y) const;
    bool MoveSelected(int dx, int dy);
    void ShiftUp(int n);
    void ShiftDown(int n);
    void ShiftLeft(int n);
    void ShiftRight(int n);
    void ResizeW(int delta, VornBasics* host);
    void ResizeH(int delta, VornBasics* host);
    void ToFront();
    void ToBack();
    void SetColor(int color);
    // Asks first; deletes the selected controls of the current page on Yes.
    void Clear();

    void Cut();
    void Copy();
    void Paste();

    void SetPageName(const char* s);
    OSCPage* AddPage();
    // Asks first; removes the current page on Yes. The last page stays.
    void RemovePage();

    void SearchAndReplace(std::string_view search, std::string_view replace, bool inName,
                          bool inCommand);

    int GetSize() const;
    // Called with the file positioned after the magic and the body length.
    int Read(ByteReader& file, VornBasics* host, int& remaining);
    int Write(ByteWriter& file, VornBasics* host);

    void ExportTouchOSCFile(VornBasics* host, const char* path);
    void ExportLemurFile(VornBasics* host, const char* path);
    // Ours: the layout as a current TouchOSC file (formats/tosc).
    void ExportToscFile(VornBasics* host, const char* path);
    // Writes text's base64 form into out, at most 256 bytes; out must hold 257.
    static void ConvertToBase64(const char* text, char* out);
};
