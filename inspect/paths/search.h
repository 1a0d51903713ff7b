/* What a person may look for without knowing where it stands: ids, and paths of which a part is known. */
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/module_set.h"
#include "paths/path_walk.h"

namespace inspect {

/* A class, an attribute of it, or a sample. */
struct IdQuery {
    uint32_t classId; /* or the sample's */
    std::optional<uint32_t> fieldId;
    bool isSample;
};

/* "0x1001" or "4097.7", as models write numbers. Nothing for what begins with no digit; throws Failure for what begins
 * with one and is no id. */
std::optional<IdQuery> ToIdQuery(const std::string &text, bool isSample = false);

class Search {
  public:
    Search(const Instance &instance, const ModuleSet &set) : instance_(instance), set_(set) {}

    /* All that have the id: nodes of the class with what augments of other modules add to it, leaves of that attribute,
     * nodes of the sample. A Failure that names the nearest ids when there is none. */
    std::vector<PathNode> Ids(const IdQuery &query) const;

    /* The same for the paths that fit. `text` is the pattern's. */
    std::vector<PathNode> Paths(const PathPattern &pattern, const std::string &text) const;

  private:
    std::vector<PathNode> All(const PathPattern *pattern, const std::function<bool(const PathNode &)> &isMeant) const;
    [[noreturn]] void Fail(const std::string &text) const;
    std::string Where() const;

    const Instance &instance_;
    const ModuleSet &set_;
};

} // namespace inspect
