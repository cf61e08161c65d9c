#pragma once

#include <string>
#include <string_view>
#include <vector>

// What an import left out or changed, told to the user once it is done: one
// line per kind of change, each kind in the order it was first met.
class ImportReport {
public:
    // One object of a kind the editor has no place for, named as the file names it.
    void LeaveOut(std::string_view kind);
    // More of something left out, as in "1357 hidden controls"; none adds nothing.
    void LeaveOut(std::string_view singular, std::string_view plural, long long more);
    // More of something counted, as in "3 MIDI settings not kept"; none adds no line.
    void Count(std::string_view singular, std::string_view plural, long long more = 1);
    // A change told once, as it stands.
    void Note(std::string line);

    bool Empty() const { return leftOut_.empty() && counts_.empty() && notes_.empty(); }
    // "left out 12 led, 1 timev" first, then the counts, then the notes.
    std::vector<std::string> Lines() const;

private:
    struct Tally {
        std::string singular;
        std::string plural;
        long long count = 0;
    };
    static Tally& Find(std::vector<Tally>& tallies, std::string_view singular,
                       std::string_view plural);
    // "3 MIDI settings not kept"
    static std::string Counted(const Tally& tally);

    std::vector<Tally> leftOut_;
    std::vector<Tally> counts_;
    std::vector<std::string> notes_;
};
