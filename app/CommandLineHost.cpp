#include "CommandLineHost.h"

#include "HeadlessToolkit.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace {

constexpr int kDontSave = 3;

std::string Trimmed(const std::string& text)
{
    const char* blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace

CommandLineHost::~CommandLineHost()
{
    if (!dataFolder_.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(dataFolder_, ignored);
    }
}

void CommandLineHost::ShowError(const char* text)
{
    const std::string line = Trimmed(text);
    if (!line.empty())
        errors_.push_back(line);
}

int CommandLineHost::GetSizeLimitMode(int)
{
    return 0;
}

std::string CommandLineHost::GetDataFolder()
{
    if (dataFolder_.empty()) {
        std::error_code error;
        std::string folder = std::filesystem::temp_directory_path(error).string();
        if (error)
            folder = "/tmp";
        std::string pattern = folder + "/vornosc-XXXXXX";
        if (::mkdtemp(pattern.data()) != nullptr)
            dataFolder_ = pattern;
    }
    return dataFolder_;
}

int CommandLineHost::AskSaveChanges(void*, const char*)
{
    return kDontSave;
}

int CommandLineHost::QueryTitle(int)
{
    return 0;
}

std::string CommandLineHost::ErrorLine() const
{
    std::string line;
    for (const std::string& error : errors_) {
        if (!line.empty())
            line += "; ";
        line += error;
    }
    return line;
}

std::string CommandLineHost::TakeFailures()
{
    std::vector<std::string> lines = headless::TakeMessages();
    if (HasErrors())
        lines.push_back(ErrorLine());
    ClearErrors();
    std::string line;
    for (const std::string& failure : lines)
        line += (line.empty() ? "" : "; ") + failure;
    return line;
}
