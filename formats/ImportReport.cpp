#include "ImportReport.h"

#include <utility>

ImportReport::Tally& ImportReport::Find(std::vector<Tally>& tallies, std::string_view singular,
                                        std::string_view plural)
{
    for (Tally& tally : tallies) {
        if (tally.singular == singular)
            return tally;
    }
    return tallies.emplace_back(Tally{std::string(singular), std::string(plural)});
}

std::string ImportReport::Counted(const Tally& tally)
{
    return std::to_string(tally.count) + " " + (tally.count == 1 ? tally.singular : tally.plural);
}

void ImportReport::LeaveOut(std::string_view kind)
{
    ++Find(leftOut_, kind, kind).count;
}

void ImportReport::LeaveOut(std::string_view singular, std::string_view plural, long long more)
{
    if (more > 0)
        Find(leftOut_, singular, plural).count += more;
}

void ImportReport::Count(std::string_view singular, std::string_view plural, long long more)
{
    if (more > 0)
        Find(counts_, singular, plural).count += more;
}

void ImportReport::Note(std::string line)
{
    notes_.push_back(std::move(line));
}

std::vector<std::string> ImportReport::Lines() const
{
    std::vector<std::string> lines;
    if (!leftOut_.empty()) {
        std::string line = "left out";
        for (std::size_t i = 0; i < leftOut_.size(); ++i)
            line += (i == 0 ? " " : ", ") + Counted(leftOut_[i]);
        lines.push_back(line);
    }
    for (const Tally& tally : counts_)
        lines.push_back(Counted(tally));
    lines.insert(lines.end(), notes_.begin(), notes_.end());
    return lines;
}
