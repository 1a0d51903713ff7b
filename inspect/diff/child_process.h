/* Running another program without a shell. */
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace inspect::diff {

struct Finished {
    int exitCode; /* -1: a signal ended it */
    std::string out;
    std::string err; /* the first line */
};

/* Runs a program, which is looked for in PATH, with these arguments: none of them goes through a shell. `folder` takes the
 * files that keep what goes in and out. Nothing: there is no such program, or it cannot be started. */
std::optional<Finished> RunProgram(const std::vector<std::string> &words, const std::string &input,
                                   const std::string &folder);

} // namespace inspect::diff
