/* Which modules a run is about, and where their files are. */
#pragma once

#include <map>
#include <string>
#include <vector>

#include "base/notes.h"

namespace inspect {

/* "MODULE" or "MODULE@REVISION". The revision, "" for none, is part of the key under which the library registers the
 * module; it does not choose a file. */
struct ModuleKey {
    std::string name;
    std::string revision;
};

/* Where module files are found. */
struct SearchDirs {
    std::string first; /* "", or one that is searched before all others, for module files alone, and never shown */
    std::vector<std::string> dirs;            /* in the order searched */
    std::map<std::string, std::string> shown; /* names of files and directories that a person names in another way */

    /* Those of -d, each first in its list, and behind it the folders below that are searched as well. They are among `dirs`.
     * `--all` is about the modules in them. */
    std::vector<std::vector<std::string>> own;
};

struct ModelRequest {
    std::vector<ModuleKey> loads; /* loaded before the modules, in order */
    std::vector<ModuleKey> modules;
    SearchDirs dirs;
    bool verbose = false; /* the library's messages are shown as they come */
    Notes notes;
};

} // namespace inspect
