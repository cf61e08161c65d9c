#pragma once

#include <string>
#include <string_view>

// A file that takes the place of target only once it is complete. It is made
// in target's folder, so that the final rename never crosses file systems, and
// keeps target's extension, for writers that look at it. Until Commit it is
// removed on destruction: a failed write leaves no file behind, and an
// existing target untouched. A target that is a symbolic link is written
// through: the file it names is replaced and the link kept. A file replaced
// keeps its permissions.
class TemporaryOutput {
public:
    explicit TemporaryOutput(std::string target);
    TemporaryOutput(const TemporaryOutput&) = delete;
    TemporaryOutput& operator=(const TemporaryOutput&) = delete;
    ~TemporaryOutput();

    // Makes the empty temporary file; false with a reason in error.
    bool Create(std::string& error);
    const std::string& Path() const { return path_; }
    // Renames the temporary file onto target; false with a reason in error.
    bool Commit(std::string& error);

private:
    std::string target_;
    std::string path_;
    bool committed_ = false;
};

// Writes bytes in place of the file at path through a TemporaryOutput; false
// with a reason in error. Paths are bytes, whatever their encoding.
bool ReplaceFile(const std::string& path, std::string_view bytes, std::string& error);
