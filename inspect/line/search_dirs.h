/* The directories in which a run looks for module files. */
#ifndef KORV_INSPECT_SEARCH_DIRS_H
#define KORV_INSPECT_SEARCH_DIRS_H

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

#endif // KORV_INSPECT_SEARCH_DIRS_H
