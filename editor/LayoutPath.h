#pragma once

#include <string>
#include <string_view>

// A path split at its last '/': the folder (empty when there is none, "/" for
// the root) and the file name.
struct SplitPath {
    std::string folder;
    std::string name;
};
SplitPath SplitFileName(std::string_view path);

// name without suffix, when name is longer than suffix and ends with it in
// any case; otherwise name itself. A file named just ".VornOsc" keeps its name.
std::string_view WithoutSuffix(std::string_view name, std::string_view suffix);

// The longest path the editor keeps: its path field holds 256 bytes.
constexpr std::size_t kMaxPathBytes = 255;
