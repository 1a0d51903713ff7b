/* All modules of a run's directories in one instance. */
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/instance.h"
#include "model/module_listing.h"

namespace inspect {

struct ModuleSet {
    std::vector<const ModuleFile *> modules; /* those of --load in their order, then the others by name */
    size_t failed = 0;                       /* modules that cannot be loaded: notes have said why */
};

/* Loads the modules that the request names, or, if it names none, all in the directories of -d: of these, those that cannot be
 * loaded are left out. */
ModuleSet LoadSet(Instance *instance, const ModelRequest &request, const ModuleListing &listing);

} // namespace inspect
