/* Which module files there are: the schema layer itself says what it would find. */
#pragma once

#include <korv_platform.h>

#include <string>
#include <vector>

#include "base/model_request.h"

namespace inspect {

/* Names of all modules and submodules that the directories have a file of, in the order of the alphabet. */
std::vector<std::string> ModuleNames(const SearchDirs &dirs);

/* The same of the directories of -d. */
std::vector<std::string> OwnModuleNames(const SearchDirs &dirs);

/* The file that a load by this name takes; "" when there is none. */
std::string ModulePath(const SearchDirs &dirs, const std::string &name);

/* True if the file can be read and holds a submodule. */
bool HoldsSubmodule(const std::string &path);

/* The file in the other syntax that stands beside this one under the same name; "" when there is none. */
std::string TwinOf(const std::string &path);

/* A file that a loaded module came from. The texts live as long as the module. */
struct LoadedFile {
    const char *name; /* of the module or submodule */
    const char *path;
};

/* The submodules' files in the order of inclusion, the module's own last. */
std::vector<LoadedFile> FilesOf(const QY_MOD *module);

} // namespace inspect
