#pragma once

#include "formats/FormatHost.h"

#include <string>
#include <vector>

// The host object of the command line. Errors are collected, not shown: the
// command that ran the document prints them as one line with the file name and
// the place where things went wrong, which only it knows.
class CommandLineHost : public FormatHost {
public:
    CommandLineHost() = default;
    CommandLineHost(const CommandLineHost&) = delete;
    CommandLineHost& operator=(const CommandLineHost&) = delete;
    // Removes the data folder with whatever the document left in it.
    ~CommandLineHost() override;

    void ShowError(const char* text) override;
    int GetSizeLimitMode(int selector) override;
    // A folder of this run's own, made on first use, so that exports running
    // side by side never share their temporary files.
    std::string GetDataFolder() override;
    // Nobody is there to ask: changes are never saved behind the user's back.
    int AskSaveChanges(void* editor, const char* path) override;
    int QueryTitle(int selector) override;

    bool HasErrors() const { return !errors_.empty(); }
    // The errors shown so far as one line, their texts trimmed and joined by "; ".
    std::string ErrorLine() const;
    void ClearErrors() { errors_.clear(); }
    // The message boxes shown, then the errors, as one line; both are cleared.
    std::string TakeFailures() override;

private:
    std::vector<std::string> errors_;
    std::string dataFolder_;
};
