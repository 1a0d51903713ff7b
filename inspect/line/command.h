/* What a command is to the command line: its name, its texts, its options and its run. Each stands in a file of its own
 * in commands/, and a row of the table there makes it known. */
#pragma once

#include <memory>

namespace CLI {
class App;
}

namespace inspect {

class Command {
  public:
    Command() = default;
    Command(const Command &) = delete;
    Command &operator=(const Command &) = delete;
    virtual ~Command() = default;

    /* Adds the command's arguments and options to its part of the command line; they stay in the command. */
    virtual void AddTo(CLI::App *app) = 0;

    /* Looks at what was parsed, all at once. Throws CLI::ValidationError for wrong usage. */
    virtual void Understand() = 0;

    /* Writes the result to standard output. Returns the exit code. */
    virtual int Run() = 0;
};

/* How a command is announced, and how it is made. */
struct CommandEntry {
    const char *name;
    const char *summary; /* one line without a full stop, for lists of commands */
    const char *help;    /* what --help says below the options, examples included */
    std::unique_ptr<Command> (*make)();
};

template <class Kind>
std::unique_ptr<Command> Make()
{
    return std::make_unique<Kind>();
}

} // namespace inspect
