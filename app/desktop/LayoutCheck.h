#pragma once

#include <optional>
#include <string>

class OSCProject;

// Reads the layout file at path into project; why it cannot, or nothing when
// it reads whole.
std::optional<std::string> ReadLayoutAt(const std::string& path, OSCProject& project);

// Why the file at path cannot be opened as a layout, or nothing when it can:
// checked before an editor opens it, so that a damaged file is refused with
// its reason instead of opening as a new, empty layout under its name.
std::optional<std::string> WhyNotALayout(const std::string& path);
