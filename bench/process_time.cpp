#include "process_time.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include "host.h"

namespace bench {
namespace {

struct Outcome {
    bool succeeded;
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
        return {false, 0};
    return {WIFEXITED(status) && WEXITSTATUS(status) == 0, Nanoseconds(usage.ru_utime) + Nanoseconds(usage.ru_stime)};
}

} // namespace

bool Succeeds(const Command &command)
{
    return Run(command).succeeded;
}

void ProcessTimes::Add(const Command &command)
{
    const Outcome outcome = Run(command);
    if (!outcome.succeeded)
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
