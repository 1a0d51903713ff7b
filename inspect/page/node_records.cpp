#include "page/node_records.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <span>

#include "model/schema_scan.h"
#include "tree/own_rows.h"

namespace inspect::page {
namespace {

/* Statements that a remark repeats. What they say without being there is left out. */
struct Repeated {
    const char *keyword;
    const char *usual;
};

constexpr Repeated CONDITIONS[] = {{"when", nullptr}, {"must", nullptr}, {"if-feature", nullptr}};
constexpr Repeated OF_CONTAINERS[] = {{"presence", nullptr}};
constexpr Repeated OF_LISTS[] = {
    {"min-elements", "0"}, {"max-elements", "unbounded"}, {"ordered-by", "system"}, {"unique", nullptr}};

std::span<const Repeated> RepeatedOf(uint32_t kind)
{
    if (kind == QY_NODE_TYPE_CONTAINER)
        return OF_CONTAINERS;
    if (kind == QY_NODE_TYPE_LIST || kind == QY_NODE_TYPE_LEAF_LIST)
        return OF_LISTS;
    return {};
}

void AddStatements(QY_NODE *node, std::span<const Repeated> repeated, Remarks *remarks)
{
    for (const Repeated &one : repeated) {
        std::vector<std::string> arguments;
        for (const QXYANG_ORIGIN_S &statement : diff::StatementsOf(node, one.keyword)) {
            std::string argument = diff::Smoothed(diff::ArgumentOf(statement));
            if (one.usual == nullptr || argument != one.usual)
                arguments.push_back(std::move(argument));
        }
        remarks->Add(one.keyword, arguments);
    }
}

bool IsLeaf(uint32_t kind)
{
    return kind == QY_NODE_TYPE_LEAF || kind == QY_NODE_TYPE_LEAF_LIST;
}

bool IsMandatory(QY_NODE *node)
{
    std::vector<QXYANG_ORIGIN_S> statements = diff::StatementsOf(node, "mandatory");
    return !statements.empty() && diff::ArgumentOf(statements.back()) == "true";
}

uint32_t KindOfRecord(QY_NODE *node, const KorvTreeNode &made)
{
    if (!IsOrdinary(made))
        return made.ucNodeType == KORV_NODE_CHOICE ? 2 : 3;
    return QY_NODE_GetNodeType(node) == QY_NODE_TYPE_LIST ? 1 : 0;
}

uint32_t Flags(const QXYANG_NODE_DETAILS_S &details)
{
    uint32_t flags = details.uiIsConfig == 0 ? FLAG_STATE : 0;
    if (details.uiStatus != QXYANG_STATUS_CURRENT)
        flags |= details.uiStatus == QXYANG_STATUS_DEPRECATED ? FLAG_DEPRECATED : FLAG_OBSOLETE;
    return flags;
}

QXYANG_NODE_DETAILS_S DetailsOf(QY_NODE *node)
{
    QXYANG_NODE_DETAILS_S details = {};
    if (QXYANG_GetNodeDetails(node, &details) != 0)
        throw std::bad_alloc();
    return details;
}

uint64_t NumberOrNone(const KorvTreeLeaf &leaf, uint32_t mask, uint32_t number)
{
    return Has(leaf, mask) ? uint64_t{number} + 1 : 0;
}

/* The library's node of that name among these and those behind. Schema and tree have them in the same order, so that the next
 * one is nearly always the first. */
const KorvTreeNode *FindNode(const KorvTreeNode *first, QY_NODE *node)
{
    const char *name = QY_NODE_GetNodeName(node);
    const char *module = ModuleNameOf(node);
    while (first != nullptr && (std::strcmp(first->pcName, name) != 0 || std::strcmp(first->pcModuleName, module) != 0))
        first = first->pstNextSibling;
    return first;
}

const KorvTreeLeaf *FindLeaf(const KorvTreeNode &holder, QY_NODE *leaf)
{
    for (const KorvTreeLeaf &one : Leaves(holder.pstLeafList))
        if (one.pYinNode == leaf)
            return &one;
    return nullptr;
}

/* The library's leaves in the schema's order: each search goes on where the last one ended. */
class LeafCursor {
  public:
    explicit LeafCursor(const VEC_VECTOR_S *list)
    {
        for (const KorvTreeLeaf &leaf : Leaves(list))
            leaves_.push_back(&leaf);
    }

    const KorvTreeLeaf *Find(QY_NODE *leaf)
    {
        for (size_t i = 0; i < leaves_.size(); ++i) {
            const KorvTreeLeaf *one = leaves_[(next_ + i) % leaves_.size()];
            if (one->pYinNode != leaf)
                continue;
            next_ = next_ + i + 1;
            return one;
        }
        return nullptr;
    }

  private:
    std::vector<const KorvTreeLeaf *> leaves_;
    size_t next_ = 0;
};

/* The lines without the indentation that all but the first have in common, and without blanks at their ends. */
std::string Unindented(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    size_t common = std::string_view::npos;
    for (size_t i = 1; i < lines.size(); ++i)
        common = std::min(common, std::min(lines[i].find_first_not_of(" \t\r"), std::string_view::npos));
    std::string result;
    for (size_t i = 0; i < lines.size(); ++i) {
        std::string_view line = lines[i];
        line.remove_prefix(std::min(i == 0 ? line.find_first_not_of(" \t") : common, line.size()));
        line = line.substr(0, line.find_last_not_of(" \t\r") + 1);
        result.append(line).append("\n");
    }
    size_t begin = std::min(result.find_first_not_of('\n'), result.size());
    return result.substr(begin, result.find_last_not_of('\n') + 1 - begin);
}

} // namespace

void NodeRecords::Begin(QY_MOD *module, const ModuleFile &file)
{
    module_ = module;
    file_ = &file;
    QXYANG_ORIGIN_S origin = {};
    if (QXYANG_GetModuleOrigin(module, &origin) != 0)
        throw std::bad_alloc();
    ownFile_ = files_->Of(origin).file;
    added_.clear();
    for (uint32_t i = 0; i < file.ucAugmentNum; ++i)
        if (QY_NODE *augment = file.astAugment[i].pAugNode)
            ForEachChild(augment, [this](QY_NODE *child) { added_.insert(child); });
}

bool NodeRecords::IsLeftOut(QY_NODE *node) const
{
    const QY_MOD *module = QY_NODE_GetModule(node);
    return module == module_ ? added_.contains(node) : shown_.contains(module);
}

uint32_t NodeRecords::TextOf(const char *description)
{
    return description != nullptr ? tables_->texts.Add(Unindented(description)) : 0;
}

uint32_t NodeRecords::FileOf(const diff::Where &where)
{
    return where.file == nullptr || where.file == ownFile_ ? 0 : tables_->texts.Add(*where.file);
}

uint32_t NodeRecords::RemarksOf(QY_NODE *node, const QXYANG_NODE_DETAILS_S &details)
{
    uint32_t kind = QY_NODE_GetNodeType(node);
    Remarks remarks;
    if (IsLeaf(kind) || kind == QY_NODE_TYPE_CHOICE)
        remarks.Add("default", diff::DefaultsOf(node));
    if (details.pcUnits != nullptr && IsLeaf(kind))
        remarks.Add("units", std::string_view(details.pcUnits));
    AddStatements(node, CONDITIONS, &remarks);
    AddStatements(node, RepeatedOf(kind), &remarks);
    if (kind != QY_NODE_TYPE_AUGMENT && QY_NODE_GetModule(node) != module_)
        remarks.Add("from", std::string_view(ModuleNameOf(node)));
    remarks.Add("findings", findings_->Take(details.stStatement, node));
    std::string json = remarks.Json();
    return json.empty() ? 0 : tables_->remarks.Add(json) + 1;
}

uint32_t NodeRecords::Leaf(QY_NODE *node, const KorvTreeLeaf &leaf)
{
    QXYANG_NODE_DETAILS_S details = DetailsOf(node);
    diff::Where where = files_->Of(details.stStatement);
    uint32_t flags = Flags(details) | (leaf.ucIsKey != 0 ? FLAG_KEY : 0) | (IsMandatory(node) ? FLAG_MANDATORY : 0) |
                     (QY_NODE_GetNodeType(node) == QY_NODE_TYPE_LEAF_LIST ? FLAG_LEAF_LIST : 0);
    Row row;
    row.Add(tables_->texts.Add(leaf.pcName));
    row.Add(types_->Of(leaf));
    row.Add(Has(leaf, KORV_MASK_FIELD_ID) ? leaf.uiFieldId : 0);
    row.Add(flags);
    row.Add(where.line);
    row.Add(FileOf(where));
    row.Add(TextOf(details.pcDescription));
    row.Add(NumberOrNone(leaf, KORV_MASK_DATA_TYPE, leaf.uiDataType));
    row.Add(NumberOrNone(leaf, KORV_MASK_NAME2ID_KEY, leaf.uiName2IdKeyFid));
    row.Add(NumberOrNone(leaf, KORV_MASK_REF_ID_KEY, leaf.uiRefIdKeyFid));
    row.Add(RemarksOf(node, details));
    return tables_->leaves.Add(row.Json());
}

RecordLists NodeRecords::Below(QY_NODE *node, const KorvTreeNode &made)
{
    RecordLists below;
    LeafCursor leaves(made.pstLeafList);
    const KorvTreeNode *next = made.pstFirstChild;
    ForEachChild(node, [&](QY_NODE *child) {
        if (IsLeftOut(child))
            return;
        if (IsLeaf(QY_NODE_GetNodeType(child))) {
            if (const KorvTreeLeaf *leaf = leaves.Find(child))
                below.leaves.push_back(Leaf(child, *leaf));
        } else if (const KorvTreeNode *found = FindNode(next, child)) {
            below.nodes.push_back(Node(child, *found));
            next = found->pstNextSibling;
        }
    });
    return below;
}

uint32_t NodeRecords::Node(QY_NODE *node, const KorvTreeNode &made)
{
    QXYANG_NODE_DETAILS_S details = DetailsOf(node);
    diff::Where where = files_->Of(details.stStatement);
    RecordLists below = Below(node, made);
    bool isClassed = IsOrdinary(made); /* choices and cases have the ids of the node above */
    Row row;
    row.Add(tables_->texts.Add(made.pcName));
    row.Add(KindOfRecord(node, made));
    row.Add(isClassed ? made.uiClassId : 0);
    row.Add(isClassed ? made.uiSampleId : 0);
    row.Add(isClassed ? KeyIds(made.aucSelfNodeKey) : std::vector<uint32_t>{});
    row.Add(isClassed ? KeyIds(made.aucAncestorKey) : std::vector<uint32_t>{});
    row.Add(below.leaves);
    row.Add(below.nodes);
    row.Add(Flags(details) | (made.ucNodeType == KORV_NODE_CHOICE && IsMandatory(node) ? FLAG_MANDATORY : 0));
    row.Add(where.line);
    row.Add(FileOf(where));
    row.Add(TextOf(details.pcDescription));
    row.Add(RemarksOf(node, details));
    return tables_->nodes.Add(row.Json());
}

std::vector<uint32_t> NodeRecords::OwnTrees()
{
    std::vector<uint32_t> trees;
    const KorvTreeNode *next = file_->pstOriginTree;
    ForEachTop(module_, [&](QY_NODE *top) {
        const KorvTreeNode *found = FindNode(next, top);
        if (found == nullptr)
            return;
        trees.push_back(Node(top, *found));
        next = found->pstNextSibling;
    });
    return trees;
}

RecordLists NodeRecords::AddedBy(uint32_t augment)
{
    const TELMYANG_AUGMENT_INFO_S &info = file_->astAugment[augment];
    TargetWay way = WayToTarget({augment, info.acAugNodeName, {info.pstSelfTree, true}, {info.pstTargetTree, true}});
    RecordLists added;
    if (info.pAugNode == nullptr || way.nodes.empty() || !way.missing.empty())
        return added;
    const KorvTreeNode &target = *way.nodes.back();
    ForEachChild(info.pAugNode, [&](QY_NODE *child) {
        if (QY_NODE_GetModule(child) != module_)
            return;
        if (!IsLeaf(QY_NODE_GetNodeType(child))) {
            if (const KorvTreeNode *found = FindNode(target.pstFirstChild, child))
                added.nodes.push_back(Node(child, *found));
        } else if (const KorvTreeLeaf *leaf = FindLeaf(target, child)) {
            added.leaves.push_back(Leaf(child, *leaf));
        }
    });
    return added;
}

} // namespace inspect::page
