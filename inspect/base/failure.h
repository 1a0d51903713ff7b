/* Ways in which a run ends early. */
#pragma once

#include <stdexcept>
#include <string>

namespace inspect {

enum ExitCode {
    EXIT_OK = 0,
    EXIT_NEGATIVE = 1, /* something is not found, or found to be wrong */
    EXIT_USAGE = 2,
    EXIT_NOT_LOADED = 3,
};

/* Ends the run with an exit code after its text, if any, was printed on standard error. */
class Failure : public std::runtime_error {
  public:
    explicit Failure(const std::string &text, ExitCode code = EXIT_NEGATIVE) : std::runtime_error(text), exitCode(code)
    {
    }

    const ExitCode exitCode;
};

} // namespace inspect
