/* Nodes by their path, and by their class. */
#include <exception>

#include "tree.h"

namespace korv_python {
namespace {

/* One part of a path: a name, and the module that it is to be of. */
struct Component {
    std::string_view module; /* empty: any */
    std::string_view name;

    bool Names(const char *ofModule, const char *withName) const
    {
        return name == withName && (module.empty() || module == ofModule);
    }
};

/* Empty when the text is no path. */
std::vector<Component> Components(std::string_view path)
{
    std::vector<Component> components;
    if (!path.empty() && path.front() == '/')
        path.remove_prefix(1);
    while (true) {
        std::string_view part = path.substr(0, path.find('/'));
        size_t colon = part.find(':');
        components.push_back(colon == part.npos ? Component{{}, part}
                                                : Component{part.substr(0, colon), part.substr(colon + 1)});
        if (components.back().name.empty())
            return {};
        if (part.size() == path.size())
            return components;
        path.remove_prefix(part.size() + 1);
    }
}

KorvTreeLeaf *NamedLeaf(const KorvTreeNode &node, const Component &component)
{
    for (KorvTreeLeaf *leaf : LeavesOf(node, BOTH))
        if (component.Names(leaf->pcModuleName, leaf->pcName))
            return leaf;
    return nullptr;
}

/* The containers and lists among the siblings and within choices there, as a path names them. */
void AddNamed(KorvTreeNode *first, const Component &component, std::vector<KorvTreeNode *> *found)
{
    std::vector<KorvTreeNode *> choices = {first};
    while (!choices.empty()) {
        KorvTreeNode *node = choices.back();
        choices.pop_back();
        for (; node != nullptr; node = node->pstNextSibling)
            if (node->ucNodeType != KORV_NODE_ORDINARY)
                choices.push_back(node->pstFirstChild);
            else if (component.Names(node->pcModuleName, node->pcName))
                found->push_back(node);
    }
}

std::optional<Found> FindIn(const ModulePtr &module, KorvTreeNode *top, const std::vector<Component> &components)
{
    std::vector<KorvTreeNode *> nodes;
    AddNamed(top, components[0], &nodes);
    for (size_t i = 1; i < components.size(); ++i) {
        std::vector<KorvTreeNode *> below;
        for (const KorvTreeNode *node : nodes)
            AddNamed(node->pstFirstChild, components[i], &below);
        if (below.empty() && i + 1 == components.size())
            for (KorvTreeNode *node : nodes)
                if (KorvTreeLeaf *leaf = NamedLeaf(*node, components[i]))
                    return Found{{module, node}, leaf};
        nodes = std::move(below);
    }
    if (nodes.empty())
        return std::nullopt;
    return Found{{module, nodes[0]}, nullptr};
}

struct Places {
    Session *session;
    std::vector<std::pair<Node, bool>> nodes;
    std::exception_ptr error;
};

uint32_t AddPlace(const YANGLIB_PLACE_S *place, void *cookie)
{
    auto *places = static_cast<Places *>(cookie);
    try {
        places->nodes.push_back({{places->session->Holder(place->pstFile), place->pstNode}, place->uiIsOwn != 0});
        return 0;
    } catch (...) {
        places->error = std::current_exception();
        return 1;
    }
}

} // namespace

std::optional<Found> Find(const std::vector<ModulePtr> &modules, std::string_view path)
{
    std::vector<Component> components = Components(path);
    if (components.empty())
        return std::nullopt;
    for (const ModulePtr &module : modules)
        if (auto found = FindIn(module, module->File().pstOriginTree, components))
            return found;
    for (const ModulePtr &module : modules)
        for (size_t i = 0; i < module->File().ucAugmentNum; ++i)
            if (auto found = FindIn(module, module->File().astAugment[i].pstTargetTree, components))
                return found;
    return std::nullopt;
}

std::vector<std::pair<Node, bool>> NodesOfClass(Session *session, uint32_t classId)
{
    Places places = {session, {}, nullptr};
    uint32_t result = YANGLIB_FindClass(session->Local(), classId, AddPlace, &places);
    if (places.error)
        std::rethrow_exception(places.error);
    if (result == KORV_NO_MEMORY)
        throw std::bad_alloc();
    return places.nodes;
}

} // namespace korv_python
