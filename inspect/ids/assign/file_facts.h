/* What a model file says by itself, before anything is loaded. */
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace inspect::ids {

struct FileFacts {
    std::string belongsTo;          /* of a submodule */
    bool deviates = false;          /* it changes nodes of other modules */
    bool hasNodes = false;          /* or groupings, or augments */
    std::set<std::string> extended; /* modules to whose nodes it adds, or whose groupings it uses */
    std::vector<uint32_t> classIds;
};

/* True if the file's bytes tell that it is no submodule and deviates nothing, which saves reading its statements. */
bool IsPlainModule(const std::string &path);

/* Nothing of a file that cannot be read. */
FileFacts FactsIn(const std::string &path);

} // namespace inspect::ids
