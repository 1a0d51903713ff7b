/* Finding the nodes and leaves that a person's path means, in all of a module's trees. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/instance.h"
#include "model/prefixes.h"
#include "model/trees.h"

namespace inspect {

struct PathStep {
    std::string prefix; /* "": any module */
    std::string name;

    bool operator==(const PathStep &) const = default;
};

/* "/m:sys/ports" as steps. The leading "/" may be missing, one may follow as completion leaves it, and predicates are left
 * out; a Failure of usage for a path with an empty step. */
std::vector<PathStep> ParsePath(std::string_view path);

/* "/sys/ports" of an augment's target path "/m:sys/m:ports". */
std::string BareNames(std::string_view target);

/* A node or leaf and where it stands: of the target trees that hold it, the one of the augment that adds it. */
struct Place {
    std::optional<uint32_t> augment; /* in this augment's target tree; none: in the module's own tree */
    const KorvTreeNode *node;        /* what the path names, or the holder of the leaf that it names */
    const KorvTreeLeaf *leaf;        /* null: the path names a node */
};

class PathFinder {
  public:
    PathFinder(const Instance &instance, const ModuleFile &file) : file_(file), prefixes_(instance.Schema()) {}

    /* The distinct places that the steps may mean: those of the module's own tree first, then those of its augments'
     * target trees. Choices and cases need no step; only where nothing else fits, a step may name one. */
    std::vector<Place> Find(const std::vector<PathStep> &steps) const;

    /* The first of them; a Failure that says how far the path leads when there is none. Others that the path may mean as
     * well are named in a note. */
    Place Require(const std::string &path, const Notes &notes) const;

  private:
    struct Search;

    bool Means(const PathStep &step, const char *name, const char *module) const;
    void Match(Search *search, Chain chain, size_t step) const;
    void MatchLeaf(Search *search, const KorvTreeNode &holder, size_t step) const;
    std::vector<Place> FindOnce(const std::vector<PathStep> &steps, bool namedChoices) const;
    std::string WhyNot(const std::vector<PathStep> &steps) const;

    const ModuleFile &file_;
    Prefixes prefixes_;
};

/* One step of the way from the top of a tree to a place, choices and cases included. */
struct WayStep {
    const char *name;
    const char *module;
    bool named; /* by paths: no choice, no case */
};
std::vector<WayStep> WayTo(const Place &place);

/* Where the module's own statements begin on the way to a place in a target tree. */
struct Addition {
    uint32_t augment; /* that makes it */
    size_t step;      /* of the way, the first that is the module's */
};
std::optional<Addition> AdditionOf(const ModuleFile &file, const Place &place);

/* "/m:sys/m:ports": the place with the module of each step; equal for what is the same node in different trees. */
std::string QualifiedPath(const Place &place);

/* "/sys/ports", a leaf's name included. */
std::string PlainPath(const Place &place);

} // namespace inspect
