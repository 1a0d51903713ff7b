/* A plan as edits of files, and files that are changed all together or not at all. */
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ids/assign/plan.h"
#include "ids/assign/source_editor.h"

namespace inspect::ids {

struct FileChange {
    const QXYANG_FILE *file;
    std::string path;
    std::string shown;       /* as a person names it */
    std::string_view before; /* the text that was loaded */
    std::vector<Edit> edits;
};

/* In the order of the modules and their files. Throws Failure for a file that cannot be changed. */
std::vector<FileChange> ChangesOf(const Survey &survey, const Placement &placement, const Plan &plan);

/* Writes all files, each by a new one that takes its name. Throws Failure when one cannot be written or has changed since it was
 * read: all of them are then as they were. */
void WriteChanges(const std::vector<FileChange> &changes);

} // namespace inspect::ids
