/* Why a load failed, in words and with the place: made from the failures that the schema library recorded, or from the
 * library's own chain of messages, whose innermost ones say what happened and whose outer ones say to which node. */
#pragma once

#include <vector>

#include "base/cause.h"
#include "model/instance.h"

namespace inspect {

/* The causes of a load that failed, or of a deviation module's failure beside one that did not. */
std::vector<Cause> CausesOf(const Instance &instance, const SearchDirs &dirs, const ModuleKey &key,
                            const LoadReport &report);

/* Loads the modules that the request names, in its order. The first module that fails is reported on standard error and
 * ends the run; faults that the library finds in modules that do load are mentioned there, too. */
void LoadRequested(Instance *instance, const ModelRequest &request);

/* Loads one of the request's modules in the same way. */
void LoadOrFail(Instance *instance, const ModelRequest &request, const ModuleKey &key);

} // namespace inspect
