/* The data of a page: one JSON text that the page's script reads and shows.
 *
 *   {"tool":"0.1.0", "folders":["examples/yin"], "against":"v1.2",
 *    "texts":[...], "types":[...], "remarks":[...], "leaves":[...], "nodes":[...],     see node_records.h and type_records.h
 *    "modules":[{"name", "key", "revision", "prefix", "namespace", "task", "file", "line", "text", "tree":[...],
 *                "augments":[{"to", "written", "line", "nodes":[...], "leaves":[...], "remarks"}],
 *                "failed":[...], "gone":1, "uncompared":1, "findings":[...], "changes":{"old", "new", "list":[...]}}],
 *    "deviations":[{"by", "to", "file", "line", "what":[...]}],
 *    "findings":[{"rule", "level", "text", "module", "at" or "path", "file", "line"}]}
 *
 * Members that have nothing to say are left out. */
#pragma once

#include <set>
#include <string>
#include <vector>

#include "base/model_request.h"
#include "check/device.h"
#include "check/report/report.h"
#include "diff/write.h"

namespace inspect::page {

/* What is shown. */
struct Source {
    const ModelRequest &request;
    const Device &device; /* has loaded the modules */
    const std::vector<DeviceModule> &modules;
    const std::vector<ReportedFinding> &findings;
    std::string against;                      /* the version that the modules are compared with, or "" */
    std::vector<diff::ModuleChanges> changes; /* since that version */
    std::set<std::string> uncompared;         /* modules of which one of the versions cannot be loaded */
};

std::string DataOf(const Source &source);

} // namespace inspect::page
