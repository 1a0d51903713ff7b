#include "check/check_rules.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "base/numbers.h"
#include "base/text.h"
#include "model/schema_scan.h"
#include "model/trees.h"

namespace inspect {
namespace {

constexpr size_t MAX_PATH = 256;          /* characters that dumps and lookups take */
constexpr size_t MAX_NAME = 64;           /* characters of a step that lookups take */
constexpr uint32_t NEAR_AUGMENT_NUM = 18; /* so many that the next extension may be one too many */
constexpr size_t SHOWN_KEY_NUM = 8;       /* keys that a device's log lines show */
constexpr uint32_t MAX_FIELD_ID = 255;

/* Statements that give an attribute its id, the one that counts first, and a class. */
constexpr std::array<const char *, 2> FIELD_IDS = {"ref-id-key-fid", "field-id"};
constexpr std::array<const char *, 1> CLASS_ID = {"class-id"};
constexpr std::array<const char *, 1> ANCESTOR_KEY = {"ancestor-key-fid"};

std::string ClassText(const KorvTreeNode &node)
{
    return "class " + DataPath(node) + " (" + Hex(node.uiClassId) + ")";
}

size_t MappedKeys(const uint8_t (&keys)[NODE_KEY_LIST_NUM])
{
    return static_cast<size_t>(std::count_if(std::begin(keys), std::end(keys), [](uint8_t key) { return key != 0; }));
}

bool IsLeafNode(const KorvTreeLeaf &leaf)
{
    return QY_NODE_GetNodeType(leaf.pYinNode) == QY_NODE_TYPE_LEAF;
}

bool IsListKey(const KorvTreeLeaf &leaf)
{
    return (QY_NODE_IsKey(leaf.pYinNode) & 1U) != 0;
}

/* A leaf of a class of class-type 'leafref' has its statements from the leaf that it refers to. */
bool IsCopy(const KorvTreeLeaf &left, const KorvTreeLeaf &right)
{
    return QY_NODE_GetLeafrefTargetNode(left.pYinNode, 0) == right.pYinNode ||
           QY_NODE_GetLeafrefTargetNode(right.pYinNode, 0) == left.pYinNode;
}

std::string QualifiedPathOf(const KorvTreeNode &node)
{
    return QualifiedPath({std::nullopt, &node, nullptr});
}

} // namespace

bool RuleChecker::IsOwn(const KorvTreeLeaf &leaf) const
{
    return std::strcmp(leaf.pcModuleName, file_.pcModuleName) == 0;
}

std::optional<Position> RuleChecker::Find(const ModelNode &node, const KorvTreeLeaf *leaf, Keywords keywords)
{
    Place place = node.place;
    place.leaf = leaf;
    QY_NODE *schemaNode = schemaNodes_.Of(place);
    return schemaNode != nullptr ? places_->OfExtension(schemaNode, keywords) : std::nullopt;
}

std::string RuleChecker::SeeText(const std::optional<Position> &place, const std::optional<Position> &from)
{
    if (!place)
        return "";
    std::string line = std::to_string(place->line);
    return from && from->file == place->file ? " (line " + line + ")" : " (" + place->file + ":" + line + ")";
}

void RuleChecker::Report(Rule rule, const std::string &text, const ModelNode &node, const KorvTreeLeaf *leaf,
                         Keywords keywords)
{
    Finding finding = {rule, file_.pcModuleName, {"", 0, 0, text}};
    PlaceAt(Find(node, leaf, keywords), &finding.cause);
    findings_.push_back(finding);
}

void RuleChecker::CheckAugmentNum()
{
    if (file_.ucAugmentNum < NEAR_AUGMENT_NUM)
        return;
    Finding finding = {"many-augments", file_.pcModuleName, {}};
    finding.cause.text = "the module has " + std::to_string(file_.ucAugmentNum) + " augments, at most " +
                         std::to_string(KORV_AUGMENT_NUM) + " can be loaded";
    PlaceAt(places_->Of(module_), &finding.cause);
    findings_.push_back(finding);
}

void RuleChecker::CheckLengths(const ModelNode &node)
{
    const KorvTreeNode &treeNode = *node.place.node;
    std::string name = treeNode.pcName;
    if (node.own && IsOrdinary(treeNode) && name.size() > MAX_NAME)
        Report("long-name",
               "the name has " + std::to_string(name.size()) + " characters: lookups take at most " +
                   std::to_string(MAX_NAME),
               node);
    bool aboveIsLong = treeNode.pstParent != nullptr && node.path.size() - name.size() - 1 > MAX_PATH;
    if (node.own && node.path.size() > MAX_PATH && !aboveIsLong)
        Report("long-path",
               "the path has " + std::to_string(node.path.size()) + " characters: dumps cut it at " +
                   std::to_string(MAX_PATH) + ", and so for everything below",
               node);
    for (const KorvTreeLeaf &leaf : Leaves(treeNode.pstLeafList))
        if (IsOwn(leaf))
            CheckLeafLengths(node, leaf);
}

void RuleChecker::CheckLeafLengths(const ModelNode &node, const KorvTreeLeaf &leaf)
{
    std::string name = leaf.pcName;
    if (name.size() > MAX_NAME)
        Report("long-name",
               "the leaf's name has " + std::to_string(name.size()) + " characters: lookups take at most " +
                   std::to_string(MAX_NAME),
               node, &leaf);
    size_t length = DataPath(*node.place.node).size() + 1 + name.size();
    if (length > MAX_PATH && node.path.size() <= MAX_PATH)
        Report("long-path",
               "the leaf's path has " + std::to_string(length) + " characters: lookups take at most " +
                   std::to_string(MAX_PATH),
               node, &leaf);
}

void RuleChecker::CheckKeyNum(const ModelNode &node)
{
    const KorvTreeNode &treeNode = *node.place.node;
    size_t own = KeyIds(treeNode.aucSelfNodeKey).size();
    size_t ancestor = KeyIds(treeNode.aucAncestorKey).size();
    if (own > SHOWN_KEY_NUM || ancestor > SHOWN_KEY_NUM)
        Report("many-keys",
               ClassText(treeNode) + " has " +
                   Count(std::max(own, ancestor), own >= ancestor ? "key" : "ancestor key") +
                   ": a device's log shows the first " + std::to_string(SHOWN_KEY_NUM) + " only",
               node);
}

void RuleChecker::CheckAncestorKeys(const ModelNode &node)
{
    const KorvTreeNode &treeNode = *node.place.node;
    const KorvTreeNode *above = ClassAbove(treeNode);
    if (above == nullptr || above->uiClassId == treeNode.uiClassId)
        return;
    size_t wanted = MappedKeys(above->aucAncestorKey) + MappedKeys(above->aucSelfNodeKey);
    size_t mapped = MappedKeys(treeNode.aucAncestorKey);
    if (mapped < wanted)
        Report("unmapped-ancestor-key",
               Count(wanted - mapped, "key") + " of " + ClassText(*above) + (wanted - mapped == 1 ? " has" : " have") +
                   " no attribute id in " + ClassText(treeNode),
               node);
}

/* Own leaves and those of cases: the latter carry the class id in the class's own list only. */
void RuleChecker::CheckAttributes(const ModelNode &node)
{
    for (const VEC_VECTOR_S *list : {node.place.node->pstLeafList, node.place.node->pstCaseLeafList}) {
        for (const KorvTreeLeaf &leaf : Leaves(list)) {
            if (!IsLeafNode(leaf))
                continue;
            if (IsOwn(leaf))
                CheckAttribute(node, leaf);
            if (Has(leaf, KORV_MASK_FIELD_ID))
                CheckUniqueAttribute(node, leaf);
        }
    }
}

void RuleChecker::CheckAttribute(const ModelNode &node, const KorvTreeLeaf &leaf)
{
    std::string of = "'" + std::string(leaf.pcName) + "' of " + ClassText(*node.place.node);
    for (const char *const &keyword : FIELD_IDS) {
        std::vector<std::string> arguments = ExtensionArguments(leaf.pYinNode, keyword);
        if (!arguments.empty() && std::strtoull(arguments.front().c_str(), nullptr, 0) > MAX_FIELD_ID) {
            Report("field-id-range",
                   "leaf " + of + ": attribute ids end at " + std::to_string(MAX_FIELD_ID) + ", so that " +
                       std::string(keyword) + " " + arguments.front() + " becomes " + std::to_string(leaf.uiFieldId),
                   node, &leaf, {&keyword, 1});
            return;
        }
    }
    std::vector<std::string> ids = ExtensionArguments(leaf.pYinNode, "field-id");
    bool isBad = !ids.empty() && !ReadNumber(ids.front()).wellFormed; /* StatementRules say so */
    if (Has(leaf, KORV_MASK_FIELD_ID) || isBad)
        return;
    if (IsListKey(leaf))
        Report("key-without-field-id", "key " + of + " has no attribute id", node, &leaf);
    else
        Report("missing-field-id", "leaf " + of + " has no attribute id", node, &leaf);
}

void RuleChecker::CheckUniqueAttribute(const ModelNode &node, const KorvTreeLeaf &leaf)
{
    auto &attributes = attributes_[QualifiedPathOf(ClassTop(*node.place.node))];
    const auto [entry, isNew] = attributes.emplace(leaf.uiFieldId, Attribute{&node, &leaf});
    const Attribute &first = entry->second;
    if (isNew || first.leaf->pYinNode == leaf.pYinNode || IsCopy(*first.leaf, leaf) ||
        (!IsOwn(leaf) && !IsOwn(*first.leaf)))
        return;
    bool later = IsOwn(leaf);
    const Attribute &reported = later ? Attribute{&node, &leaf} : first;
    const Attribute &other = later ? first : Attribute{&node, &leaf};
    Report("duplicate-field-id",
           "leaf '" + std::string(reported.leaf->pcName) + "' of " + ClassText(*reported.holder->place.node) +
               " has attribute id " + std::to_string(leaf.uiFieldId) + ", as '" + other.leaf->pcName + "' of " +
               DataPath(*other.holder->place.node) + " has" +
               SeeText(Find(*other.holder, other.leaf, FIELD_IDS), Find(*reported.holder, reported.leaf, FIELD_IDS)),
           *reported.holder, reported.leaf, FIELD_IDS);
}

void RuleChecker::CheckCollisions(const ModelNode &node)
{
    const KorvTreeNode &treeNode = *node.place.node;
    if (&ClassTop(treeNode) != &treeNode)
        return;
    const auto &attributes = attributes_[QualifiedPathOf(treeNode)];
    for (const uint32_t key : KeyIds(treeNode.aucAncestorKey)) {
        auto attribute = attributes.find(key);
        if (key != 0 && attribute != attributes.end())
            Report("ancestor-key-collision",
                   ClassText(treeNode) + " has ancestor key " + std::to_string(key) +
                       ", which is the attribute id of leaf '" + attribute->second.leaf->pcName + "' as well",
                   node, nullptr, ANCESTOR_KEY);
    }
}

/* Nodes of other modules are entered first: what the module itself has is compared with them. */
void RuleChecker::CheckClassIds()
{
    for (const bool own : {false, true}) {
        for (const ModelNode &node : nodes_) {
            const KorvTreeNode &treeNode = *node.place.node;
            if (node.own != own || !IsClass(treeNode) || &ClassTop(treeNode) != &treeNode)
                continue;
            CheckClassId(node);
        }
    }
}

void RuleChecker::CheckClassId(const ModelNode &node)
{
    const KorvTreeNode &treeNode = *node.place.node;
    std::string key = QualifiedPathOf(treeNode);
    std::optional<Position> position = node.own ? Find(node, nullptr, CLASS_ID) : std::nullopt;
    ClassUse use = {key, DataPath(treeNode), treeNode.pcModuleName, position};
    const ClassUse &first = uses_->try_emplace(treeNode.uiClassId, use).first->second;
    if (node.own && first.key != key)
        Report("duplicate-class-id",
               ClassText(treeNode) + " has the class id of " + first.path +
                   (first.module == file_.pcModuleName ? "" : " of module '" + first.module + "'") +
                   SeeText(first.position, position),
               node, nullptr, CLASS_ID);
}

std::vector<Finding> RuleChecker::Check()
{
    CheckAugmentNum();
    for (const ModelNode &node : nodes_) {
        CheckLengths(node);
        if (!IsClass(*node.place.node))
            continue;
        CheckAttributes(node);
        if (!node.own)
            continue;
        CheckKeyNum(node);
        CheckAncestorKeys(node);
    }
    for (const ModelNode &node : nodes_)
        if (node.own && IsClass(*node.place.node))
            CheckCollisions(node);
    CheckClassIds();
    return std::move(findings_);
}

} // namespace inspect
