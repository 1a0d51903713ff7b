#include "model/trees.h"

#include <algorithm>
#include <array>

namespace inspect {
namespace {

/* By built-in type number. */
constexpr std::array<const char *, QY_TYPE_UNION + 1> TYPE_NAMES = {
    nullptr,  "binary", "bits",  "boolean", "decimal64", "empty",  "enumeration", "identityref", "instance-identifier",
    "int8",   "int16",  "int32", "int64",   "leafref",   "string", "uint8",       "uint16",      "uint32",
    "uint64", "union",
};
static_assert(TYPE_NAMES.size() == 20);

/* Extends the way from a choice or case to the one that holds the leaf; false when the leaf is not below. */
bool ExtendToLeaf(const KorvTreeNode &node, const KorvTreeLeaf &leaf, std::vector<const KorvTreeNode *> *way)
{
    way->push_back(&node);
    for (const KorvTreeLeaf &own : Leaves(node.pstLeafList))
        if (own.pYinNode == leaf.pYinNode)
            return true;
    for (const KorvTreeNode &child : Children(node))
        if (!IsOrdinary(child) && ExtendToLeaf(child, leaf, way))
            return true;
    way->pop_back();
    return false;
}

} // namespace

std::vector<uint32_t> KeyIds(const uint8_t (&keys)[NODE_KEY_LIST_NUM])
{
    size_t num = NODE_KEY_LIST_NUM;
    while (num > 0 && keys[num - 1] == 0)
        --num;
    return {keys, keys + num};
}

const char *TypeName(uint32_t baseType)
{
    return baseType < TYPE_NAMES.size() ? TYPE_NAMES[baseType] : nullptr;
}

const char *TypeName(const KorvTreeLeaf &leaf)
{
    const char *name = TypeName(leaf.ucBaseType);
    return name != nullptr ? name : TypeName(QY_TYPE_LEAFREF); /* all other types are their own end */
}

const char *KindName(const KorvTreeNode &node)
{
    switch (node.ucNodeType) {
        case KORV_NODE_CHOICE:
            return "choice";
        case KORV_NODE_CASE:
            return "case";
        default:
            return "node";
    }
}

std::vector<const KorvTreeNode *> FromTop(const KorvTreeNode &node)
{
    std::vector<const KorvTreeNode *> nodes;
    for (const KorvTreeNode *step = &node; step != nullptr; step = step->pstParent)
        nodes.push_back(step);
    std::reverse(nodes.begin(), nodes.end());
    return nodes;
}

const KorvTreeNode *OrdinaryAt(const KorvTreeNode &node)
{
    const KorvTreeNode *at = &node;
    while (at != nullptr && !IsOrdinary(*at))
        at = at->pstParent;
    return at;
}

std::vector<const KorvTreeNode *> CasesAbove(const KorvTreeNode &holder, const KorvTreeLeaf &leaf)
{
    std::vector<const KorvTreeNode *> way;
    for (const KorvTreeNode &child : Children(holder))
        if (!IsOrdinary(child) && ExtendToLeaf(child, leaf, &way))
            break;
    return way;
}

std::string DataPath(const KorvTreeNode &node)
{
    std::string path;
    for (const KorvTreeNode *step : FromTop(node))
        if (IsOrdinary(*step))
            path.append("/").append(step->pcName);
    return path;
}

TreeSize SizeOf(Chain trees)
{
    TreeSize size;
    for (const KorvTreeNode &node : trees) {
        TreeSize below = SizeOf(Children(node));
        size.nodes += 1 + below.nodes;
        size.classes += (IsOrdinary(node) && node.uiClassId != 0 ? 1 : 0) + below.classes;
        size.leaves += Leaves(node.pstLeafList).Size() + below.leaves;
    }
    return size;
}

} // namespace inspect
