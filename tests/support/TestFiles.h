#pragma once

#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

// Files, archives and shell commands as the tests see them.

std::optional<std::string> ReadWholeFile(const std::string& path);
void WriteWholeFile(const std::string& path, const std::string& bytes);

// The entries of the zip archive at path, read with libzip; nullopt when
// libzip cannot read it.
struct ZipEntry {
    std::string name;
    std::string bytes;
    int method = -1;  // ZIP_CM_*
};
std::optional<std::vector<ZipEntry>> ReadZipEntries(const std::string& path);

// Writes a zip archive holding the entries, deflated, in order.
void WriteZip(const std::string& path, const std::vector<ZipEntry>& entries);

// The bytes a case describes: a text as it stands, or, for texts too large to
// write out, a list of [text, times] whose repeats follow each other.
std::string CaseBytes(const nlohmann::json& bytes);

// Runs a shell command; its exit status and what it printed on both streams.
struct CommandResult {
    int status = -1;
    std::string output;
};
CommandResult RunCommand(const std::string& command);
bool HasTool(const char* name);
std::string ShellQuoted(const std::string& text);

// What write puts into a stream, caught in memory.
std::string Captured(const std::function<void(std::FILE*)>& write);

// The cases of one rule, from a JSON file beside the test: the array stored
// under key in the file at path, which must hold some.
nlohmann::json Cases(const std::string& path, const char* key);
