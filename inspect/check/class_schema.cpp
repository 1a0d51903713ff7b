#include "check/class_schema.h"

#include <string_view>

#include "base/numbers.h"
#include "model/statements.h"

namespace inspect {
namespace {

bool MayStandInTree(QY_NODE *node)
{
    switch (QY_NODE_GetNodeType(node)) {
        case QY_NODE_TYPE_CONTAINER:
        case QY_NODE_TYPE_LIST:
        case QY_NODE_TYPE_CHOICE:
        case QY_NODE_TYPE_CASE:
            return true;
        default:
            return false;
    }
}

bool IsLeaf(QY_NODE *node)
{
    uint32_t type = QY_NODE_GetNodeType(node);
    return type == QY_NODE_TYPE_LEAF || type == QY_NODE_TYPE_LEAF_LIST;
}

} // namespace

bool MayBeClass(QY_NODE *node)
{
    uint32_t type = QY_NODE_GetNodeType(node);
    return type == QY_NODE_TYPE_CONTAINER || type == QY_NODE_TYPE_LIST;
}

uint32_t ClassIdOf(QY_NODE *node)
{
    if (!MayBeClass(node))
        return 0;
    std::vector<std::string> ids = ExtensionArguments(node, "class-id");
    return ids.empty() || ReadNumber(ids.front()).refused ? 0 : ReadNumber(ids.front()).value;
}

QY_NODE *ClassAbove(QY_NODE *node)
{
    do
        node = QY_NODE_GetParentNode(node);
    while (node != nullptr && ClassIdOf(node) == 0);
    return node;
}

uint32_t KeyNum(QY_NODE *node)
{
    return QY_NODE_GetNodeType(node) == QY_NODE_TYPE_LIST ? QY_NODE_GetNodeKeyNum(node) & 0xFFU : 0;
}

uint32_t KeysAbove(QY_NODE *node)
{
    uint32_t num = 0;
    while ((node = QY_NODE_GetParentNode(node)) != nullptr)
        num += KeyNum(node);
    return num;
}

QY_NODE *KeyedListAbove(QY_NODE *node)
{
    uint32_t classId = ClassIdOf(node);
    QY_NODE *above = ClassAbove(node);
    while (above != nullptr && ClassIdOf(above) == classId && KeyNum(above) == 0)
        above = ClassAbove(above);
    return above != nullptr && ClassIdOf(above) == classId ? above : nullptr;
}

QY_NODE *OutOfTrees(QY_NODE *node)
{
    QY_NODE *out = nullptr;
    for (QY_NODE *at = IsLeaf(node) ? QY_NODE_GetParentNode(node) : node; at != nullptr;
         at = QY_NODE_GetParentNode(at)) {
        bool isTop = QY_NODE_GetParentNode(at) == nullptr;
        if (!MayStandInTree(at) || (isTop && QY_NODE_GetNodeType(at) != QY_NODE_TYPE_CONTAINER))
            out = at;
    }
    return QY_NODE_GetParentNode(node) == nullptr && IsLeaf(node) ? node : out;
}

std::vector<QXYANG_STATEMENT_S> ExtensionsWritten(const QXYANG_ORIGIN_S &origin)
{
    std::vector<QXYANG_STATEMENT_S> written;
    if (origin.pstFile != nullptr)
        ForEachIn(origin.pstFile, StatementAt(origin.pstFile, origin.uiStatement),
                  [&written](const QXYANG_STATEMENT_S &statement) {
                      if (statement.pcPrefix != nullptr)
                          written.push_back(statement);
                  });
    return written;
}

bool IsLeafrefClass(const std::vector<QXYANG_STATEMENT_S> &written)
{
    return written.size() == 1 && std::string_view(written.front().pcKeyword) == "class-type" &&
           written.front().pcArgument != nullptr && std::string_view(written.front().pcArgument) == "leafref";
}

} // namespace inspect
