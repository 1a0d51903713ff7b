/* Which nodes get which ids. */
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "ids/assign/placement.h"
#include "ids/assign/survey.h"
#include "ids/registry.h"

namespace inspect::ids {

/* Which containers become classes; lists always do. */
enum class ClassRule : uint8_t {
    Lists,       /* none */
    LeafHolders, /* those with leaves */
    All
};

struct AssignOptions {
    ClassRule rule = ClassRule::LeafHolders;
    std::vector<std::string> include{};             /* paths of nodes that become classes whatever the rule says */
    std::vector<std::string> exclude{};             /* nothing at or below these paths gets ids */
    std::map<std::string, std::string> datatypes{}; /* by type: "union", or "MODULE:TYPEDEF" */
    uint32_t firstClassId = 0x1000;
};

/* A statement of the extension module that a node gets. */
struct NewStatement {
    uint32_t node;
    const char *keyword;
    std::string argument;
    uint32_t field = 0; /* of a field-id in it; 0: none */
};

struct LeftOut {
    uint32_t node;
    std::string reason;
};

struct Plan {
    std::vector<NewStatement> statements; /* sorted by node, as leftOut is */
    std::vector<LeftOut> leftOut;
};

/* Throws Failure when class ids run out, or a path of the options is no node's. */
Plan MakePlan(const Survey &survey, const Placement &placement, const Registry &registry, const AssignOptions &options);

} // namespace inspect::ids
