#pragma once

#include <filesystem>
#include <string>
#include <vector>

// What one run of the vornosc binary did.
struct VornoscRun {
    int status = -1;  // exit status, or -1 when it did not exit normally
    std::string out;
    std::string err;
};

// Runs the built vornosc with args in folder, with TMPDIR pointing into it,
// as a user would from a shell there.
class VornoscRunner {
public:
    explicit VornoscRunner(std::filesystem::path folder);

    VornoscRun Run(const std::vector<std::string>& args) const;
    // Starts several runs at once and waits for all of them.
    std::vector<VornoscRun> RunTogether(const std::vector<std::vector<std::string>>& runs) const;

    // The folder that the runs get as TMPDIR.
    std::filesystem::path TempFolder() const { return folder_ / "tmp"; }

private:
    std::filesystem::path folder_;
};
