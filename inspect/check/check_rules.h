/* The rules of `check` for a module that can be loaded. */
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "check/findings.h"
#include "model/class_model.h"
#include "model/schema_nodes.h"
#include "model/schema_places.h"

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
    RuleChecker(const Instance &instance, const ModuleFile &file, Places *places, ClassUses *uses)
        : file_(file),
          places_(places),
          uses_(uses),
          schemaNodes_(instance, file),
          nodes_(NodesOf(file)),
          module_(QY_CTX_GetModuleByModName(instance.Schema(), file.pcModuleName))
    {
    }

    std::vector<Finding> Check();

  private:
    using Keywords = std::span<const char *const>;

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
    /* Where the node's or leaf's statement with one of these keywords stands; without one, the node or leaf itself. */
    std::optional<Position> Find(const ModelNode &node, const KorvTreeLeaf *leaf, Keywords keywords);
    void Report(Rule rule, const std::string &text, const ModelNode &node, const KorvTreeLeaf *leaf = nullptr,
                Keywords keywords = {});

    const ModuleFile &file_;
    Places *places_;
    ClassUses *uses_;
    SchemaNodes schemaNodes_;
    std::vector<ModelNode> nodes_;
    QY_MOD *module_;                                                  /* of the schema */
    std::map<std::string, std::map<uint32_t, Attribute>> attributes_; /* by qualified path of the class's top, by id */
    std::vector<Finding> findings_;
};

} // namespace inspect
