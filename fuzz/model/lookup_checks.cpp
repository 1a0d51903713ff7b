/* Lookups of the nodes of a module's trees. */
#include <cstring>
#include <string_view>

#include "checks.h"

namespace fuzz {
namespace {

constexpr size_t LOOKUPS = 64; /* of one tree */
constexpr size_t COMPONENT_LENGTH = 64;
constexpr size_t PATH_LENGTH = 200; /* beyond it a lookup may find nothing */
constexpr size_t NODES_VISITED = 20000;

struct Paths {
    std::string plain;
    std::string prefixed;
    bool mustBeFound = true;
};

bool IsOrdinary(const KorvTreeNode *node)
{
    return node->ucNodeType == KORV_NODE_ORDINARY;
}

/* How many nodes of one level of paths have the name: choices and cases are looked through. */
size_t CountNamed(const KorvTreeNode *first, const char *name)
{
    size_t count = 0;
    for (const KorvTreeNode *node = first; node != nullptr; node = node->pstNextSibling) {
        if (!IsOrdinary(node))
            count += CountNamed(node->pstFirstChild, name);
        else
            count += std::strcmp(node->pcName, name) == 0 ? 1 : 0;
    }
    return count;
}

KorvTreeNode *PathParent(const KorvTreeNode *node)
{
    KorvTreeNode *parent = node->pstParent;
    while (parent != nullptr && !IsOrdinary(parent))
        parent = parent->pstParent;
    return parent;
}

/* The paths of a node; below a target path that is written already only the plain one goes on. */
Paths PathsOf(const KorvTreeNode *node, const KorvTreeNode *tops, const std::string &target, const char *module)
{
    Paths paths;
    for (const KorvTreeNode *at = node; at != nullptr; at = PathParent(at)) {
        const std::string name = at->pcName;
        const KorvTreeNode *parent = PathParent(at);
        const KorvTreeNode *level = parent != nullptr ? parent->pstFirstChild : tops;
        paths.mustBeFound = paths.mustBeFound && name.size() <= COMPONENT_LENGTH && CountNamed(level, at->pcName) == 1;
        paths.plain = "/" + name + paths.plain;
        if (target.empty())
            paths.prefixed = "p:" + name + (paths.prefixed.empty() ? "" : "/" + paths.prefixed);
        else if (std::strcmp(at->pcModuleName, module) == 0)
            paths.prefixed = "/" + name + paths.prefixed;
    }
    if (!target.empty()) {
        paths.prefixed.insert(std::min<size_t>(1, paths.prefixed.size()), "zz-own:");
        paths.prefixed = target.substr(1) + paths.prefixed;
    }
    paths.mustBeFound = paths.mustBeFound && paths.plain.size() <= PATH_LENGTH && paths.prefixed.size() <= PATH_LENGTH;
    return paths;
}

uint32_t Visit(void *, KorvTreeNode *)
{
    return 0;
}

bool HasOrdinaryChild(const KorvTreeNode *node)
{
    for (node = node->pstFirstChild; node != nullptr; node = node->pstNextSibling) {
        if (IsOrdinary(node))
            return true;
    }
    return false;
}

void LookUp(TELMYANG_LOCAL_DATA_S *local, const TELMYANG_YANG_FILE_INFO_S *file, const KorvTreeNode *node,
            const Paths &paths)
{
    const char *plain = paths.plain.c_str();
    const char *prefixed = paths.prefixed.c_str();
    const YangXpathLookup lookup = {local, file->pcModuleName, file->pcRevision, plain, prefixed, 0, 0};
    const KorvTreeNode *found = TELMYANG_KorvFindTreeNodeByXpath(&lookup);
    const YangPathRequest request = {file->pcModuleName, file->pcRevision, plain, prefixed};
    const uint32_t subNode = YANGLIB_HasSubNodeInXpath(local, &request);
    const uint32_t travelled = YANGLIB_TravelYangModule(local, &request, nullptr, Visit, Visit);
    if (paths.mustBeFound) {
        Require(found != nullptr && std::strcmp(found->pcName, node->pcName) == 0, "lookup", paths.prefixed);
        Require((subNode != 0) == HasOrdinaryChild(node), "sub node", paths.prefixed);
        Require(travelled == 0, "travel by path", paths.prefixed);
    }
    if (node->pstLeafList == nullptr || node->pstLeafList->uiCount == 0)
        return;
    const std::string leaf = static_cast<const KorvTreeLeaf *>(node->pstLeafList->ppvItem[0])->pcName;
    const std::string leafPath = paths.plain + "/" + leaf;
    const std::string leafPrefixed = paths.prefixed + "/" + leaf;
    const KorvTreeNode *holder = TELMYANG_KorvFindTreeNodeByLeafXpath(local, file->pcModuleName, file->pcRevision,
                                                                      leafPath.c_str(), leafPrefixed.c_str());
    Require(holder == nullptr || YANGLIB_IsLeafNode(holder, leaf.c_str()) != 0, "holder of a leaf", leafPath);
}

/* The next node, parents first. */
const KorvTreeNode *Next(const KorvTreeNode *node)
{
    if (node->pstFirstChild != nullptr)
        return node->pstFirstChild;
    while (node->pstNextSibling == nullptr) {
        node = node->pstParent;
        if (node == nullptr)
            return nullptr;
    }
    return node->pstNextSibling;
}

/* Prefixes in every component and nothing else that a lookup reads in another way. */
bool IsPlainTarget(std::string_view target)
{
    size_t slashes = 0;
    size_t colons = 0;
    for (const char c : target) {
        slashes += c == '/' ? 1 : 0;
        colons += c == ':' ? 1 : 0;
    }
    return !target.empty() && target[0] == '/' && slashes == colons && target.find(' ') == target.npos;
}

void LookUpTree(TELMYANG_LOCAL_DATA_S *local, const TELMYANG_YANG_FILE_INFO_S *file, const KorvTreeNode *tree,
                const std::string &target)
{
    size_t lookups = 0;
    size_t visited = 0;
    for (const KorvTreeNode *node = tree; node != nullptr && lookups < LOOKUPS && visited < NODES_VISITED;
         node = Next(node), ++visited) {
        const bool own = std::strcmp(node->pcModuleName, file->pcModuleName) == 0;
        if (!IsOrdinary(node) || (!target.empty() && !own))
            continue;
        LookUp(local, file, node, PathsOf(node, tree, target, file->pcModuleName));
        ++lookups;
    }
}

} // namespace

void CheckLookups(TELMYANG_LOCAL_DATA_S *local, const TELMYANG_YANG_FILE_INFO_S *file)
{
    LookUpTree(local, file, file->pstOriginTree, "");
    for (uint32_t i = 0; i < file->ucAugmentNum; ++i) {
        const std::string target = file->astAugment[i].acAugNodeName;
        if (IsPlainTarget(target))
            LookUpTree(local, file, file->astAugment[i].pstTargetTree, target);
    }
}

} // namespace fuzz
