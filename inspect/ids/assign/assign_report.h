/* What a run of `ids assign` made and what it left out. */
#pragma once

#include <string>
#include <vector>

#include "ids/assign/file_changes.h"
#include "model/schema_places.h"

namespace inspect::ids {

/* New ids of a module. */
struct ModuleSum {
    std::string module;
    size_t classes = 0;
    size_t attributes = 0;
    size_t ancestorKeys = 0;
    size_t datatypes = 0;
    size_t leftOut = 0;
};

struct LeftOutNode {
    std::string module;
    std::string path;
    std::string reason;
    std::string file;
    uint32_t line = 0;
    uint32_t column = 0;
};

struct AssignReport {
    std::vector<ModuleSum> modules; /* those that were to get ids */
    std::vector<LeftOutNode> leftOut;
    std::vector<std::string> files; /* that change */
    bool isDryRun = false;
};

/* Places are those in the changed files, or of a dry run in the files as they are. */
AssignReport MakeReport(const Survey &survey, const Plan &plan, const std::vector<FileChange> &changes, bool isDryRun);

void WriteReportText(const AssignReport &report, FILE *out);
void WriteReportJson(const AssignReport &report);

} // namespace inspect::ids
