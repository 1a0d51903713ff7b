/* korv-inspect: a host that shows what the library makes of YANG modules. */
#include <cstdio>
#include <exception>
#include <new>

#include "arguments.h"
#include "failure.h"
#include "text.h"

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
    const bool failed = std::fflush(stdout) != 0 || std::ferror(stdout) != 0;
    return failed ? Report("cannot write to standard output", inspect::EXIT_NEGATIVE) : exitCode;
}

} // namespace

int main(int argc, char **argv)
try {
    inspect::Arguments args;
    if (const std::optional<int> over = inspect::ParseArguments(argc, argv, &args))
        return *over;
    return FlushOutput(args.command(args));
} catch (const inspect::Failure &failure) {
    std::fflush(stdout);
    return Report(failure.what(), failure.exitCode);
} catch (const std::bad_alloc &) {
    return Report("out of memory", inspect::EXIT_NEGATIVE);
} catch (const std::exception &error) {
    return Report(error.what(), inspect::EXIT_NEGATIVE);
}
