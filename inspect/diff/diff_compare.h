/* Comparing two versions of a class model. */
#pragma once

#include <string>
#include <vector>

#include "diff/diff_model.h"

namespace inspect {

struct Change {
    bool breaking;    /* for a host that addresses data by ids */
    std::string what; /* short and stable: "field-id" */
    std::string path; /* in the old version, of what was added in the new one */
    std::string before;
    std::string after; /* "" on either side: not there */
};

/* Changes in the order of the old version, then what was added in the order of the new one. */
std::vector<Change> Compare(const DiffModel &oldModel, const DiffModel &newModel);

} // namespace inspect
