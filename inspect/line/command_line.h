/* The command line: finds the command that it names, and prints help and what is wrong with the usage. */
#pragma once

#include <span>

#include "line/command.h"

namespace inspect {

/* Reads the command line and runs the command that it names. Returns the exit code. */
int RunCommandLine(int argc, char **argv, std::span<const CommandEntry *const> commands);

} // namespace inspect
