/* Loading the versions that are compared. */
#pragma once

#include <set>
#include <string>

#include "base/model_request.h"
#include "diff/model.h"

namespace inspect::diff {

/* One module, which the request names. A module that cannot be loaded is reported on standard error and ends the run. */
Version LoadModule(const ModelRequest &request);

/* All of these modules of which the request's directories have a file, in one instance, as a device has them. Those that
 * cannot be loaded are reported on standard error and kept by name. */
Version LoadModules(const ModelRequest &request, const std::set<std::string> &names);

} // namespace inspect::diff
