#include "ids/assign/survey.h"

#include <algorithm>
#include <new>
#include <string_view>

#include "base/numbers.h"
#include "ids/assign/statement_names.h"
#include "model/schema_scan.h"
#include "model/statements.h"

namespace inspect::ids {
namespace {

Spot SpotOf(const QXYANG_ORIGIN_S &origin)
{
    return {origin.pstFile, origin.pstFile != nullptr ? origin.uiStatement : QXYANG_NO_STATEMENT};
}

uint32_t ValueOf(const Extension &extension)
{
    Number number = ReadNumber(extension.argument);
    return number.refused ? 0 : number.value;
}

/* True if a statement stands in the one given or in one of those within it. */
bool IsWithin(const QXYANG_ORIGIN_S &inner, const Spot &around)
{
    if (inner.pstFile != around.file)
        return false;
    for (uint32_t i = inner.uiStatement; i != QXYANG_NO_STATEMENT; i = StatementAt(inner.pstFile, i).uiParent)
        if (i == around.statement)
            return true;
    return false;
}

/* Keeps the first one that says something, as the library does. */
void Keep(uint32_t value, uint32_t *kept)
{
    if (*kept == 0)
        *kept = value;
}

} // namespace

Survey::Survey(const ModelSet &models) : models_(models)
{
    for (const LoadedModule &module : models.Modules())
        ForEachTop(module.module, [this](QY_NODE *top) { AddTree(top); });
}

void Survey::AddTree(QY_NODE *top)
{
    std::vector<uint32_t> way;  /* from the top down to the latest node */
    std::vector<uint32_t> last; /* the latest child of each of these */
    ForEachBelow(top, [&](QY_NODE *node) {
        QY_NODE *parent = QY_NODE_GetParentNode(node);
        while (!way.empty() && nodes_[way.back()].node != parent) {
            way.pop_back();
            last.pop_back();
        }
        auto index = static_cast<uint32_t>(nodes_.size());
        SurveyNode entry = {};
        entry.node = node;
        entry.type = static_cast<uint8_t>(QY_NODE_GetNodeType(node));
        entry.parent = way.empty() ? NO_NODE : way.back();
        entry.child = entry.next = NO_NODE;
        entry.module = static_cast<uint32_t>(models_.IndexOf(QY_NODE_GetModule(node)));
        entry.isInTree = way.empty() ? entry.type == QY_NODE_TYPE_CONTAINER
                                     : nodes_[way.back()].isInTree && entry.type <= QY_NODE_TYPE_ANYDATA;
        nodes_.push_back(entry);
        Link(index, &last);
        ReadStatements(index);
        way.push_back(index);
        last.push_back(NO_NODE);
    });
}

void Survey::Link(uint32_t index, std::vector<uint32_t> *last)
{
    if (last->empty())
        return;
    uint32_t before = last->back();
    (before == NO_NODE ? nodes_[nodes_[index].parent].child : nodes_[before].next) = index;
    last->back() = index;
}

void Survey::ReadStatements(uint32_t index)
{
    SurveyNode *entry = &nodes_[index];
    bool mayBeClass = entry->type == QY_NODE_TYPE_CONTAINER || entry->type == QY_NODE_TYPE_LIST;
    if (!mayBeClass && entry->type != QY_NODE_TYPE_LEAF)
        return;
    QXYANG_NODE_DETAILS_S details = {};
    if (QXYANG_GetNodeDetails(entry->node, &details) != 0)
        throw std::bad_alloc();
    entry->own = SpotOf(details.stStatement);
    entry->uses = SpotOf(details.stUses);
    entry->isKey = (QY_NODE_IsKey(entry->node) & 1U) != 0;
    for (const Extension &extension : ExtensionsOf(entry->node)) {
        std::string_view keyword = extension.keyword;
        if (keyword == CLASS_ID && mayBeClass)
            Keep(ValueOf(extension), &entry->classId);
        else if (keyword == CLASS_TYPE)
            entry->isLeafrefClass |= extension.argument == "leafref";
        else if (keyword == FIELD_ID)
            Keep(ValueOf(extension) & 0xFFU, &entry->field);
        else if (keyword == REFERENCE_KEY)
            entry->reference = ValueOf(extension) & 0xFFU;
        else if (keyword == INDEX_MAP)
            Keep(ValueOf(extension), &entry->indexMap);
        else if (keyword == DATATYPE_ID)
            entry->hasType |= ValueOf(extension) != 0;
        else if (keyword == ANCESTOR_KEY && mayBeClass) {
            AncestorStatements *known = &ancestors_[index];
            known->isInGrouping = entry->uses.file != nullptr && !IsWithin(extension.origin, entry->uses);
            std::vector<Extension> nested = ExtensionsWithin(models_.Schema(), extension.instance);
            known->isList |= known->keys.empty() && nested.empty();
            for (const Extension &inner : nested)
                if (inner.keyword == FIELD_ID)
                    known->keys.emplace_back(ValueOf(extension), ValueOf(inner) & 0xFFU);
            for (const std::string &word : known->isList && known->keys.empty() ? Words(extension.argument) : Words(""))
                known->keys.emplace_back(0, ReadNumber(word).value & 0xFFU);
        }
    }
    if (entry->reference != 0 && entry->field != 0)
        entry->field = entry->reference;
}

bool Survey::IsWanted(uint32_t index) const
{
    const std::vector<LoadedModule> &modules = models_.Modules();
    return nodes_[index].module < modules.size() && modules[nodes_[index].module].isWanted;
}

const AncestorStatements *Survey::AncestorsOf(uint32_t index) const
{
    auto found = ancestors_.find(index);
    return found != ancestors_.end() ? &found->second : nullptr;
}

void Survey::AddLeaves(uint32_t index, std::vector<uint32_t> *leaves) const
{
    for (uint32_t i = nodes_[index].child; i != NO_NODE; i = nodes_[i].next)
        if (nodes_[i].type == QY_NODE_TYPE_LEAF)
            leaves->push_back(i);
        else if (nodes_[i].type == QY_NODE_TYPE_CHOICE || nodes_[i].type == QY_NODE_TYPE_CASE)
            AddLeaves(i, leaves);
}

std::vector<uint32_t> Survey::LeavesOf(uint32_t index) const
{
    std::vector<uint32_t> leaves;
    AddLeaves(index, &leaves);
    return leaves;
}

uint32_t Survey::TakerOf(uint32_t index) const
{
    uint32_t parent = nodes_[index].parent;
    if (parent == NO_NODE || !nodes_[parent].isLeafrefClass)
        return NO_NODE;
    uint32_t first = nodes_[parent].child;
    while (first != NO_NODE && nodes_[first].type == QY_NODE_TYPE_LEAF)
        first = nodes_[first].next;
    return first == index ? parent : NO_NODE;
}

std::vector<uint32_t> Survey::KeyLeavesOf(uint32_t index) const
{
    uint32_t taker = TakerOf(index);
    uint32_t list = taker != NO_NODE && nodes_[taker].type == QY_NODE_TYPE_LIST ? taker : index;
    std::vector<uint32_t> keys;
    for (uint32_t i = nodes_[list].child; i != NO_NODE; i = nodes_[i].next)
        if (nodes_[i].type == QY_NODE_TYPE_LEAF && nodes_[i].isKey)
            keys.push_back(i);
    if (list == index)
        return keys;
    std::vector<uint32_t> leaves = LeavesOf(index);
    for (uint32_t &key : keys) {
        QY_NODE *target = QY_NODE_GetLeafrefTargetNode(nodes_[key].node, 0);
        auto found =
            std::find_if(leaves.begin(), leaves.end(), [&](uint32_t leaf) { return nodes_[leaf].node == target; });
        key = found != leaves.end() ? *found : key;
    }
    return keys;
}

} // namespace inspect::ids
