#include "TestFiles.h"

#include <zip.h>

#include <sys/wait.h>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

std::optional<std::string> ReadWholeFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void WriteWholeFile(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

std::optional<std::vector<ZipEntry>> ReadZipEntries(const std::string& path)
{
    int error = 0;
    const std::unique_ptr<zip_t, void (*)(zip_t*)> archive(
        zip_open(path.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &error), zip_discard);
    if (!archive)
        return std::nullopt;
    std::vector<ZipEntry> entries;
    for (zip_uint64_t i = 0; i < static_cast<zip_uint64_t>(zip_get_num_entries(archive.get(), 0));
         ++i) {
        zip_stat_t stat;
        zip_file_t* file = nullptr;
        if (zip_stat_index(archive.get(), i, 0, &stat) != 0 ||
            !(file = zip_fopen_index(archive.get(), i, 0)))
            return std::nullopt;
        ZipEntry entry{stat.name, std::string(stat.size, '\0'), stat.comp_method};
        const zip_int64_t read = zip_fread(file, entry.bytes.data(), stat.size);
        zip_fclose(file);
        if (read != static_cast<zip_int64_t>(stat.size))
            return std::nullopt;
        entries.push_back(std::move(entry));
    }
    return entries;
}

void WriteZip(const std::string& path, const std::vector<ZipEntry>& entries)
{
    int error = 0;
    zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    if (!archive)
        throw std::runtime_error("cannot create " + path);
    for (const ZipEntry& entry : entries) {
        zip_source_t* source =
            zip_source_buffer(archive, entry.bytes.data(), entry.bytes.size(), 0);
        if (!source || zip_file_add(archive, entry.name.c_str(), source, 0) < 0)
            throw std::runtime_error("cannot add " + entry.name + " to " + path);
    }
    if (zip_close(archive) != 0)
        throw std::runtime_error("cannot write " + path);
}

std::string CaseBytes(const nlohmann::json& bytes)
{
    if (bytes.is_string())
        return bytes.get<std::string>();
    std::string text;
    for (const auto& [unit, times] :
         bytes.get<std::vector<std::pair<std::string, std::size_t>>>()) {
        text.reserve(text.size() + unit.size() * times);
        for (std::size_t i = 0; i < times; ++i)
            text += unit;
    }
    return text;
}

CommandResult RunCommand(const std::string& command)
{
    CommandResult result;
    std::FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (!pipe)
        return result;
    char chunk[4096];
    for (std::size_t got; (got = std::fread(chunk, 1, sizeof chunk, pipe)) > 0;)
        result.output.append(chunk, got);
    const int status = ::pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

bool HasTool(const char* name)
{
    return RunCommand(std::string("command -v ") + name + " >/dev/null").status == 0;
}

std::string ShellQuoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

std::string Captured(const std::function<void(std::FILE*)>& write)
{
    char* buffer = nullptr;
    std::size_t size = 0;
    std::FILE* stream = ::open_memstream(&buffer, &size);
    if (!stream)
        return {};
    write(stream);
    std::fclose(stream);
    std::string text(buffer, size);
    std::free(buffer);
    return text;
}

nlohmann::json Cases(const std::string& path, const char* key)
{
    const nlohmann::json cases = nlohmann::json::parse(ReadWholeFile(path).value_or("{}"));
    if (cases.value(key, nlohmann::json()).empty())  // a misspelt key would run no cases at all
        throw std::runtime_error(path + " has no cases named " + key);
    return cases[key];
}
