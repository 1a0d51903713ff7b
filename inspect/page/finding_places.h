/* The findings of check by the statements that make nodes. */
#pragma once

#include <qxyang.h>

#include <map>
#include <string>
#include <vector>

#include "check/device.h"
#include "check/report/report.h"
#include "diff/statement_places.h"

namespace inspect::page {

/* Findings are counted from 0. One that stands in the statement of a node belongs there, any other one to its module. */
class FindingPlaces {
  public:
    FindingPlaces(const Device &device, const std::vector<DeviceModule> &modules,
                  const std::vector<ReportedFinding> &findings, diff::FileNames *files);

    /* Those that stand in the node's statement, but not in one of a node below. They are taken from now on. */
    std::vector<uint32_t> Take(const QXYANG_ORIGIN_S &statement, QY_NODE *node);

    /* The first node that took the finding, or null. */
    QY_NODE *NodeOf(uint32_t finding) const { return nodes_[finding]; }

    /* Those of the module that nobody has taken. */
    std::vector<uint32_t> Rest(const std::string &module) const;

  private:
    using Statement = std::pair<const QXYANG_FILE *, uint32_t>;

    void PlaceIn(const QXYANG_FILE *file, const std::vector<uint32_t> &findings);

    const std::vector<ReportedFinding> &findings_;
    std::map<Statement, std::vector<uint32_t>> places_;
    std::vector<QY_NODE *> nodes_; /* by finding */
};

} // namespace inspect::page
