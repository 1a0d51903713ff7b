/* korv-inspect: a host that shows what the library makes of YANG modules. */
#include <cstdio>
#include <exception>
#include <new>

#include "base/failure.h"
#include "base/text.h"
#include "commands/commands.h"
#include "line/command_line.h"

namespace {

int Report(const char *text, int exitCode)
{
    if (*text != '\0')
        std::fprintf(stderr, "korv-inspect: %s\n", inspect::Printable(text).c_str());
    return exitCode;
}

/* A result that could not be written is no success. */
int FlushOutput(int exitCode)
{
    bool failed = std::fflush(stdout) != 0 || std::ferror(stdout) != 0;
    return failed ? Report("cannot write to standard output", inspect::EXIT_NEGATIVE) : exitCode;
}

} // namespace

int main(int argc, char **argv)
try {
    return FlushOutput(inspect::RunCommandLine(argc, argv, inspect::COMMANDS));
} catch (const inspect::Failure &failure) {
    std::fflush(stdout);
    return Report(failure.what(), failure.exitCode);
} catch (const std::bad_alloc &) {
    return Report("out of memory", inspect::EXIT_NEGATIVE);
} catch (const std::exception &error) {
    return Report(error.what(), inspect::EXIT_NEGATIVE);
}
