/* The commands. Each writes its result to standard output and returns the exit code. */
#ifndef KORV_INSPECT_COMMANDS_H
#define KORV_INSPECT_COMMANDS_H

#include "arguments.h"

namespace inspect {

int RunTree(const Arguments &args);
int RunFind(const Arguments &args);
int RunWalk(const Arguments &args);
int RunDump(const Arguments &args);
int RunEnums(const Arguments &args);
int RunModules(const Arguments &args);
int RunCheck(const Arguments &args);
int RunDiff(const Arguments &args);

} // namespace inspect

#endif // KORV_INSPECT_COMMANDS_H
