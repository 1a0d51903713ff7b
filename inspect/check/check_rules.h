/* The rules of `check` for a module that can be loaded. */
#ifndef KORV_INSPECT_CHECK_RULES_H
#define KORV_INSPECT_CHECK_RULES_H

#include <map>
#include <string>
#include <vector>

#include "check/findings.h"
#include "model/class_model.h"
#include "model/statement_finder.h"

namespace inspect {

/* Who uses a class id first, over all modules that are checked. */
struct ClassUse {
    std::string key; /* qualified path */
    std::string path;
    std::string module;
    std::optional<Position> position;
};
using ClassUses = std::map<uint32_t, ClassUse>;

/* Checks what the module itself defines; nodes of other modules in its trees only take part in comparisons. */
class RuleChecker {
  public:
    RuleChecker(const ModuleFile &file, const StatementFinder &finder, ClassUses *uses)
        : file_(file), finder_(finder), uses_(uses), nodes_(NodesOf(file))
    {
    }

    std::vector<Finding> Check();

  private:
    /* A leaf with an attribute id, in the order in which a class has them. */
    struct Attribute {
        const ModelNode *holder;
        const KorvTreeLeaf *leaf;
    };

    void CheckAugmentNum();
    void CheckLengths(const ModelNode &node);
    void CheckLeafLengths(const ModelNode &node, const KorvTreeLeaf &leaf);
    void CheckKeyNum(const ModelNode &node);
    void CheckAncestorKeys(const ModelNode &node);
    void CheckAttributes(const ModelNode &node);
    void CheckAttribute(const ModelNode &node, const KorvTreeLeaf &leaf);
    void CheckUniqueAttribute(const ModelNode &node, const KorvTreeLeaf &leaf);
    void CheckCollisions(const ModelNode &node);
    void CheckClassIds();
    void CheckClassId(const ModelNode &node);

    bool IsOwn(const KorvTreeLeaf &leaf) const;
    /* " (line 12)" or " (FILE:12)", seen from a finding at `from`; "" when the place is not known. */
    static std::string SeeText(const std::optional<Position> &place, const std::optional<Position> &from);
    std::optional<Position> Find(const ModelNode &node, const KorvTreeLeaf *leaf) const;
    void Report(const char *name, const std::string &text, const ModelNode &node, const KorvTreeLeaf *leaf = nullptr);

    const ModuleFile &file_;
    const StatementFinder &finder_;
    ClassUses *uses_;
    std::vector<ModelNode> nodes_;
    std::map<std::string, std::map<uint32_t, Attribute>> attributes_; /* by qualified path of the class's top, by id */
    std::vector<Finding> findings_;
};

} // namespace inspect

#endif // KORV_INSPECT_CHECK_RULES_H
