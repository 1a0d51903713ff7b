/* Which modules a run is about, and where their files are. */
#ifndef KORV_INSPECT_MODEL_REQUEST_H
#define KORV_INSPECT_MODEL_REQUEST_H

#include <string>
#include <vector>

namespace inspect {

/* "MODULE" or "MODULE@REVISION". The revision, "" for none, is part of the key under which the library registers the
 * module; it does not choose a file. */
struct ModuleKey {
    std::string name;
    std::string revision;
};

/* Directories of module files, in the order searched. */
struct SearchDirs {
    std::vector<std::string> base;    /* at most two: where the library looks for deviation modules, too */
    std::vector<std::string> install; /* searched after these */
};

struct ModelRequest {
    std::vector<ModuleKey> loads; /* loaded before the modules, in order */
    std::vector<ModuleKey> modules;
    SearchDirs dirs;
    bool verbose = false; /* the library's messages are shown as they come */
};

} // namespace inspect

#endif // KORV_INSPECT_MODEL_REQUEST_H
