#include "check/class_rules.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "base/numbers.h"
#include "base/text.h"
#include "check/number_faults.h"
#include "check/unmapped_keys.h"
#include "model/path_finder.h"
#include "model/schema_scan.h"
#include "model/trees.h"

namespace inspect {
namespace {

constexpr size_t MAX_PATH = 256;          /* characters that dumps and lookups take */
constexpr size_t MAX_NAME = 64;           /* characters of a step that lookups take */
constexpr uint32_t NEAR_AUGMENT_NUM = 18; /* so many that the next extension may be one too many */
constexpr size_t SHOWN_KEY_NUM = 8;       /* keys that a device's log lines show */
constexpr size_t MAX_CASE_LEAVES = 255;

/* Statements that give an attribute its id, the one that counts first, and a class. */
constexpr std::array<const char *, 2> FIELD_IDS = {"ref-id-key-fid", "field-id"};
constexpr std::array<const char *, 1> CLASS_ID = {"class-id"};
constexpr std::array<const char *, 1> SAMPLE_ID = {"tlmt-sample-id"};
constexpr std::array<const char *, 1> ANCESTOR_KEY = {"ancestor-key-fid"};
constexpr std::array<const char *, 1> INDEX_MAP = {"name2id-key-fid"};
constexpr std::array<const char *, 1> REFERENCE_KEY = {"ref-id-key-fid"};

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

size_t CountCaseLeaves(const KorvTreeNode &node)
{
    size_t num = 0;
    for (const KorvTreeNode &child : Children(node))
        if (!IsOrdinary(child)) {
            for (const KorvTreeLeaf &leaf : Leaves(child.pstLeafList))
                num += IsLeafNode(leaf) && QY_NODE_IsEnabled(leaf.pYinNode) != 0 ? 1 : 0;
            num += CountCaseLeaves(child);
        }
    return num;
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

/* True if the leaf's attribute id is the low bits of this number. A tree from before a deviation has another one. Numbers with
 * a fault of their own are told by StatementRules. */
bool IsCut(const KorvTreeLeaf &leaf, const std::string &keyword, const std::string &argument)
{
    Number number = ReadNumber(argument);
    uint32_t id = number.value == NO_NUMBER ? 0 : number.value & MAX_FIELD_ID;
    bool isLarge = !number.fits || number.value > MAX_FIELD_ID;
    return isLarge && id == leaf.uiFieldId && !FaultOf(keyword, argument);
}

std::string PathOf(const ClassNode &node, const KorvTreeLeaf *leaf)
{
    return DataPath(*node.node) + (leaf != nullptr ? std::string("/") + leaf->pcName : "");
}

} // namespace

bool ClassRules::IsJudged(const char *module)
{
    auto [entry, isNew] = isJudged_.try_emplace(module);
    if (isNew)
        entry->second = judged_.contains(module);
    return entry->second;
}

QY_NODE *ClassRules::SchemaNodeOf(const ClassNode &node, const KorvTreeLeaf *leaf)
{
    auto [nodes, isNew] = schemaNodes_.try_emplace(node.tree->file, instance_, *node.tree->file);
    return nodes->second.Of({node.tree->augment, node.node, leaf});
}

std::optional<Position> ClassRules::Find(const ClassNode &node, const KorvTreeLeaf *leaf, Keywords keywords)
{
    QY_NODE *schemaNode = SchemaNodeOf(node, leaf);
    return schemaNode != nullptr ? places_->OfExtension(schemaNode, keywords) : std::nullopt;
}

void ClassRules::Tell(Rule rule, const std::string &text, const ClassNode &node, const KorvTreeLeaf *leaf,
                      Keywords keywords)
{
    const char *module = leaf != nullptr ? leaf->pcModuleName : node.node->pcModuleName;
    Finding finding = {rule, module, {"", 0, 0, text}, PathOf(node, leaf)};
    PlaceAt(Find(node, leaf, keywords), &finding);
    report_(std::move(finding));
}

void ClassRules::CheckLengths(const ClassNode &node, Lengths lengths)
{
    std::string name = node.node->pcName;
    if (IsOrdinary(*node.node) && name.size() > MAX_NAME)
        Tell("long-name",
             "the name has " + std::to_string(name.size()) + " characters: lookups take at most " +
                 std::to_string(MAX_NAME),
             node);
    bool aboveIsLong = node.node->pstParent != nullptr && lengths.shown - name.size() - 1 > MAX_PATH;
    if (lengths.shown > MAX_PATH && !aboveIsLong)
        Tell("long-path",
             "the path has " + std::to_string(lengths.shown) + " characters: dumps cut it at " +
                 std::to_string(MAX_PATH) + ", and so for everything below",
             node);
}

void ClassRules::CheckLeafLengths(const ClassNode &node, Lengths lengths, const KorvTreeLeaf &leaf)
{
    size_t name = std::strlen(leaf.pcName);
    if (name > MAX_NAME)
        Tell("long-name",
             "the leaf's name has " + std::to_string(name) + " characters: lookups take at most " +
                 std::to_string(MAX_NAME),
             node, &leaf);
    size_t length = lengths.data + 1 + name;
    if (length > MAX_PATH && lengths.shown <= MAX_PATH)
        Tell("long-path",
             "the leaf's path has " + std::to_string(length) + " characters: lookups take at most " +
                 std::to_string(MAX_PATH),
             node, &leaf);
}

void ClassRules::CheckCaseLeafNum(const ClassNode &node)
{
    if (Leaves(node.node->pstCaseLeafList).Size() < MAX_CASE_LEAVES)
        return;
    size_t num = CountCaseLeaves(*node.node);
    if (num > MAX_CASE_LEAVES)
        Tell("many-case-leaves",
             "the choices of '" + std::string(node.node->pcName) + "' have " + std::to_string(num) +
                 " leaves: the first " + std::to_string(MAX_CASE_LEAVES) + " are attributes, the others are left out",
             node);
}

void ClassRules::CheckKeyNum(const ClassNode &node)
{
    size_t own = KeyIds(node.node->aucSelfNodeKey).size();
    size_t ancestor = KeyIds(node.node->aucAncestorKey).size();
    if (own > SHOWN_KEY_NUM || ancestor > SHOWN_KEY_NUM)
        Tell("many-keys",
             ClassText(*node.node) + " has " +
                 Count(std::max(own, ancestor), own >= ancestor ? "key" : "ancestor key") +
                 ": a device's log shows the first " + std::to_string(SHOWN_KEY_NUM) + " only",
             node);
}

void ClassRules::CheckAncestorKeys(const ClassNode &node)
{
    const KorvTreeNode &treeNode = *node.node;
    const KorvTreeNode *above = ClassAbove(treeNode);
    if (above == nullptr || above->uiClassId == treeNode.uiClassId)
        return;
    size_t wanted = MappedKeys(above->aucAncestorKey) + MappedKeys(above->aucSelfNodeKey);
    size_t mapped = MappedKeys(treeNode.aucAncestorKey);
    if (mapped >= wanted)
        return;
    std::string text = Count(wanted - mapped, "key") + " of " + ClassText(*above) +
                       (wanted - mapped == 1 ? " has" : " have") + " no attribute id in " + ClassText(treeNode);
    UnmappedKey why = WhyUnmapped(instance_.Schema(), SchemaNodeOf(node, nullptr), treeNode, *above);
    if (!why.text.empty())
        text += ": " + why.text;
    if (why.leaf != nullptr)
        text += SeeText(Find(node, why.leaf, FIELD_IDS), Find(node, nullptr, {}));
    Tell("unmapped-ancestor-key", text, node);
}

void ClassRules::CheckAttribute(const ClassNode &node, const KorvTreeLeaf &leaf)
{
    std::string of = "'" + std::string(leaf.pcName) + "' of " + ClassText(*node.node);
    for (const char *const &keyword : FIELD_IDS) {
        std::vector<std::string> arguments = ExtensionArguments(leaf.pYinNode, keyword);
        if (!arguments.empty() && IsCut(leaf, keyword, arguments.front())) {
            Tell("field-id-range",
                 "leaf " + of + ": attribute ids end at " + std::to_string(MAX_FIELD_ID) + ", so that " +
                     std::string(keyword) + " " + arguments.front() + " becomes " + std::to_string(leaf.uiFieldId),
                 node, &leaf, {&keyword, 1});
            return;
        }
    }
    std::vector<std::string> ids = ExtensionArguments(leaf.pYinNode, "field-id");
    bool isBad = !ids.empty() && FaultOf("field-id", ids.front()).has_value(); /* StatementRules say so */
    if (Has(leaf, KORV_MASK_FIELD_ID) || isBad)
        return;
    if (Has(leaf, KORV_MASK_REF_ID_KEY))
        Tell("dangling-reference-key",
             "leaf " + of + " has ref-id-key-fid " + std::to_string(leaf.uiRefIdKeyFid) +
                 " and no field-id: it is no attribute, and " + std::to_string(leaf.uiRefIdKeyFid) + " names none",
             node, &leaf, REFERENCE_KEY);
    else if (IsListKey(leaf))
        Tell("key-without-field-id", "key " + of + " has no attribute id", node, &leaf);
    else
        Tell("missing-field-id", "leaf " + of + " has no attribute id", node, &leaf);
}

void ClassRules::CheckUnique(const Attribute &first, const Attribute &later)
{
    if (first.leaf->pYinNode == later.leaf->pYinNode || IsCopy(*first.leaf, *later.leaf))
        return;
    bool isLater = IsJudged(later.leaf->pcModuleName);
    if (!isLater && !IsJudged(first.leaf->pcModuleName))
        return;
    const Attribute &reported = isLater ? later : first;
    const Attribute &other = isLater ? first : later;
    Tell("duplicate-field-id",
         "leaf '" + std::string(reported.leaf->pcName) + "' of " + ClassText(*reported.holder.node) +
             " has attribute id " + std::to_string(later.leaf->uiFieldId) + ", as '" + other.leaf->pcName + "' of " +
             DataPath(*other.holder.node) + " has" +
             SeeText(Find(other.holder, other.leaf, FIELD_IDS), Find(reported.holder, reported.leaf, FIELD_IDS)),
         reported.holder, reported.leaf, FIELD_IDS);
}

void ClassRules::CheckReferences(const std::vector<Attribute> &leaves, const std::map<uint32_t, Attribute> &attributes)
{
    for (const Attribute &one : leaves)
        if (Has(*one.leaf, KORV_MASK_NAME2ID_KEY) && IsJudged(one.leaf->pcModuleName) &&
            one.leaf->uiName2IdKeyFid <= MAX_FIELD_ID && !attributes.contains(one.leaf->uiName2IdKeyFid))
            Tell("dangling-index-map",
                 "leaf '" + std::string(one.leaf->pcName) + "' of " + ClassText(*one.holder.node) +
                     " has the index map " + std::to_string(one.leaf->uiName2IdKeyFid) +
                     ", and no leaf of the class has this attribute id",
                 one.holder, one.leaf, INDEX_MAP);
}

void ClassRules::CheckAncestorKeyIds(const ClassNode &top, const std::map<uint32_t, Attribute> &attributes)
{
    std::set<uint32_t> seen;
    std::set<uint32_t> told;
    for (const uint32_t key : KeyIds(top.node->aucAncestorKey)) {
        if (key == 0)
            continue;
        if (!seen.insert(key).second && told.insert(key).second)
            Tell("duplicate-ancestor-key",
                 ClassText(*top.node) + " has ancestor key " + std::to_string(key) +
                     " more than once: each needs an attribute id of its own",
                 top, nullptr, ANCESTOR_KEY);
        auto attribute = attributes.find(key);
        if (attribute == attributes.end())
            continue;
        const KorvTreeLeaf &leaf = *attribute->second.leaf;
        bool isOwn = std::strcmp(leaf.pcModuleName, top.node->pcModuleName) == 0;
        Tell("ancestor-key-collision",
             ClassText(*top.node) + " has ancestor key " + std::to_string(key) +
                 ", which is the attribute id of leaf '" + leaf.pcName + "' as well" +
                 (isOwn ? ""
                        : SeeText(Find(attribute->second.holder, &leaf, FIELD_IDS), Find(top, nullptr, ANCESTOR_KEY))),
             top, nullptr, ANCESTOR_KEY);
    }
}

/* Own leaves and those of cases, which carry the class id in the class's own list only. Leaves of the class's own module come
 * first, then those of others by the names of their modules: the order of loads decides about no finding. */
void ClassRules::CheckClass(const Class &one)
{
    std::vector<Attribute> leaves;
    for (const ClassNode &node : one.nodes)
        for (const VEC_VECTOR_S *list : {node.node->pstLeafList, node.node->pstCaseLeafList})
            for (const KorvTreeLeaf &leaf : Leaves(list))
                if (IsLeafNode(leaf))
                    leaves.push_back({node, &leaf});
    std::string_view home = one.top.node->pcModuleName;
    auto rank = [home](const Attribute &attribute) {
        std::string_view module = attribute.leaf->pcModuleName;
        return std::pair(module != home, module);
    };
    auto isBefore = [&](const Attribute &left, const Attribute &right) { return rank(left) < rank(right); };
    std::stable_sort(leaves.begin(), leaves.end(), isBefore);
    std::map<uint32_t, Attribute> attributes;
    for (const Attribute &attribute : leaves) {
        if (IsJudged(attribute.leaf->pcModuleName))
            CheckAttribute(attribute.holder, *attribute.leaf);
        if (!Has(*attribute.leaf, KORV_MASK_FIELD_ID))
            continue;
        const auto [entry, isNew] = attributes.emplace(attribute.leaf->uiFieldId, attribute);
        if (!isNew)
            CheckUnique(entry->second, attribute);
    }
    CheckReferences(leaves, attributes);
    if (IsJudged(one.top.node->pcModuleName))
        CheckAncestorKeyIds(one.top, attributes);
}

void ClassRules::CheckId(Rule rule, uint32_t id, const ClassNode &node, std::map<uint32_t, ClassNode> *uses)
{
    const auto [first, isNew] = uses->try_emplace(id, node);
    if (id == 0 || isNew || !IsJudged(node.node->pcModuleName))
        return;
    const ClassNode &other = first->second;
    bool isSample = rule == Rule("duplicate-sample-id");
    Keywords keywords = isSample ? Keywords(SAMPLE_ID) : Keywords(CLASS_ID);
    std::string module = other.node->pcModuleName;
    Tell(rule,
         ClassText(*node.node) + " has the " + (isSample ? "sample id " + Hex(id) : std::string("class id")) + " of " +
             DataPath(*other.node) + (module == node.node->pcModuleName ? "" : " of module '" + module + "'") +
             SeeText(Find(other, nullptr, keywords), Find(node, nullptr, keywords)),
         node, nullptr, keywords);
}

/* Classes of modules that are not judged come first, then those of others by the names of their modules: the order of loads
 * decides about no finding. */
void ClassRules::CheckIds()
{
    auto rank = [this](const ClassNode &node) {
        const char *module = node.node->pcModuleName;
        return std::pair(IsJudged(module), std::string_view(module));
    };
    std::vector<ClassNode> tops;
    for (const Class &one : classes_)
        tops.push_back(one.top);
    std::stable_sort(tops.begin(), tops.end(),
                     [&rank](const ClassNode &left, const ClassNode &right) { return rank(left) < rank(right); });
    std::map<uint32_t, ClassNode> classIds;
    std::map<uint32_t, ClassNode> sampleIds;
    for (const ClassNode &top : tops) {
        CheckId("duplicate-class-id", top.node->uiClassId, top, &classIds);
        CheckId("duplicate-sample-id", top.node->uiSampleId, top, &sampleIds);
    }
}

void ClassRules::Collect(const ClassTree &tree, const KorvTreeNode &node, Lengths above)
{
    size_t name = std::strlen(node.pcName) + 1;
    Lengths lengths = {above.shown + name, above.data + (IsOrdinary(node) ? name : 0)};
    ClassNode here = {&tree, &node};
    bool isJudged = IsJudged(node.pcModuleName);
    if (isJudged) {
        CheckLengths(here, lengths);
        CheckCaseLeafNum(here);
    }
    for (const KorvTreeLeaf &leaf : Leaves(node.pstLeafList))
        if (IsJudged(leaf.pcModuleName))
            CheckLeafLengths(here, lengths, leaf);
    if (IsClass(node)) {
        auto [entry, isNew] = classOf_.try_emplace(&ClassTop(node), classes_.size());
        if (isNew)
            classes_.push_back({here, {}});
        classes_[entry->second].nodes.push_back(here);
        if (isJudged) {
            CheckKeyNum(here);
            CheckAncestorKeys(here);
        }
    }
    for (const KorvTreeNode &child : Children(node))
        Collect(tree, child, lengths);
}

void ClassRules::Check(const std::vector<ClassTree> &trees)
{
    for (const ClassTree &tree : trees)
        Collect(tree, *tree.top, {0, 0});
    for (const Class &one : classes_)
        CheckClass(one);
    CheckIds();
}

void CheckAugmentNum(const ModuleFile &file, const std::optional<Position> &place, const ClassRules::Report &report)
{
    if (file.ucAugmentNum < NEAR_AUGMENT_NUM)
        return;
    Finding finding = {"many-augments", file.pcModuleName, {}};
    finding.cause.text = "the module has " + std::to_string(file.ucAugmentNum) + " augments, at most " +
                         std::to_string(KORV_AUGMENT_NUM) + " can be loaded";
    PlaceAt(place, &finding);
    report(std::move(finding));
}

} // namespace inspect
