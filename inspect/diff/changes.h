/* What has changed from one version to the next. */
#pragma once

#include <string>
#include <vector>

#include "diff/model.h"

namespace inspect::diff {

struct Change {
    Rule rule;
    bool breaking;
    std::string path; /* in the old version; of what is new, in the new one. "" for the module as a whole */
    Value before;
    Value after;
    Where oldWhere; /* not known on the side where there is none */
    Where newWhere;
};

/* How hosts and readers find data. */
enum class By : uint8_t {
    Path, /* by names, so that a new name is another node */
    Id    /* by class and field ids; names do not matter, nor what has no ids */
};

/* Changes in the order of the old version, then what was added in the order of the new one. */
std::vector<Change> Compare(const ModuleModel &before, const ModuleModel &after, By by);

/* What has changed in one module. */
struct ModuleChanges {
    std::string module;
    std::string oldRevision; /* "" for none */
    std::string newRevision;
    std::vector<Change> changes;
};

/* All modules of either version, by name. Those that one version cannot load are left out. */
std::vector<ModuleChanges> CompareAll(const Version &before, const Version &after, By by);

/* The one change of a module that is gone or new. */
Change ModuleRemoved(const ModuleModel &before);
Change ModuleAdded(const ModuleModel &after);

size_t CountBreaking(const std::vector<Change> &changes);

} // namespace inspect::diff
