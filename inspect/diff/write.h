/* Changes for people and for scripts, on standard output. */
#pragma once

#include <string>
#include <vector>

#include "base/paint.h"
#include "diff/changes.h"

namespace inspect::diff {

/* One module's changes. */
void WriteText(const ModuleChanges &module, const Paint &paint);
void WriteJson(const ModuleChanges &module);

/* Those of many modules, with a summary. `failed` are the modules that are not compared. */
void WriteAllText(const std::vector<ModuleChanges> &modules, const Paint &paint);
void WriteAllJson(const std::vector<ModuleChanges> &modules, const std::vector<std::string> &failed);

} // namespace inspect::diff
