#pragma once

#include "OSCControl.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

class OSCProject;

// One page of a layout: its controls, index 0 front-most.
class OSCPage {
public:
    char name[256];
    std::vector<std::unique_ptr<OSCControl>> controls;

    OSCPage();

    int GetSize() const;
    int Read(ByteReader& file, VornBasics* host, int& remaining);
    int Write(ByteWriter& file, VornBasics* host);

    void SelectAll();
    void UnselectAll();
    int GetNumSelected() const;
    int GetNumControls() const;
    void GetSelectedControls(std::vector<OSCControl*>& out) const;
    void SelectRange(int l, int t, int r, int b);
    OSCControl* GetAt(int px, int py) const;

    // True when the selection moved: a move that would leave the screen moves nothing.
    bool MoveSelected(int dx, int dy, int screenW, int screenH);
    void ShiftUp(int n);
    void ShiftDown(int n, int screenH);
    void ShiftLeft(int n);
    void ShiftRight(int n, int screenW);
    void ResizeW(int delta, int screenW, VornBasics* host);
    void ResizeH(int delta, int screenH, VornBasics* host);

    // 0 when r, moved to (x, y), shares a point with any control; else 1.
    int TestForCollision(const CRect& r, int x, int y) const;

    void ToFront();
    void ToBack();
    void SetColor(int color);
    void DeleteSelected();

    void Cut();
    void Copy();
    void Paste(int screenW, int screenH, const CRect& r);

    void SearchAndReplace(std::string_view search, std::string_view replace, bool inName,
                          bool inCommand);

    void ExportTouchOSCControls(std::FILE* out, const OSCProject* project) const;
    void ExportLemurControls(std::FILE* out);

private:
    // Moves every selected control by (dx, dy), or none if one would leave;
    // true when a control moved.
    bool MoveSelectedUnless(int dx, int dy,
                            const std::function<bool(const OSCControl&)>& wouldLeave);

    enum Dimension { kWidth, kHeight };
    void Resize(int delta, int screenLimit, VornBasics* host, Dimension dimension);
};
