#include "line/pager.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {
namespace {

/* What an interrupt from the keyboard has to wait for, since the pager, which takes none, goes on to use the terminal: a
 * handler of signals has no other way to know it. 0: nothing. */
volatile std::sig_atomic_t g_iWaitedFor = 0;

constexpr int INTERRUPTED = 130; /* as shells tell it */

void WaitFor(pid_t program)
{
    int status = 0;
    while (waitpid(program, &status, 0) < 0 && errno == EINTR) {
    }
}

void OnInterrupt(int)
{
    close(STDOUT_FILENO);
    WaitFor(static_cast<pid_t>(g_iWaitedFor));
    _exit(INTERRUPTED);
}

/* The command of the shell; "" for none. */
const char *Command()
{
    for (const char *variable : {"KORV_PAGER", "PAGER"})
        if (const char *command = std::getenv(variable))
            return command;
    return "less";
}

/* True if the command's program, the word in front, can be run. */
bool IsThere(std::string_view command)
{
    std::string program(command.substr(0, command.find_first_of(" \t")));
    if (program.find_first_of("~$\"'\\(;|&=") != std::string::npos)
        return true; /* the shell's to say */
    if (program.find('/') != std::string::npos)
        return access(program.c_str(), X_OK) == 0;
    const char *path = std::getenv("PATH");
    std::string_view rest = path != nullptr ? path : "/usr/bin:/bin";
    while (!rest.empty()) {
        std::string_view dir = rest.substr(0, rest.find(':'));
        rest.remove_prefix(dir.size() < rest.size() ? dir.size() + 1 : dir.size());
        if (access((std::string(dir) + "/" + program).c_str(), X_OK) == 0)
            return true;
    }
    return false;
}

/* As it is, with what `less` is to do unless a person has said so: end where all fits on the screen, show colors, leave the
 * screen as it was. */
std::vector<char *> Environment()
{
    std::vector<char *> variables;
    for (char **variable = environ; *variable != nullptr; ++variable)
        variables.push_back(*variable);
    if (std::getenv("LESS") == nullptr)
        variables.push_back(const_cast<char *>("LESS=FRX"));
    variables.push_back(nullptr);
    return variables;
}

/* Runs a command that reads from there; 0: it cannot be started. */
pid_t Spawn(const char *command, int input)
{
    posix_spawn_file_actions_t actions;
    if (posix_spawn_file_actions_init(&actions) != 0)
        return 0;
    pid_t program = 0;
    std::vector<char *> environment = Environment();
    char *words[] = {const_cast<char *>("sh"), const_cast<char *>("-c"), const_cast<char *>(command), nullptr};
    if (posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO) != 0 ||
        posix_spawnp(&program, words[0], &actions, nullptr, words, environment.data()) != 0)
        program = 0;
    posix_spawn_file_actions_destroy(&actions);
    return program;
}

void Handle(int number, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    sigaction(number, &action, nullptr);
}

} // namespace

Pager::Pager()
{
    const char *command = Command();
    std::string_view text = command;
    if (isatty(STDOUT_FILENO) == 1 && !text.empty() && text != "cat" && IsThere(text))
        Start(command);
}

void Pager::Start(const char *command)
{
    int ends[2] = {};
    if (pipe2(ends, O_CLOEXEC) != 0)
        return;
    program_ = Spawn(command, ends[0]);
    close(ends[0]);
    if (program_ != 0) {
        dup2(ends[1], STDOUT_FILENO);
        g_iWaitedFor = static_cast<std::sig_atomic_t>(program_);
        Handle(SIGINT, OnInterrupt);
        Handle(SIGPIPE, SIG_IGN); /* who has seen enough ends the pager: what is left is written to nobody */
    }
    close(ends[1]);
}

Pager::~Pager()
{
    if (program_ == 0)
        return;
    (void)std::fflush(stdout);
    int nothing = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nothing, STDOUT_FILENO); /* what nobody has read goes there at the end */
    close(nothing);
    WaitFor(program_);
    Handle(SIGINT, SIG_DFL);
    g_iWaitedFor = 0;
}

} // namespace inspect
