/* Statements of groupings stand on many nodes: one that is read on any of them has an effect. */
#pragma once

#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "check/findings.h"

namespace inspect {

/* Of the modules of one device, as long as it is there. */
class StatementUses {
  public:
    void Read(const QXYANG_ORIGIN_S &statement) { read_.insert(KeyOf(statement)); }

    /* The finding is about a statement that is not read on one of its nodes. */
    void NotRead(const QXYANG_ORIGIN_S &statement, Finding finding);

    /* The findings about statements in the files of these modules that are read nowhere. */
    std::vector<Finding> TakeFindings(const std::set<std::string> &modules);

  private:
    using Key = std::pair<const QXYANG_FILE *, uint32_t>;
    struct Hash {
        size_t operator()(const Key &key) const
        {
            return std::hash<const void *>()(key.first) * 31 + std::hash<uint32_t>()(key.second);
        }
    };

    static Key KeyOf(const QXYANG_ORIGIN_S &statement) { return {statement.pstFile, statement.uiStatement}; }

    std::unordered_set<Key, Hash> read_;
    std::vector<std::pair<Key, Finding>> findings_;
};

} // namespace inspect
