#pragma once

#include "OSCControl.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

class OSCPage;
class OSCProject;

// A page as it stood, copied whole.
struct PageCopy {
    std::array<char, 256> name{};
    std::vector<OSCControl> controls;
};

// The whole layout as it stood when a change began, selection included.
struct LayoutSnapshot {
    std::uint8_t device = 1;
    std::uint8_t orientation = 1;
    std::int32_t currentPage = 0;
    std::vector<PageCopy> pages;

    static LayoutSnapshot Of(const OSCProject& project);
    // Makes project the layout this snapshot holds, selection and values included.
    void CopyInto(OSCProject& project) const;
};

// What one change did to a layout, kept small: controls that only moved or
// changed size are kept as runs of equal offsets, other changed controls as
// their two records, and inserted or removed controls and pages as copies of
// what differs between the two states. It undoes and redoes exactly, the
// selection and the current page included, as long as it is applied to the
// state it left.
class LayoutChange {
public:
    static LayoutChange Between(const LayoutSnapshot& before, const OSCProject& after);

    // False when only the selection, the current page or test-mode values differ.
    bool ChangesLayout() const;
    // True when every changed control only moved, keeping its size.
    bool MovesOnly() const;
    void Undo(OSCProject& project) const;
    void Redo(OSCProject& project) const;
    // Roughly what the change holds in memory.
    std::size_t Bytes() const;

    struct SelectionRun {  // controls [first, end) of a page were selected
        int page, first, end;
    };
    struct GeometryRun {  // controls [first, end) moved and resized by the same amounts
        int first, end;
        std::int16_t dx, dy, dWidth, dHeight;
    };
    struct RecordChange {
        int index;
        OSCControl before, after;
    };
    struct ControlSplice {  // controls from first on were replaced
        int first = 0;
        std::vector<OSCControl> before, after;
    };
    struct PageEdit {
        int page;
        std::array<char, 256> nameBefore{}, nameAfter{};
        std::vector<GeometryRun> geometry;
        std::vector<RecordChange> records;
        ControlSplice splice;  // used only when the number of controls changed
        bool renamed = false, spliced = false;
    };
    struct PageSplice {  // pages from first on were replaced
        int first = 0;
        std::vector<PageCopy> before, after;
    };
    struct State {
        std::uint8_t device, orientation;
        std::int32_t currentPage;
        std::vector<SelectionRun> selection;
    };

private:
    void Apply(OSCProject& project, bool undo) const;

    State before_{}, after_{};
    std::vector<PageEdit> pageEdits_;
    PageSplice pageSplice_;
    bool pagesSpliced_ = false;
};
