/* Leafrefs whose targets a deviation leaves out. */
#pragma once

#include <qxyang.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "check/yang/node_check.h"

namespace inspect {

/* Those of all modules of a device. */
class LostTargets {
  public:
    explicit LostTargets(const QY_CTX *schema);

    /* Reports those that the module's files have to do with. */
    void Report(NodeCheck &check) const;

  private:
    struct Target {
        QXYANG_LOST_TARGET_S lost;
        QXYANG_ORIGIN_S leaf; /* its statement */
        QXYANG_ORIGIN_S uses; /* that brings the leaf, if any */
    };
    using Statement = std::pair<const QXYANG_FILE *, uint32_t>;

    static uint32_t OnLost(const QXYANG_LOST_TARGET_S *lost, void *targets);
    void ReportOne(NodeCheck &check, const Target &target) const;

    std::vector<Target> targets_;
    std::map<Statement, size_t> leafrefs_; /* how many a deviate statement affects */
    std::map<std::string, std::vector<size_t>, std::less<>>
        in_; /* targets by the path of a file that has to do with them */
};

} // namespace inspect
