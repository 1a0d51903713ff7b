/* Where a node's or leaf's statement stands. Says nothing rather than something uncertain. */
#ifndef KORV_INSPECT_STATEMENT_FINDER_H
#define KORV_INSPECT_STATEMENT_FINDER_H

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/path_finder.h"
#include "model/yin_files.h"

namespace inspect {

struct Position {
    std::string file;
    uint32_t line;
    const YinStatement *statement; /* lives as long as the files */
};

/* Finds the statements of one loaded module, also where its groupings or submodules hold them. */
class StatementFinder {
  public:
    /* `revision`: of the module that is loaded, null for none; another revision's file is not read. */
    StatementFinder(const std::string &module, const char *revision, YinFiles *files);

    /* The statement at the end of the way, which must be the module's. */
    std::optional<Position> Find(const std::vector<WayStep> &way) const;

    /* The module statement. */
    std::optional<Position> Module() const;

  private:
    struct Spot {
        const YinFile *file;
        const YinStatement *statement;
        bool impliedCase; /* the statement itself is the only node below */

        bool operator==(const Spot &) const = default;
    };
    using Spots = std::vector<Spot>;
    using Named = std::unordered_map<std::string_view, Spots>;

    /* What stands below a statement: built at the first question, since models have thousands of siblings. */
    struct Below {
        Named nodes;        /* those of the groupings that it uses included */
        bool known = false; /* the nodes */
        std::unordered_map<std::string_view, const YinStatement *> groupings;
    };

    std::vector<const YinFile *> FilesOf(std::string_view module) const;
    Spots Roots() const;
    void AddBelow(const Spot &spot, const WayStep &step, Spots *spots) const;
    void AddAugments(const std::string &target, const WayStep &step, Spots *spots) const;
    Below &BelowOf(const YinStatement &statement) const;
    const Named &NodesBelow(const YinFile &file, const YinStatement &statement) const;
    const YinStatement *GroupingIn(const YinStatement &scope, std::string_view name) const;
    Spot GroupingOf(const YinFile &file, const YinStatement &uses) const;

    std::string module_;
    YinFiles *files_;
    std::vector<const YinFile *> own_;                /* of the module; none when its file is not the loaded one */
    std::unordered_map<std::string, Spots> augments_; /* by target without prefixes */
    mutable std::unordered_map<const YinStatement *, Below> below_;
};

} // namespace inspect

#endif // KORV_INSPECT_STATEMENT_FINDER_H
