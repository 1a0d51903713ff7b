#include "model/load_faults.h"

#include <algorithm>

#include <korv_lib_yang.h>
#include "base/numbers.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

using Nodes = std::vector<QY_NODE *>;

/* Drops the nodes that are not likely, unless none is. */
template <class Predicate>
void Prefer(Nodes *nodes, Predicate isLikely)
{
    Nodes likely;
    std::copy_if(nodes->begin(), nodes->end(), std::back_inserter(likely), isLikely);
    if (!likely.empty())
        nodes->swap(likely);
}

void PreferOwn(Nodes *nodes, QY_MOD *module)
{
    Prefer(nodes, [module](QY_NODE *node) { return QY_NODE_GetModule(node) == module; });
}

bool HasStatement(QY_NODE *node, const std::string &keyword, const std::string &argument)
{
    std::vector<std::string> arguments = ExtensionArguments(node, keyword);
    return std::find(arguments.begin(), arguments.end(), argument) != arguments.end();
}

bool Has(QY_NODE *node, const char *keyword)
{
    return !ExtensionArguments(node, keyword).empty();
}

bool IsMeant(QY_NODE *node, const Explanation &why)
{
    if (NameOf(node) != why.node)
        return false;
    QY_NODE *above = QY_NODE_GetParentNode(node);
    return why.within.empty() || why.within == why.node || (above != nullptr && NameOf(above) == why.within);
}

bool IsLeafOfType(QY_NODE *leaf, uint32_t type)
{
    QY_TYPE *final = FinalType(leaf);
    return final != nullptr ? QY_TYPE_GetBuiltInBaseType(final) == type : TypeIsMissing(type);
}

} // namespace

std::vector<QY_NODE *> LeavesWithoutDatatype(QY_MOD *module, const std::string &node, uint32_t type)
{
    Nodes leaves;
    ForEachNode(module, [&](QY_NODE *leaf) {
        uint32_t nodeType = QY_NODE_GetNodeType(leaf);
        QY_NODE *above = nodeType == QY_NODE_TYPE_LEAF_LIST ? leaf : QY_NODE_GetParentNode(leaf);
        if ((nodeType != QY_NODE_TYPE_LEAF && nodeType != QY_NODE_TYPE_LEAF_LIST) || above == nullptr ||
            NameOf(above) != node)
            return;
        if ((Has(leaf, "field-id") || Has(leaf, "ref-id-key-fid")) && !Has(leaf, "datatype-id") &&
            IsLeafOfType(leaf, type))
            leaves.push_back(leaf);
    });
    PreferOwn(&leaves, module);
    return leaves;
}

std::vector<QY_NODE *> ListsWithTooManyKeys(QY_MOD *module)
{
    Nodes lists;
    ForEachNode(module, [&](QY_NODE *node) {
        if (QY_NODE_GetNodeType(node) == QY_NODE_TYPE_LIST && QY_NODE_GetNodeKeyNum(node) > NODE_KEY_LIST_NUM &&
            Has(node, "class-id"))
            lists.push_back(node);
    });
    PreferOwn(&lists, module);
    return lists;
}

std::vector<QY_NODE *> ClassesWithTooManyAncestorKeys(QY_MOD *module)
{
    Nodes nodes;
    ForEachNode(module, [&](QY_NODE *node) {
        std::vector<std::string> keys = ExtensionArguments(node, "ancestor-key-fid");
        if (Has(node, "class-id") && !keys.empty() &&
            (keys.size() > NODE_KEY_LIST_NUM || Words(keys.front()).size() > NODE_KEY_LIST_NUM))
            nodes.push_back(node);
    });
    PreferOwn(&nodes, module);
    return nodes;
}

QY_NODE *SurplusAugment(QY_MOD *module)
{
    QY_NODE *surplus = nullptr;
    uint32_t num = 0;
    ForEachAugment(module, [&](QY_NODE *augment) {
        if (num++ == KORV_AUGMENT_NUM)
            surplus = augment;
    });
    return surplus;
}

std::vector<QY_NODE *> NodesMeant(QY_MOD *module, const Explanation &why)
{
    Nodes nodes;
    if (why.node.empty())
        return nodes;
    ForEachNode(module, [&](QY_NODE *node) {
        if (IsMeant(node, why))
            nodes.push_back(node);
    });
    Prefer(&nodes, [](QY_NODE *node) {
        QY_NODE *above = QY_NODE_GetParentNode(node);
        return !ExtensionsOf(node).empty() || (above != nullptr && !ExtensionsOf(above).empty());
    });
    if (!why.keyword.empty())
        Prefer(&nodes, [&why](QY_NODE *node) {
            return why.argument.empty() ? Has(node, why.keyword.c_str())
                                        : HasStatement(node, why.keyword, why.argument);
        });
    PreferOwn(&nodes, module);
    return nodes;
}

} // namespace inspect
