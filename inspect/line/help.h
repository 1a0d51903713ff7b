/* Texts about the program as a whole, for --help and the manual page. */
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace inspect {

inline constexpr const char *PROGRAM = "korv-inspect";

inline constexpr const char *GENERAL =
    R"(MODULE is the name of a module, or else its file: what has a directory or ends in .yin or
.yang is a file, and - is standard input. REVISION is what a host gives to the load as the
revision; it does not choose a file. Modules are looked for in the directories of the files
that the line names, then in those of -d, or the current one, of KORV_MODEL_PATH and of
--install-path, in this order. Deviation modules are looked for in the first two of them only,
as on a device.

Results go to standard output, everything else to standard error. With --format json or jsonl
standard error has an object a line as well. The schemas of all JSON are in the directory
share/korv-inspect/schemas of the installation.)";

inline constexpr const char *EXAMPLES = R"(  korv-inspect tree example-interfaces -d examples/yin
  korv-inspect find mtu -d examples/yin
  korv-inspect find example-interfaces /interfaces/interface/mtu -d examples/yin
  korv-inspect check --all -d examples/yin
  korv-inspect diff example-interfaces --old examples/yin --new examples/yin

The examples run where examples/yin is: in the project's directory, or in that of the
installed documents.)";

inline constexpr const char *EXIT_STATUS =
    R"(0 success; 1 a node, path or id is not found, check has findings that count, diff found
breaking changes, ids are not what the registry says, a file cannot be converted, the result
cannot be written; 2 wrong usage; 3 a module cannot be loaded, a file cannot be read.)";

inline constexpr const char *ENVIRONMENT =
    R"(  KORV_MODEL_PATH    directories of module files, separated by colons
  KORV_PAGER, PAGER  program that shows results on a terminal (less); empty for none
  NO_COLOR           if not empty, text is not painted)";

/* "korv-inspect tree MODULE[@REVISION]|FILE ... [OPTIONS]", required options included. */
std::string UsageOf(const CLI::App &app, const std::string &name);

} // namespace inspect
