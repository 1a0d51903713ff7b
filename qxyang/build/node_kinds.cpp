#include "build/node_kinds.h"

#include "base/text.h"

namespace qxyang {

namespace {

std::string_view KindName(uint8_t kind)
{
    switch (kind) {
        case QY_NODE_TYPE_CONTAINER:
            return "container";
        case QY_NODE_TYPE_LEAF:
            return "leaf";
        case QY_NODE_TYPE_LEAF_LIST:
            return "leaf-list";
        case QY_NODE_TYPE_LIST:
            return "list";
        case QY_NODE_TYPE_CHOICE:
            return "choice";
        case QY_NODE_TYPE_CASE:
            return "case";
        case QY_NODE_TYPE_ANYXML:
            return "anyxml";
        case QY_NODE_TYPE_ANYDATA:
            return "anydata";
        case QY_NODE_TYPE_RPC:
            return "operation";
        case QY_NODE_TYPE_NOTIFICATION:
            return "notification";
        default:
            return "node";
    }
}

} // namespace

std::string DescribeNode(const QY_NODE *node)
{
    if (node->kind == ROOT_KIND)
        return node->name != nullptr ? "grouping " + Quoted(node->name) : "module " + Quoted(node->module->name);
    if (node->kind == QY_NODE_TYPE_INPUT || node->kind == QY_NODE_TYPE_OUTPUT)
        return std::string(node->name) + " of " + Quoted(node->parent->name);
    return std::string(KindName(node->kind)).append(" ").append(Quoted(node->name));
}

} // namespace qxyang
