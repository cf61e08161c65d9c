#include "VornoscRunner.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <fstream>
#include <sstream>

extern char** environ;

namespace {

std::string Slurp(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

VornoscRunner::VornoscRunner(std::filesystem::path folder) : folder_(std::move(folder))
{
    std::filesystem::create_directories(TempFolder());
}

std::vector<VornoscRun> VornoscRunner::RunTogether(
    const std::vector<std::vector<std::string>>& runs) const
{
    std::vector<std::string> environment{"TMPDIR=" + TempFolder().string()};
    for (char** variable = environ; *variable != nullptr; ++variable) {
        if (std::string(*variable).rfind("TMPDIR=", 0) != 0)
            environment.emplace_back(*variable);
    }
    std::vector<char*> envp;
    for (std::string& variable : environment)
        envp.push_back(variable.data());
    envp.push_back(nullptr);

    std::vector<pid_t> pids;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        std::vector<std::string> args{VORNOSC_BINARY};
        args.insert(args.end(), runs[i].begin(), runs[i].end());
        std::vector<char*> argv;
        for (std::string& arg : args)
            argv.push_back(arg.data());
        argv.push_back(nullptr);

        const std::string out = (folder_ / (".out" + std::to_string(i))).string();
        const std::string err = (folder_ / (".err" + std::to_string(i))).string();
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addchdir_np(&actions, folder_.c_str());
        posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                         0644);
        posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                         0644);
        pid_t pid = -1;
        if (posix_spawn(&pid, VORNOSC_BINARY, &actions, nullptr, argv.data(), envp.data()) != 0)
            pid = -1;
        posix_spawn_file_actions_destroy(&actions);
        pids.push_back(pid);
    }

    std::vector<VornoscRun> results(runs.size());
    for (std::size_t i = 0; i < runs.size(); ++i) {
        int status = 0;
        if (pids[i] > 0 && waitpid(pids[i], &status, 0) == pids[i] && WIFEXITED(status))
            results[i].status = WEXITSTATUS(status);
        const auto out = folder_ / (".out" + std::to_string(i));
        const auto err = folder_ / (".err" + std::to_string(i));
        results[i].out = Slurp(out);
        results[i].err = Slurp(err);
        std::filesystem::remove(out);
        std::filesystem::remove(err);
    }
    return results;
}

VornoscRun VornoscRunner::Run(const std::vector<std::string>& args) const
{
    return RunTogether({args})[0];
}
