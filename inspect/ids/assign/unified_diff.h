/* Edits of a file as a unified diff, which `patch -p0` and `git apply -p0` take. */
#pragma once

#include <cstdio>

#include "ids/assign/file_changes.h"

namespace inspect::ids {

void WriteUnifiedDiff(const FileChange &change, FILE *out);

} // namespace inspect::ids
