/* The command line: finds the command that it names, and prints help and what is wrong with the usage. */
#ifndef KORV_INSPECT_COMMAND_LINE_H
#define KORV_INSPECT_COMMAND_LINE_H

#include <span>

#include "line/command.h"

namespace inspect {

/* Reads the command line and runs the command that it names. Returns the exit code. */
int RunCommandLine(int argc, char **argv, std::span<const CommandEntry *const> commands);

} // namespace inspect

#endif // KORV_INSPECT_COMMAND_LINE_H
