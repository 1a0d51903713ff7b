#include "base/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <iterator>
#include <new>
#include <string_view>

#include "base/failure.h"

namespace inspect {
namespace {

/* A hook of git's runs with variables that say which repository git works on. Here the directory says so. LC_ALL is set
 * anew. */
constexpr std::string_view DROPPED[] = {"GIT_DIR=", "GIT_WORK_TREE=", "GIT_PREFIX=", "LC_ALL="};

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
    kept.push_back(const_cast<char *>("LC_ALL=C"));
    kept.push_back(nullptr);
    return kept;
}

/* Where a program's standard streams lead. */
class Streams {
  public:
    Streams()
    {
        if (posix_spawn_file_actions_init(&actions_) != 0)
            throw std::bad_alloc();
    }
    ~Streams() { posix_spawn_file_actions_destroy(&actions_); }
    Streams(const Streams &) = delete;
    Streams &operator=(const Streams &) = delete;

    void Lead(int stream, const std::string &path, int flags)
    {
        constexpr mode_t OWN = 0600;
        if (posix_spawn_file_actions_addopen(&actions_, stream, path.c_str(), flags, OWN) != 0)
            throw std::bad_alloc();
    }

    const posix_spawn_file_actions_t *Get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_;
};

/* Whoever ignores the ends of children, as the starter of this program may, cannot wait for them. */
class NoticedChildren {
  public:
    NoticedChildren()
    {
        struct sigaction noticed = {};
        noticed.sa_handler = SIG_DFL;
        sigaction(SIGCHLD, &noticed, &before_);
    }
    ~NoticedChildren() { sigaction(SIGCHLD, &before_, nullptr); }
    NoticedChildren(const NoticedChildren &) = delete;
    NoticedChildren &operator=(const NoticedChildren &) = delete;

  private:
    struct sigaction before_ = {};
};

std::string Content(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/* As POSIX has a child end whose program cannot be started, where posix_spawnp does not hear of it: under qemu, say. */
constexpr int NOT_STARTED = 127;

void Wait(pid_t child, Finished *finished)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) {
            finished->startError = errno;
            return;
        }
    finished->signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    finished->exitCode = WEXITSTATUS(status);
}

} // namespace

Finished RunProgram(const std::vector<std::string> &words, const std::string &input,
                    const std::filesystem::path &folder)
{
    std::string in = folder / ".in";
    std::string out = folder / ".out";
    std::string err = folder / ".err";
    if (!(std::ofstream(in, std::ios::binary) << input).flush())
        throw Failure("cannot write to " + folder.string(), EXIT_NOT_LOADED);
    Streams streams;
    streams.Lead(STDIN_FILENO, in, O_RDONLY);
    streams.Lead(STDOUT_FILENO, out, O_WRONLY | O_CREAT | O_TRUNC);
    streams.Lead(STDERR_FILENO, err, O_WRONLY | O_CREAT | O_TRUNC);
    std::vector<char *> arguments;
    for (const std::string &word : words)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    std::vector<char *> environment = Environment();
    NoticedChildren noticed;
    Finished finished = {};
    pid_t child = 0;
    finished.startError =
        posix_spawnp(&child, arguments[0], streams.Get(), nullptr, arguments.data(), environment.data());
    if (finished.startError == 0)
        Wait(child, &finished);
    finished.out = Content(out);
    finished.err = Content(err);
    if (finished.exitCode == NOT_STARTED && finished.err.empty())
        finished.startError = ENOENT;
    return finished;
}

} // namespace inspect
