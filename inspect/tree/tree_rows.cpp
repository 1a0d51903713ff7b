#include "tree/tree_rows.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

#include "base/text.h"
#include "model/trees.h"
#include "tree/own_rows.h"

namespace inspect {
namespace {

constexpr size_t INDENT = 2;
constexpr size_t MAX_NAME_WIDTH = 48; /* a longer name pushes its row's columns to the right */
constexpr size_t ID_WIDTH = 3;
constexpr const char *GAP = "  ";

std::string Indented(const std::string &text, uint32_t indent)
{
    return std::string(indent * INDENT, ' ') + text;
}

void AddWord(std::string *text, const std::string &word)
{
    if (word.empty())
        return;
    if (!text->empty())
        *text += GAP;
    *text += word;
}

/* Nothing beyond what the type says. */
bool IsFullRange(const KorvTreeLeaf &leaf)
{
    switch (leaf.ucBaseType) {
        case QY_TYPE_UINT16:
            return leaf.llRangeMin == 0 && leaf.llRangeMax == std::numeric_limits<uint16_t>::max();
        case QY_TYPE_UINT32:
            return leaf.llRangeMin == 0 && leaf.llRangeMax == std::numeric_limits<uint32_t>::max();
        default:
            return leaf.llRangeMin == 0 && static_cast<uint64_t>(leaf.llRangeMax) == UINT64_MAX;
    }
}

} // namespace

std::string NodeSummary(const KorvTreeNode &node)
{
    std::string text;
    if (!IsOrdinary(node))
        return text;
    if (node.uiClassId != 0)
        AddWord(&text, "class " + Hex(node.uiClassId));
    if (node.uiSampleId != 0)
        AddWord(&text, "sample " + Hex(node.uiSampleId));
    std::vector<uint32_t> self = KeyIds(node.aucSelfNodeKey);
    if (!self.empty())
        AddWord(&text, (self.size() == 1 ? "key " : "keys ") + JoinNumbers(self, " "));
    std::vector<uint32_t> ancestor = KeyIds(node.aucAncestorKey);
    if (!ancestor.empty())
        AddWord(&text, (ancestor.size() == 1 ? "ancestor key " : "ancestor keys ") + JoinNumbers(ancestor, " "));
    return text;
}

std::string RangeText(const KorvTreeLeaf &leaf)
{
    if (!HasRange(leaf) || IsFullRange(leaf))
        return "";
    std::string min = std::to_string(static_cast<uint64_t>(leaf.llRangeMin));
    std::string max = std::to_string(static_cast<uint64_t>(leaf.llRangeMax));
    return min == max ? min : min + ".." + max;
}

std::string LeafSummary(const KorvTreeLeaf &leaf)
{
    std::string text;
    if (Has(leaf, KORV_MASK_DATA_TYPE))
        AddWord(&text, "datatype " + std::to_string(leaf.uiDataType));
    AddWord(&text, RangeText(leaf));
    if (Has(leaf, KORV_MASK_NAME2ID_KEY))
        AddWord(&text, "index map " + std::to_string(leaf.uiName2IdKeyFid));
    if (Has(leaf, KORV_MASK_REF_ID_KEY))
        AddWord(&text, "reference key " + std::to_string(leaf.uiRefIdKeyFid));
    return text;
}

/* A mark where the module changes from one level to the next. */
std::string TreeRows::From(const char *module, const char *parentModule) const
{
    const char *above = parentModule != nullptr ? parentModule : module_.c_str();
    return std::strcmp(module, above) == 0 ? "" : std::string("(") + module + ")";
}

void TreeRows::AddNode(const KorvTreeNode &node, uint32_t indent)
{
    std::string kind = IsOrdinary(node) ? "" : std::string(KindName(node)) + " ";
    std::string rest = NodeSummary(node);
    AddWord(&rest, From(node.pcModuleName, node.pstParent != nullptr ? node.pstParent->pcModuleName : nullptr));
    rows_.push_back({Indented(kind + node.pcName, indent), "", "", rest, Tone::Name});
}

void TreeRows::AddLeaf(const KorvTreeLeaf &leaf, uint32_t indent)
{
    std::string id = Has(leaf, KORV_MASK_FIELD_ID) ? std::to_string(leaf.uiFieldId) : "-";
    id.insert(0, ID_WIDTH - std::min(ID_WIDTH, id.size()), ' ');
    rows_.push_back({Indented((leaf.ucIsKey != 0 ? "* " : "- ") + std::string(leaf.pcName), indent), id, TypeName(leaf),
                     LeafSummary(leaf), leaf.ucIsKey != 0 ? Tone::Key : Tone::Plain});
}

void TreeRows::AddText(const std::string &text, uint32_t indent)
{
    rows_.push_back({Indented(text, indent), "", "", "", Tone::Plain});
}

void TreeRows::AddTree(const KorvTreeNode &node, uint32_t indent, uint32_t depth)
{
    AddNode(node, indent);
    for (const KorvTreeLeaf &leaf : Leaves(node.pstLeafList)) {
        if (own_ != nullptr && !own_->Shows(leaf))
            continue;
        AddLeaf(leaf, indent + 1);
        std::string &rest = rows_.back().rest;
        AddWord(&rest, From(leaf.pcModuleName, node.pcModuleName));
    }
    if (depth == 1) {
        uint64_t below = own_ != nullptr ? own_->CountBelow(node) : SizeOf(Children(node)).nodes;
        if (below != 0)
            AddText("... " + Count(below, "node"), indent + 1);
        return;
    }
    for (const KorvTreeNode &child : Children(node))
        if (own_ == nullptr || own_->Shows(child))
            AddTree(child, indent + 1, depth == 0 ? 0 : depth - 1);
}

void TreeRows::Print()
{
    size_t nameWidth = 0;
    size_t typeWidth = 0;
    for (const Row &row : rows_) {
        if (row.rest.empty() && row.id.empty())
            continue;
        nameWidth = std::max(nameWidth, std::min(row.name.size(), MAX_NAME_WIDTH));
        typeWidth = std::max(typeWidth, row.type.size());
    }
    PaintedLine line(paint_);
    for (const Row &row : rows_) {
        line.Add(row.name, row.tone);
        line.PadTo(nameWidth);
        if (!row.id.empty()) {
            line.Add(GAP);
            line.Add(row.id, Tone::Id);
            line.Add(GAP);
            line.Add(row.type);
            line.PadTo(nameWidth + ID_WIDTH + typeWidth + 4);
        }
        line.Add(GAP);
        line.Add(row.rest, row.id.empty() ? Tone::Id : Tone::Faint);
        line.Print();
    }
    rows_.clear();
}

} // namespace inspect
