#include "diff/item_reader.h"

#include <new>

#include "model/schema_scan.h"

namespace inspect::diff {
namespace {

uint32_t AddNode(QY_NODE *node, void *, void *cookie)
try {
    static_cast<std::vector<QY_NODE *> *>(cookie)->push_back(node);
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

/* "mode/fixed": the choice and the case in which a node stands. */
std::string CaseOf(QY_NODE *node)
{
    QY_NODE *within = QY_NODE_GetParentNode(node);
    QY_NODE *choice = QY_NODE_GetParentNode(within);
    return (choice != nullptr ? NameOf(choice) + "/" : "") + NameOf(within);
}

} // namespace

/* The index of a node above others, which is added when it is not known. */
uint32_t ItemReader::IndexOf(QY_NODE *above)
{
    if (above == nullptr)
        return NO_ITEM;
    Add(above, QY_NODE_GetModule(above) == module_);
    return indexes_.at(above);
}

void ItemReader::Add(QY_NODE *node, bool isCompared)
{
    if (indexes_.contains(node))
        return;
    Item item = {};
    item.kind = QY_NODE_GetNodeType(node);
    item.isCompared = isCompared;
    item.above = IndexOf(QY_NODE_GetParentNode(node));
    item.parent = item.above;
    while (!item.IsChoice() && item.parent != NO_ITEM && items_[item.parent].IsChoice())
        item.parent = items_[item.parent].parent;
    std::string name = NameOf(node);
    item.step = std::string(item.IsChoice() ? "choice " : "") + ModuleNameOf(node) + ":" + name;
    item.path = (item.parent != NO_ITEM ? items_[item.parent].path : "") + "/" + name;
    item.isInput = item.kind == QY_NODE_TYPE_INPUT || (item.parent != NO_ITEM && items_[item.parent].isInput);
    QXYANG_NODE_DETAILS_S details = {};
    if (QXYANG_GetNodeDetails(node, &details) != 0)
        throw std::bad_alloc();
    if (isCompared) {
        if (item.above != item.parent)
            item.facts.push_back({"case", CaseOf(node), {}});
        facts_->Read(node, details, item.above != NO_ITEM ? uses_[item.above] : QXYANG_ORIGIN_S{}, &item);
    }
    uses_.push_back(details.stUses);
    indexes_.emplace(node, static_cast<uint32_t>(items_.size()));
    items_.push_back(std::move(item));
}

std::vector<Item> ItemReader::Read(bool others)
{
    auto addOwn = [this](QY_NODE *node) {
        if (QY_NODE_GetModule(node) == module_)
            Add(node, true);
    };
    ForEachTop(module_, [&](QY_NODE *top) {
        ForEachBelow(top, [&](QY_NODE *node) { others ? Add(node, true) : addOwn(node); });
    });
    std::vector<QY_NODE *> augments;
    if (QY_MOD_IterScanAugmentNode(module_, AddNode, &augments) != 0)
        throw std::bad_alloc();
    for (QY_NODE *augment : augments)
        ForEachChild(augment, [&](QY_NODE *child) {
            if (QY_NODE_GetModule(child) == module_)
                ForEachBelow(child, addOwn);
        });
    return std::move(items_);
}

} // namespace inspect::diff
