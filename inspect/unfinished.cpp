/* Commands that are still to be written. */
#include "commands.h"
#include "failure.h"

namespace inspect {

int RunFind(const Arguments &)
{
    throw Failure("not built yet");
}

int RunWalk(const Arguments &args)
{
    return RunFind(args);
}

int RunDump(const Arguments &args)
{
    return RunFind(args);
}

int RunEnums(const Arguments &args)
{
    return RunFind(args);
}

int RunModules(const Arguments &args)
{
    return RunFind(args);
}

int RunCheck(const Arguments &args)
{
    return RunFind(args);
}

int RunDiff(const Arguments &args)
{
    return RunFind(args);
}

}  // namespace inspect
