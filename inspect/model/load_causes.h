/* Why a load failed, in words and with the place: made from the failures that the schema library recorded, or from the
 * library's own chain of messages, whose innermost ones say what happened and whose outer ones say to which node. */
#ifndef KORV_INSPECT_LOAD_CAUSES_H
#define KORV_INSPECT_LOAD_CAUSES_H

#include <string>
#include <vector>

#include "base/cause.h"
#include "model/instance.h"
#include "model/yin_files.h"

namespace inspect {

/* The causes of a load that failed, or of a deviation module's failure beside one that did not. */
std::vector<Cause> CausesOf(const Instance &instance, const SearchDirs &dirs, const ModuleKey &key,
                            const LoadReport &report, YinFiles *files);

/* Loads the modules that the request names, in its order. The first module that fails is reported on standard error and
 * ends the run; what the library finds fault with in modules that do load is mentioned there as well. */
void LoadRequested(Instance *instance, const ModelRequest &request);

/* One of them. */
void LoadOrFail(Instance *instance, const ModelRequest &request, const ModuleKey &key);

} // namespace inspect

#endif // KORV_INSPECT_LOAD_CAUSES_H
