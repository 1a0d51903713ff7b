/* The commands, in the order in which help lists them. Each entry stands in the command's own file. */
#pragma once

#include <array>

#include "line/command.h"

namespace inspect {

extern const CommandEntry TREE_COMMAND;
extern const CommandEntry FIND_COMMAND;
extern const CommandEntry PATHS_COMMAND;
extern const CommandEntry WALK_COMMAND;
extern const CommandEntry DUMP_COMMAND;
extern const CommandEntry ENUMS_COMMAND;
extern const CommandEntry MODULES_COMMAND;
extern const CommandEntry CHECK_COMMAND;
extern const CommandEntry DIFF_COMMAND;
extern const CommandEntry IDS_COMMAND;
extern const CommandEntry CONVERT_COMMAND;
extern const CommandEntry PAGE_COMMAND;

inline constexpr std::array COMMANDS = {&TREE_COMMAND, &FIND_COMMAND,  &PATHS_COMMAND,   &WALK_COMMAND,
                                        &DUMP_COMMAND, &ENUMS_COMMAND, &MODULES_COMMAND, &CHECK_COMMAND,
                                        &DIFF_COMMAND, &IDS_COMMAND,   &CONVERT_COMMAND, &PAGE_COMMAND};

} // namespace inspect
