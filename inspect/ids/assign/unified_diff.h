/* Edits of a file as a unified diff, which `patch -p0` and `git apply -p0` take. */
#pragma once

#include <string>

#include "ids/assign/file_changes.h"

namespace inspect::ids {

std::string UnifiedDiff(const FileChange &change);

} // namespace inspect::ids
