#include "TemporaryOutput.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

TemporaryOutput::TemporaryOutput(std::string target) : target_(std::move(target)) {}

TemporaryOutput::~TemporaryOutput()
{
    if (!path_.empty() && !committed_)
        std::remove(path_.c_str());
}

bool TemporaryOutput::Create(std::string& error)
{
    const std::filesystem::path target(target_);
    const std::string extension = target.extension().string();
    std::filesystem::path folder = target.parent_path();
    if (folder.empty())
        folder = ".";
    std::string pattern =
        (folder / ("." + target.stem().string() + "-XXXXXX")).string() + extension;
    const int fd = ::mkstemps(pattern.data(), static_cast<int>(extension.size()));
    if (fd < 0) {
        error = std::string("cannot create a file in its folder: ") + std::strerror(errno);
        return false;
    }
    path_ = pattern;
    // mkstemps makes the file private; the result should be like any new file.
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(fd, 0666 & ~mask);
    ::close(fd);
    return true;
}

bool TemporaryOutput::Commit(std::string& error)
{
    if (std::rename(path_.c_str(), target_.c_str()) != 0) {
        error = std::string("cannot replace the file: ") + std::strerror(errno);
        return false;
    }
    committed_ = true;
    return true;
}
