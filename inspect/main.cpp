/* korv-inspect: a host that shows what the library makes of YANG modules. */
#include "commands/commands.h"
#include "line/command_line.h"

int main(int argc, char **argv)
{
    return inspect::RunCommandLine(argc, argv, inspect::COMMANDS);
}
