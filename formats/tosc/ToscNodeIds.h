#pragma once

#include <cstdint>
#include <string>

class OSCProject;

// The IDs of one exported file's nodes, shaped as the app writes its own
// (lowercase hex in groups of 8-4-4-4-12). They come from the layout and a
// count, not from a clock or chance: the same layout always exports to the
// same bytes, which golden files and anyone comparing two exports rely on. The
// count makes each node's ID its own; the layout makes two layouts' IDs differ.
class ToscNodeIds {
public:
    explicit ToscNodeIds(const OSCProject& project);

    // Appends the next node's ID.
    void AppendNext(std::string& xml);

private:
    std::uint64_t layout_ = 0;
    std::uint64_t count_ = 0;
};
