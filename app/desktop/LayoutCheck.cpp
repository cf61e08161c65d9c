#include "LayoutCheck.h"

#include "document/LayoutFile.h"
#include "document/OSCProject.h"
#include "host/VornBasics.h"

#include <fstream>
#include <iterator>

namespace {

// Keeps the reader's complaint instead of showing it.
class QuietHost : public VornBasics {
public:
    std::string error;

    void ShowError(const char* text) override { error = text; }
    int GetSizeLimitMode(int) override { return 0; }
    std::string GetDataFolder() override { return {}; }
    int AskSaveChanges(void*, const char*) override { return 0; }
    int QueryTitle(int) override { return 0; }
};

}  // namespace

std::optional<std::string> ReadLayoutAt(const std::string& path, OSCProject& project)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return "there is no such file, or it cannot be read";
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (bytes.empty())
        return "the file is empty";
    QuietHost host;
    std::size_t stoppedAt = 0;
    const int result = ReadLayoutFile(bytes, project, &host, &stoppedAt);
    if (result == kNotLayoutFile)
        return "it is not a layout file (those start with KLYF)";
    if (result != 0)
        return host.error + " (reading stopped at byte " + std::to_string(stoppedAt) + ")";
    return std::nullopt;
}

std::optional<std::string> WhyNotALayout(const std::string& path)
{
    OSCProject project;
    return ReadLayoutAt(path, project);
}
