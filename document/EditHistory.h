#pragma once

#include "LayoutChange.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>

class OSCProject;

// The steps a user can undo and redo on one layout, and which state of them
// was last saved. Past a memory cap the oldest steps are forgotten.
class EditHistory {
public:
    static constexpr std::size_t kDefaultByteCap = std::size_t{256} << 20;

    explicit EditHistory(std::size_t byteCap = kDefaultByteCap) : byteCap_(byteCap) {}

    // A new step, done already; the steps that could be redone are dropped.
    void Add(std::string name, LayoutChange change);
    bool CanUndo() const { return done_ > 0; }
    bool CanRedo() const { return done_ < steps_.size(); }
    // The name of the step Undo or Redo would take back or do again.
    const std::string& UndoName() const;
    const std::string& RedoName() const;
    void Undo(OSCProject& project);
    void Redo(OSCProject& project);

    // The layout as it stands now is the one saved.
    void MarkSaved() { saved_ = done_; }
    // No state of the history is the one saved, as for a layout brought in.
    void MarkNeverSaved() { saved_.reset(); }
    bool AtSavedState() const { return saved_ == done_; }

    std::size_t Bytes() const { return bytes_; }
    std::size_t Steps() const { return steps_.size(); }

private:
    struct Step {
        std::string name;
        LayoutChange change;
        std::size_t bytes;
    };
    void DropOldestPastCap();

    std::deque<Step> steps_;
    std::size_t done_ = 0;  // steps_[0, done_) can be undone, the rest redone
    std::optional<std::size_t> saved_ = 0;
    std::size_t bytes_ = 0;
    std::size_t byteCap_;
};
