#include "process_time.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "host.h"

namespace bench {
namespace {

constexpr int NEGATIVE_ANSWER = 1; /* korv-inspect check has findings */

struct Outcome {
    int status; /* of its exit; negative: it did not come to one */
    double time;
};

double Nanoseconds(const timeval &time)
{
    return 1e9 * static_cast<double>(time.tv_sec) + 1e3 * static_cast<double>(time.tv_usec);
}

Outcome Run(const Command &command)
{
    std::vector<char *> args;
    for (const std::string &word : command)
        args.push_back(const_cast<char *>(word.c_str()));
    args.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int error = posix_spawnp(&child, args[0], &actions, nullptr, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage = {};
    if (error != 0 || wait4(child, &status, 0, &usage) != child)
        return {-1, 0};
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Nanoseconds(usage.ru_utime) + Nanoseconds(usage.ru_stime)};
}

} // namespace

bool Succeeds(const Command &command)
{
    return Run(command).status == 0;
}

bool Finishes(const Command &command)
{
    const int status = Run(command).status;
    return status == 0 || status == NEGATIVE_ANSWER;
}

std::string Beside(const std::string &program)
{
    return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / program).string();
}

Command OperationCommand(const std::string &operation, const std::string &dir, const std::string &module)
{
    return {Beside("korv_bench"), "--operation=" + operation, dir, module};
}

double ProcessTimes::Ratio(const Command &command, const Command &against, int repetitions)
{
    ProcessTimes times;
    ProcessTimes others;
    for (int i = 0; i < repetitions; ++i) {
        times.Add(command);
        others.Add(against);
    }
    return times.Median() / others.Median();
}

void ProcessTimes::Add(const Command &command)
{
    const Outcome outcome = Run(command);
    if (outcome.status != 0 && outcome.status != NEGATIVE_ANSWER)
        Fail(command[0] + " failed");
    m_times.push_back(outcome.time);
}

double ProcessTimes::Median()
{
    const auto middle = m_times.begin() + static_cast<ptrdiff_t>(m_times.size() / 2);
    std::nth_element(m_times.begin(), middle, m_times.end());
    return *middle;
}

} // namespace bench
