#include "diff/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <string_view>

#include "base/failure.h"

namespace inspect::diff {
namespace {

/* A hook of git's runs with variables that say which repository git works on. Here the directory says so. */
constexpr std::string_view DROPPED[] = {"GIT_DIR=", "GIT_WORK_TREE=", "GIT_PREFIX="};

std::vector<char *> Environment()
{
    std::vector<char *> kept;
    for (char **variable = environ; *variable != nullptr; ++variable) {
        bool isDropped = false;
        for (std::string_view name : DROPPED)
            isDropped |= std::string_view(*variable).starts_with(name);
        if (!isDropped)
            kept.push_back(*variable);
    }
    kept.push_back(nullptr);
    return kept;
}

/* Where a program's standard streams lead. */
class Streams {
  public:
    Streams() { posix_spawn_file_actions_init(&actions_); }
    ~Streams() { posix_spawn_file_actions_destroy(&actions_); }
    Streams(const Streams &) = delete;
    Streams &operator=(const Streams &) = delete;

    void Lead(int stream, const std::string &path, int flags)
    {
        constexpr mode_t OWN = 0600;
        posix_spawn_file_actions_addopen(&actions_, stream, path.c_str(), flags, OWN);
    }

    const posix_spawn_file_actions_t *Get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_;
};

std::string Content(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

int ExitCodeOf(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

std::optional<Finished> RunProgram(const std::vector<std::string> &words, const std::string &input,
                                   const std::string &folder)
{
    std::string in = folder + "/.in";
    std::string out = folder + "/.out";
    std::string err = folder + "/.err";
    if (!(std::ofstream(in, std::ios::binary) << input).flush())
        throw Failure("cannot write to " + folder, EXIT_NOT_LOADED);
    Streams streams;
    streams.Lead(STDIN_FILENO, in, O_RDONLY);
    streams.Lead(STDOUT_FILENO, out, O_WRONLY | O_CREAT | O_TRUNC);
    streams.Lead(STDERR_FILENO, err, O_WRONLY | O_CREAT | O_TRUNC);
    std::vector<char *> arguments;
    for (const std::string &word : words)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    std::vector<char *> environment = Environment();
    pid_t child = 0;
    if (posix_spawnp(&child, arguments[0], streams.Get(), nullptr, arguments.data(), environment.data()) != 0)
        return std::nullopt;
    int exitCode = ExitCodeOf(child);
    std::string said = Content(err);
    return Finished{exitCode, Content(out), said.substr(0, said.find('\n'))};
}

} // namespace inspect::diff
