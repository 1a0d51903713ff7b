/* Instructions of single operations, as valgrind's callgrind counts them: this program runs itself under it. */
#ifndef KORV_BENCH_INSTRUCTION_COUNT_H
#define KORV_BENCH_INSTRUCTION_COUNT_H

#include <cstdint>
#include <optional>
#include <string>

#include "process_time.h"

namespace bench {

enum class Operation {
    Load,    /* of a module with its schema */
    OwnLoad, /* of a module whose schema is loaded */
    SetLoad, /* of all modules of a directory; "module" names a file for the process's memory at its peak, or is empty */
    Lookup,
    AugmentLookup,
    Unloads,         /* of several modules one by one, in load order; "module" is how many, by FlatName */
    ReversedUnloads, /* the same, the last one first */
};

/* What the operation's own call executes; nothing without valgrind. */
std::optional<uint64_t> InstructionsOf(Operation operation, const std::string &dir, const std::string &module);

/* The same of a whole command; its counts are written below the directory. */
std::optional<uint64_t> InstructionsOf(const Command &command, const std::string &dir);

/* Does the operation of that name once, as the program is asked to when it runs under callgrind. False for an unknown
 * name. */
bool Perform(const std::string &operation, const std::string &dir, const std::string &module);

} // namespace bench

#endif // KORV_BENCH_INSTRUCTION_COUNT_H
