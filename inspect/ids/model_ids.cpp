#include "ids/model_ids.h"

#include <unordered_set>

#include "ids/class_reader.h"
#include "ids/node_path.h"
#include "model/schema_places.h"

namespace inspect::ids {
namespace {

using Modules = std::unordered_set<const QY_MOD *>;

/* The modules as the schema has them. */
std::vector<QY_MOD *> SchemaModules(const Instance &instance, const std::vector<ModuleKey> &keys)
{
    std::vector<QY_MOD *> modules;
    for (const ModuleKey &key : keys)
        if (QY_MOD *module = QY_CTX_GetModuleByModName(instance.Schema(), key.name.c_str()))
            modules.push_back(module);
    return modules;
}

class Collector {
  public:
    Collector(QY_CTX *schema, const std::vector<QY_MOD *> &modules)
        : classes_(schema), modules_(modules.begin(), modules.end())
    {
    }

    void Visit(QY_NODE *node)
    {
        bool isOwn = modules_.contains(QY_NODE_GetModule(node));
        if (QY_NODE_GetNodeType(node) == QY_NODE_TYPE_LEAF) {
            const ClassNode *holder = isOwn ? classes_.HolderOf(node) : nullptr;
            if (holder != nullptr)
                AddLeaf(node, *holder);
            return;
        }
        const ClassNode *found = classes_.Enter(node);
        if (found == nullptr || !isOwn)
            return;
        Add(*found);
        if (QY_NODE_GetNodeType(node) == QY_NODE_TYPE_LEAF_LIST)
            AddLeaf(node, *found);
        if (!found->isPart)
            for (const KeyId &key : found->ancestorKeys)
                if (key.id != 0)
                    ids.fields.push_back({found->model.id, key.id, true, key.path, node, key.statement});
    }

    ModelIds ids;

  private:
    void AddLeaf(QY_NODE *leaf, const ClassNode &holder)
    {
        QXYANG_ORIGIN_S statement = {};
        uint32_t id = FieldIdOf(ExtensionsOf(leaf), &statement);
        if (id == 0 || !IsOfNode(statement, OriginOf(leaf)))
            return;
        Add(holder);
        ids.fields.push_back({holder.model.id, id, false, PathOf(leaf), leaf, statement});
    }

    void Add(const ClassNode &found)
    {
        if (added_.insert(found.model.node).second)
            ids.classes.push_back(found.model);
    }

    ClassReader classes_;
    Modules modules_;
    std::unordered_set<QY_NODE *> added_;
};

} // namespace

ModelIds IdsOf(const Instance &instance, const std::vector<ModuleKey> &modules)
{
    std::vector<QY_MOD *> all = SchemaModules(instance, modules);
    Collector collector(instance.Schema(), all);
    ForEachNode(all, [&collector](QY_NODE *node) { collector.Visit(node); });
    for (const ModuleKey &key : modules) {
        const char *revision = instance.Revision(key.name);
        collector.ids.revisions[key.name] = revision != nullptr ? revision : "";
    }
    return std::move(collector.ids);
}

std::map<std::string, QY_NODE *> NodesAt(const Instance &instance, const std::vector<ModuleKey> &modules,
                                         const std::set<std::string> &paths)
{
    std::map<std::string, QY_NODE *> found;
    if (paths.empty())
        return found;
    ForEachNode(SchemaModules(instance, modules), [&](QY_NODE *node) {
        uint32_t type = QY_NODE_GetNodeType(node);
        if (type == QY_NODE_TYPE_CHOICE || type == QY_NODE_TYPE_CASE)
            return;
        if (std::string path = PathOf(node); paths.contains(path))
            found.emplace(std::move(path), node);
    });
    return found;
}

} // namespace inspect::ids
