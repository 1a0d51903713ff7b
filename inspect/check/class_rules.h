/* The rules of `check` for the class trees that the library makes of a set of modules. */
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "check/class_trees.h"
#include "check/findings.h"
#include "model/class_model.h"
#include "model/schema_nodes.h"
#include "model/schema_places.h"

namespace inspect {

/* Reports what the judged modules define, wherever it stands; nodes of other modules only take part in comparisons. */
class ClassRules {
  public:
    using Report = std::function<void(Finding)>;

    ClassRules(const Instance &instance, const std::set<std::string> &judged, Places *places, Report report)
        : instance_(instance), judged_(judged), places_(places), report_(std::move(report))
    {
    }

    void Check(const std::vector<ClassTree> &trees);

  private:
    using Keywords = std::span<const char *const>;

    struct Lengths {
        size_t shown; /* of a path as a dump has it, choices and cases included */
        size_t data;  /* without them */
    };

    /* A leaf with an attribute id. */
    struct Attribute {
        ClassNode holder;
        const KorvTreeLeaf *leaf;
    };

    /* All that is one class: a node, and those below it with the same class id. */
    struct Class {
        ClassNode top;
        std::vector<ClassNode> nodes;
    };

    void Collect(const ClassTree &tree, const KorvTreeNode &node, Lengths above);
    void CheckLengths(const ClassNode &node, Lengths lengths);
    void CheckLeafLengths(const ClassNode &node, Lengths lengths, const KorvTreeLeaf &leaf);
    void CheckCaseLeafNum(const ClassNode &node);
    void CheckKeyNum(const ClassNode &node);
    void CheckAncestorKeys(const ClassNode &node);
    void CheckClass(const Class &one);
    void CheckAttribute(const ClassNode &node, const KorvTreeLeaf &leaf);
    void CheckUnique(const Attribute &first, const Attribute &later);
    void CheckReferences(const std::vector<Attribute> &leaves, const std::map<uint32_t, Attribute> &attributes);
    void CheckAncestorKeyIds(const ClassNode &top, const std::map<uint32_t, Attribute> &attributes);
    void CheckIds();
    void CheckId(Rule rule, uint32_t id, const ClassNode &node, std::map<uint32_t, ClassNode> *uses);

    bool IsJudged(const char *module);
    /* The schema's node of the tree's node or leaf, or null. */
    QY_NODE *SchemaNodeOf(const ClassNode &node, const KorvTreeLeaf *leaf);
    /* Where the node's or leaf's statement with one of these keywords stands; without one, the node or leaf itself. */
    std::optional<Position> Find(const ClassNode &node, const KorvTreeLeaf *leaf, Keywords keywords);
    void Tell(Rule rule, const std::string &text, const ClassNode &node, const KorvTreeLeaf *leaf = nullptr,
              Keywords keywords = {});

    const Instance &instance_;
    const std::set<std::string> &judged_;
    Places *places_;
    Report report_;
    std::unordered_map<const char *, bool> isJudged_; /* the schema library keeps one text a name */
    std::unordered_map<const ModuleFile *, SchemaNodes> schemaNodes_;
    std::vector<Class> classes_;
    std::unordered_map<const KorvTreeNode *, size_t> classOf_; /* by its top */
};

/* Reports a module with so many augments that the next one may be one too many. */
void CheckAugmentNum(const ModuleFile &file, const std::optional<Position> &place, const ClassRules::Report &report);

} // namespace inspect
