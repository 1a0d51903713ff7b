#include "command_line.h"

#include <cstdio>
#include <string_view>

namespace bench {
namespace {

/* The text behind a prefix of the argument; false for another argument. */
bool Take(std::string_view argument, std::string_view prefix, std::string *value)
{
    if (argument.substr(0, prefix.size()) != prefix)
        return false;
    *value = argument.substr(prefix.size());
    return true;
}

} // namespace

CommandLine ReadCommandLine(int argc, char **argv)
{
    CommandLine line;
    std::string *const words[] = {&line.dir, &line.module};
    size_t wordNum = 0;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--strict")
            line.strict = true;
        else if (argument == "--compare")
            line.compare = true;
        else if (argument == "--update")
            line.update = true;
        else if (Take(argument, "--json=", &line.json) || Take(argument, "--operation=", &line.operation) ||
                 Take(argument, "--models=", &line.models))
            continue;
        else if (argument == "--models" && i + 1 < argc)
            line.models = argv[++i];
        else if (line.operation.empty() && argument[0] != '-')
            line.groups = argument;
        else if (!line.operation.empty() && wordNum < 2)
            *words[wordNum++] = argument;
        else
            line.right = false;
    }
    if (!line.right)
        std::fprintf(stderr,
                     "usage: korv_bench [GROUPS] [--models DIR] [--json=FILE] [--strict] | --compare | --update\n");
    return line;
}

} // namespace bench
