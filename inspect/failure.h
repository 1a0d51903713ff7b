/* Ways in which a run ends early. */
#ifndef KORV_INSPECT_FAILURE_H
#define KORV_INSPECT_FAILURE_H

#include <stdexcept>
#include <string>

namespace inspect {

enum ExitCode {
    EXIT_OK = 0,
    EXIT_NEGATIVE = 1, /* not loaded, not found, errors found, breaking changes */
    EXIT_USAGE = 2,
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

#endif // KORV_INSPECT_FAILURE_H
