/* Ways in which a run ends early. */
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/cause.h"

namespace inspect {

/* The same for every command. */
enum ExitCode {
    EXIT_OK = 0,
    EXIT_NEGATIVE = 1, /* something is not found, or found to be wrong, or the result cannot be written */
    EXIT_USAGE = 2,
    EXIT_NOT_LOADED = 3, /* a module cannot be loaded, or a file cannot be read */
};

/* Ends the run with an exit code after its text, if any, was printed on standard error. */
class Failure : public std::runtime_error {
  public:
    explicit Failure(const std::string &text, ExitCode code = EXIT_NEGATIVE) : std::runtime_error(text), exitCode(code)
    {
    }
    Failure(const std::string &text, ExitCode code, std::vector<Cause> why)
        : std::runtime_error(text), exitCode(code), causes(std::move(why))
    {
    }

    const ExitCode exitCode;
    const std::vector<Cause> causes; /* each is printed before the text */
};

/* A failure that no command can do anything about: no memory, no room for the result. */
class BrokenRun : public Failure {
  public:
    using Failure::Failure;
};

/* One word for scripts: "usage", "not-loaded", "not-found" or "failed". */
const char *KindName(const Failure &failure);

} // namespace inspect
