#include "EditHistory.h"

#include <utility>

void EditHistory::Add(std::string name, LayoutChange change)
{
    while (steps_.size() > done_) {
        bytes_ -= steps_.back().bytes;
        steps_.pop_back();
    }
    if (saved_ && *saved_ > done_)
        saved_.reset();  // the saved state was among the dropped ones
    const std::size_t bytes = change.Bytes() + name.size();
    steps_.push_back({std::move(name), std::move(change), bytes});
    bytes_ += bytes;
    ++done_;
    DropOldestPastCap();
}

void EditHistory::DropOldestPastCap()
{
    // The newest step stays, whatever it holds.
    while (bytes_ > byteCap_ && steps_.size() > 1) {
        bytes_ -= steps_.front().bytes;
        steps_.pop_front();
        --done_;
        if (saved_ && *saved_ == 0)
            saved_.reset();
        else if (saved_)
            --*saved_;
    }
}

const std::string& EditHistory::UndoName() const
{
    static const std::string none;
    return CanUndo() ? steps_[done_ - 1].name : none;
}

const std::string& EditHistory::RedoName() const
{
    static const std::string none;
    return CanRedo() ? steps_[done_].name : none;
}

void EditHistory::Undo(OSCProject& project)
{
    if (!CanUndo())
        return;
    --done_;
    steps_[done_].change.Undo(project);
}

void EditHistory::Redo(OSCProject& project)
{
    if (!CanRedo())
        return;
    steps_[done_].change.Redo(project);
    ++done_;
}
