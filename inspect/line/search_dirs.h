/* The directories in which a run looks for module files. */
#pragma once

#include <string>
#include <vector>

namespace inspect {

/* The directory and, in the order of their names, all folders below it that hold module files. Hidden folders and links
 * to folders are passed over. */
std::vector<std::string> WithFoldersBelow(const std::string &dir);

/* The directories of the environment variable KORV_MODEL_PATH, which colons separate; those that are not there are left
 * out. */
std::vector<std::string> DirsOfEnvironment();

} // namespace inspect
