/* The nodes that modules define, each once, with what the library makes of them. */
#pragma once

#include <qxyang.h>

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "model/path_finder.h"
#include "paths/path_pattern.h"

namespace inspect {

/* A node that a path leads to: no choice, no case. */
struct PathNode {
    const ModuleFile *file; /* of the module that defines it */
    QY_NODE *node;
    std::string path; /* "/sys/ports/port" */
    Place place;      /* in that module's trees; its node is null when they do not have this one */

    bool IsLeaf() const;
    bool IsKey() const;        /* of its class, or, where the library does not have the leaf, of its list */
    uint32_t ClassId() const;  /* of a leaf, that of the class that has it; 0: none */
    uint32_t SampleId() const; /* 0: none */
    std::optional<uint32_t> FieldId() const;
};

class PathWalk {
  public:
    using Visitor = std::function<void(const PathNode &)>;

    /* Of the nodes whose paths fit the pattern; null: of all. */
    PathWalk(const Instance &instance, const PathPattern *pattern)
        : schema_(instance.Schema()), prefixes_(schema_), pattern_(pattern)
    {
    }

    /* Visits the nodes that the module defines, parents first: its own tree, operations and notifications, then what its
     * augments add to other modules. What is not enabled is left out. */
    void Walk(const ModuleFile &file, const Visitor &visit);

  private:
    struct Level;

    void Visit(QY_NODE *node, Level *level);
    void VisitLeaf(QY_NODE *node, Level *level);
    void VisitAugment(QY_NODE *augment);
    void Report(QY_NODE *node, const Place &place, PathPattern::Progress progress);
    PathPattern::Progress After(PathPattern::Progress before, QY_NODE *node);

    QY_CTX *schema_;
    Prefixes prefixes_;
    std::map<std::string, std::string> prefixOf_; /* by module */
    const PathPattern *pattern_;

    const Visitor *visit_ = nullptr;
    QY_MOD *module_ = nullptr;
    std::optional<uint32_t> augment_; /* in whose tree the nodes are that are visited; none: in the module's own */
    PathNode at_ = {};
};

} // namespace inspect
