#include "build/operation_places.h"

#include "build/node_kinds.h"

namespace qxyang {

namespace {

/* The nearest operation or notification above the node, or null. */
const QY_NODE *OperationAbove(const QY_NODE *node)
{
    do
        node = node->parent;
    while (node != nullptr && !IsOperation(node));
    return node;
}

bool TakesOperation(const QY_NODE *parent, const QY_NODE *operation)
{
    if (parent->kind == QY_NODE_TYPE_CONTAINER || parent->kind == QY_NODE_TYPE_LIST)
        return true;
    bool isGrouping = parent->name != nullptr;
    return parent->kind == ROOT_KIND && (isGrouping || operation->kind == QY_NODE_TYPE_NOTIFICATION);
}

std::string Title(const QY_NODE *operation)
{
    return (operation->kind == QY_NODE_TYPE_RPC ? "action " : "notification ") + Quoted(operation->name);
}

} // namespace

void CheckOperationPlace(Build &build, const Statement *statement, const QY_NODE *node, Unit &unit)
{
    if (const QY_NODE *above = OperationAbove(node))
        build.Fail(unit, statement, Title(node) + " cannot stand below " + DescribeNode(above));
}

void CheckCopiedOperation(Build &build, const Statement *uses, const QY_NODE *copy, const QY_NODE *from, Unit &unit)
{
    if (OperationAbove(from) != nullptr)
        return;
    std::string what = "uses " + Quoted(uses->argument) + ": " + Title(copy) + " cannot stand ";
    if (const QY_NODE *above = OperationAbove(copy))
        build.Fail(unit, uses, what + "below " + DescribeNode(above));
    else if (from->parent->kind == ROOT_KIND && !TakesOperation(copy->parent, copy))
        build.Fail(unit, uses, what + "in " + DescribeNode(copy->parent) + "; expected a container or list");
}

} // namespace qxyang
