#include "TemporaryOutput.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

namespace {

// Enough for any chain of links a user makes, and an end to a loop of them.
constexpr int kMostLinksFollowed = 40;

// The file that path names once its links are followed; a link that names no
// file yet names the file to make.
std::string FileNamedBy(std::string path)
{
    namespace fs = std::filesystem;
    std::error_code unreadable;
    for (int links = 0; links < kMostLinksFollowed && fs::is_symlink(path, unreadable); ++links) {
        const fs::path named = fs::read_symlink(path, unreadable);
        if (unreadable)
            break;
        path =
            named.is_absolute() ? named.string() : (fs::path(path).parent_path() / named).string();
    }
    return path;
}

}  // namespace

TemporaryOutput::TemporaryOutput(std::string target) : target_(FileNamedBy(std::move(target))) {}

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
    // A file the user made private, or shared with a group, stays so.
    namespace fs = std::filesystem;
    std::error_code unreadable;
    if (const fs::file_status old = fs::status(target_, unreadable); fs::exists(old))
        fs::permissions(path_, old.permissions(), unreadable);
    if (std::rename(path_.c_str(), target_.c_str()) != 0) {
        error = std::string("cannot replace the file: ") + std::strerror(errno);
        return false;
    }
    committed_ = true;
    return true;
}

bool ReplaceFile(const std::string& path, std::string_view bytes, std::string& error)
{
    TemporaryOutput output(path);
    if (!output.Create(error))
        return false;
    std::FILE* file = std::fopen(output.Path().c_str(), "wb");
    const bool written =
        file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const int writeError = errno;
    if (file == nullptr || std::fclose(file) != 0 || !written) {
        error = std::string("cannot write: ") + std::strerror(written ? errno : writeError);
        return false;
    }
    return output.Commit(error);
}
