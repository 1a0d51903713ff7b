/* Commands that are still to be written. */
#include "commands.h"
#include "failure.h"

namespace inspect {

int RunCheck(const Arguments &)
{
    throw Failure("not built yet");
}

int RunDiff(const Arguments &args)
{
    return RunCheck(args);
}

}  // namespace inspect
