/* Contract functions of schema nodes, types and extension instances. They read what loading has made; only two of
 * them change a node: its private slot, or its extension instances. */
#include <algorithm>
#include <iterator>
#include <utility>

#include "build/extensions.h"
#include "build/if_feature.h"
#include "build/node_conditions.h"
#include "schema/context.h"

using namespace qxyang;

uint32_t QY_NODE_GetNodeType(QY_NODE *pNode)
{
    return pNode->kind;
}

const char *QY_NODE_GetNodeName(QY_NODE *pNode)
{
    return pNode->name;
}

QY_NODE *QY_NODE_GetParentNode(QY_NODE *pNode)
{
    bool isTop = pNode->kind == QY_NODE_TYPE_AUGMENT || pNode->parent->kind == ROOT_KIND;
    return isTop ? nullptr : pNode->parent;
}

QY_MOD *QY_NODE_GetModule(QY_NODE *pNode)
{
    return pNode->module;
}

QY_NODE *QY_NODE_GetAugmentTargetNode(QY_NODE *pNode)
{
    if (pNode->kind != QY_NODE_TYPE_AUGMENT)
        return nullptr;
    QY_NODE *target = AugmentTarget(pNode);
    return IsRemoved(target) ? nullptr : target;
}

QY_NODE *QY_NODE_GetLeafrefTargetNode(QY_NODE *pNode, uint32_t)
{
    if (!IsLeaf(pNode) || pNode->type->builtin != QY_TYPE_LEAFREF || pNode->target == nullptr)
        return nullptr;
    return IsRemoved(pNode->target) ? nullptr : pNode->target;
}

uint32_t QY_NODE_GetNodeKeyNum(QY_NODE *pNode)
{
    return pNode->keyCount;
}

uint32_t QY_NODE_IsKey(QY_NODE *pNode)
{
    return (pNode->flags & NODE_IS_KEY) != 0 ? 1 : 0;
}

uint32_t QY_NODE_IsEnabled(QY_NODE *pNode)
{
    if ((pNode->flags & NODE_GATED) == 0)
        return 1;
    for (const QY_NODE *node = pNode; node != nullptr && (node->flags & NODE_GATED) != 0; node = node->parent)
        if (!Holds(ConditionOf(node)))
            return 0;
    return 1;
}

void *QY_NODE_GetPrivate(QY_NODE *pNode)
{
    return pNode->priv;
}

void QY_NODE_SetPrivate(QY_NODE *pNode, void *pvPrivate)
{
    pNode->priv = pvPrivate;
}

namespace {

/* True if the source's extension instances live as long as the node's module, and never change. */
bool CanShare(const QY_NODE *node, QY_NODE *source)
{
    const QY_MOD *module = node->module;
    if (source->module != module &&
        std::find(module->imports.begin(), module->imports.end(), source->module) == module->imports.end())
        return false;
    if ((source->flags & NODE_OWN_SET) != 0)
        return source->module->replacedSets.find(source)->second.shown == nullptr && source->module == module;
    return !module->context->deviations.HasExtensionsOf(source);
}

/* Many leaves may take over the instances of one: they share them if they can. */
void Replace(QY_NODE *node, QY_NODE *source)
{
    OwnedSet copy = CanShare(node, source) ? nullptr : CopyOfSet(source->extensions);
    const ExtensionSet *shown = copy != nullptr ? copy.get() : source->extensions;
    ReplacedSet &replaced = node->module->replacedSets[node];
    if ((node->flags & NODE_OWN_SET) == 0)
        replaced.own = node->extensions;
    node->flags |= NODE_OWN_SET;
    node->extensions = shown;
    replaced.shown = std::move(copy);
}

/* Gives the node its own extension instances back. */
void Restore(QY_NODE *node) noexcept
{
    if ((node->flags & NODE_OWN_SET) == 0)
        return;
    auto replaced = node->module->replacedSets.find(node);
    node->extensions = replaced->second.own;
    node->flags &= static_cast<uint16_t>(~NODE_OWN_SET);
    node->module->replacedSets.erase(replaced);
}

/* A reader replaces the instances of a class and its leaves one after the other. If one replacement fails, all of
 * them are undone, so that the next reader of the class sees it as the model has it. */
void RestoreClassOf(QY_NODE *leaf) noexcept
{
    Restore(leaf->parent);
    for (QY_NODE *sibling = leaf->parent->first; sibling != nullptr; sibling = sibling->next)
        if (IsLeaf(sibling))
            Restore(sibling);
}

} // namespace

uint32_t QY_NODE_ReplaceDstExtInst(QY_NODE *pDst, QY_NODE *pSrc)
{
    bool isAgain = (pDst->flags & NODE_OWN_SET) != 0 && pDst->extensions == pSrc->extensions;
    if (pDst == pSrc || isAgain)
        return 0;
    try {
        size_t &given = pDst->module->context->extensionsGiven;
        given += TotalOf(pSrc->extensions);
        if (given <= limits::EXTENSION_STATEMENTS) {
            Replace(pDst, pSrc);
            return 0;
        }
    } catch (...) {
        // No memory.
    }
    if (pDst->kind == QY_NODE_TYPE_LEAF)
        RestoreClassOf(pDst);
    return 1;
}

/* ---- types ----------------------------------------------------------------------------------------------------- */

uint32_t QY_NODE_ScanDerivedType(QY_NODE *pNode, QY_TYPE_SCAN_PF pfnCb, void *pvCookie)
{
    if (!IsLeaf(pNode))
        return 0;
    const QY_TYPE *chain[limits::CHAIN + 1]; // the built-in type and those derived from it
    size_t count = 0;
    for (const QY_TYPE *type = pNode->type; type != nullptr && count < std::size(chain); type = type->base)
        chain[count++] = type;
    while (count > 0)
        if (uint32_t result = pfnCb(nullptr, nullptr, const_cast<QY_TYPE *>(chain[--count]), pvCookie); result != 0)
            return result;
    return 0;
}

uint32_t QY_TYPE_GetBuiltInBaseType(QY_TYPE *pType)
{
    return pType->builtin;
}

uint32_t QY_TYPE_ScanNameValuePair(QY_TYPE *pType, QY_ENUM_SCAN_PF pfnCb, void *pvCookie)
{
    if (pType->builtin != QY_TYPE_ENUMERATION || pType->values == nullptr)
        return 0;
    for (uint32_t i = 0; i < pType->values->count; ++i) {
        const EnumValue &value = pType->values->values[i];
        if (value.condition != nullptr && !Holds(value.condition))
            continue;
        if (uint32_t result = pfnCb(value.name, static_cast<int32_t>(value.value), nullptr, pvCookie); result != 0)
            return result;
    }
    return 0;
}

uint32_t QY_TYPE_ScanStartEndPair(QY_TYPE *pType, QY_RANGE_SCAN_PF pfnCb, void *pvCookie)
{
    bool isInteger = (pType->builtin >= QY_TYPE_INT8 && pType->builtin <= QY_TYPE_INT64) ||
                     (pType->builtin >= QY_TYPE_UINT8 && pType->builtin <= QY_TYPE_UINT64);
    if (!isInteger)
        return 0;
    for (uint32_t i = 0; i < pType->range->count; ++i) {
        const RangePart &part = pType->range->parts[i];
        if (uint32_t result = pfnCb(&part.start, &part.end, pvCookie); result != 0)
            return result;
    }
    return 0;
}
