/* The benchmarks' arguments. */
#ifndef KORV_BENCH_COMMAND_LINE_H
#define KORV_BENCH_COMMAND_LINE_H

#include <string>

namespace bench {

struct CommandLine {
    std::string groups = "."; /* regular expression: the groups of rows to run */
    std::string json;         /* file for the rows, or none */
    std::string models;       /* directory of the set whose rows are measured, or none: a generated one */
    bool compare = false;     /* only what compare.h counts */
    bool update = false;      /* the same, and keep it */
    bool strict = false;      /* a bound that is not reached fails the run */
    bool right = true;        /* what was given could be read */

    /* To be done once, without any benchmark: see instruction_count.h. */
    std::string operation;
    std::string dir;
    std::string module;
};

CommandLine ReadCommandLine(int argc, char **argv);

} // namespace bench

#endif // KORV_BENCH_COMMAND_LINE_H
