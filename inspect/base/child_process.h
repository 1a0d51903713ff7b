/* Running another program without a shell. */
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace inspect {

/* How a run went. */
struct Finished {
    int startError; /* errno of a program that cannot be started, or 0; ENOENT: there is none of that name */
    int signal;     /* that has ended it, or 0 */
    int exitCode;
    std::string out;
    std::string err;
};

/* Runs a program, which is looked for in PATH, with these arguments: none of them goes through a shell. Its messages are in
 * English. `folder` takes the files that keep what goes in and out. Throws Failure when it cannot. */
Finished RunProgram(const std::vector<std::string> &words, const std::string &input,
                    const std::filesystem::path &folder);

} // namespace inspect
