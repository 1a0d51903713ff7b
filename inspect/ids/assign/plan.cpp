#include "ids/assign/plan.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "base/text.h"
#include "ids/assign/numbering.h"
#include "ids/assign/path_choice.h"
#include "ids/assign/statement_names.h"
#include "ids/assign/type_table.h"
#include "ids/node_path.h"
#include "model/schema_scan.h"

namespace inspect::ids {
namespace {

constexpr size_t MAX_KEYS = 16;
constexpr size_t MAX_KEY_NAME = 64;
constexpr size_t MAX_LEAVES = 255;

/* A key of a class. */
struct Key {
    uint32_t id;   /* attribute id in the class; 0: none */
    uint32_t name; /* by which classes below name it: its index map if it has one, else its id */
    uint32_t leaf; /* the leaf that it is, or stands for; NO_NODE: not known */
};

struct Class {
    uint32_t id = 0;
    std::vector<Key> ancestors{};
    std::vector<Key> own{};
    std::string trouble{}; /* why classes below cannot have its keys */

    std::vector<Key> All() const
    {
        std::vector<Key> all = ancestors;
        all.insert(all.end(), own.begin(), own.end());
        return all;
    }
};

std::string Quoted(const std::string &name)
{
    return "'" + name + "'";
}

class Planner {
  public:
    Planner(const Survey &survey, const Placement &placement, const Registry &registry, const AssignOptions &options)
        : survey_(survey),
          placement_(placement),
          options_(options),
          include_(survey, options.include, "--include"),
          exclude_(survey, options.exclude, "--exclude"),
          numbering_(survey, registry, options.firstClassId),
          above_(survey.Nodes().size(), NO_NODE),
          list_(survey.Nodes().size(), NO_NODE),
          hasNewField_(survey.Nodes().size())
    {
    }

    Plan Run();

  private:
    void TakeModels();
    bool MayWrite(uint32_t index) const;
    bool IsChosen(uint32_t index) const;
    void Visit(uint32_t index);
    void SetAbove(uint32_t index);
    void LeaveOut(uint32_t index, const std::string &reason) { plan_.leftOut.push_back({index, reason}); }

    bool FindsIndexMap(uint32_t leaf) const;
    std::string KeyTrouble(uint32_t leaf) const;
    std::string OwnTrouble(uint32_t index) const;
    std::string AboveTrouble(const Class &above) const;
    std::string TroubleOf(uint32_t index) const;

    void AddClass(uint32_t index);
    void CompleteClass(uint32_t index, uint32_t classId);
    void AddAncestors(uint32_t index, Class *made);
    void ReadAncestors(uint32_t index, const AncestorStatements &known, Class *made);
    Key AddAncestor(uint32_t index, const Key &key, const AncestorStatements *known, uint32_t classId);
    uint32_t AddField(uint32_t leaf, uint32_t classId);
    void Write(uint32_t index, const char *keyword, const std::string &argument);

    const Survey &survey_;
    const Placement &placement_;
    const AssignOptions &options_;
    PathChoice include_;
    PathChoice exclude_;
    Numbering numbering_;
    std::vector<uint32_t> above_;   /* the nearest class above each node */
    std::vector<uint32_t> list_;    /* the nearest list above each node that is no class, below that one */
    std::vector<bool> hasNewField_; /* a leaf gets an attribute id */
    std::unordered_map<uint32_t, uint32_t> models_; /* class ids that nodes have and keep */
    std::unordered_map<uint32_t, Class> classes_;
    Plan plan_;
};

void Planner::Write(uint32_t index, const char *keyword, const std::string &argument)
{
    plan_.statements.push_back({index, keyword, argument});
}

/* A grouping that is used again brings its class ids once more: those that the registry has for the nodes of its first use
 * alone do not count in the second one. */
void Planner::TakeModels()
{
    std::unordered_map<uint32_t, uint32_t> sharers;
    for (uint32_t i = 0; i < survey_.Nodes().size(); ++i) {
        const SurveyNode &node = survey_.At(i);
        if (node.classId == 0)
            continue;
        bool isOfOthers =
            placement_.IsShared(i) && MayWrite(i) && node.isInTree && numbering_.IsOfOthers(node.classId, i);
        if (isOfOthers)
            continue;
        models_.emplace(i, node.classId);
        numbering_.TakeClass(node.classId, i);
        if (!placement_.IsShared(i))
            continue;
        auto [first, isFirst] = sharers.try_emplace(node.classId, i);
        if (!isFirst && survey_.At(first->second).own == node.own && MayWrite(i))
            LeaveOut(i, "its grouping gives it class id " + Hex(node.classId) + ", as it does " +
                            PathOf(survey_.At(first->second).node) +
                            ": the registry has neither, so that both keep it");
    }
}

bool Planner::MayWrite(uint32_t index) const
{
    return survey_.IsWanted(index) && !exclude_.HasAbove(index) && placement_.Of(index).has_value();
}

bool Planner::IsChosen(uint32_t index) const
{
    const SurveyNode &node = survey_.At(index);
    bool byRule = node.type == QY_NODE_TYPE_LIST || options_.rule == ClassRule::All ||
                  (options_.rule == ClassRule::LeafHolders && !survey_.LeavesOf(index).empty());
    return byRule || include_.Has(index);
}

void Planner::SetAbove(uint32_t index)
{
    uint32_t parent = survey_.At(index).parent;
    if (parent == NO_NODE)
        return;
    bool isClass = classes_.contains(parent);
    bool isLostList = survey_.At(parent).type == QY_NODE_TYPE_LIST && survey_.TakerOf(index) == NO_NODE;
    above_[index] = isClass ? parent : above_[parent];
    list_[index] = isClass ? NO_NODE : isLostList ? parent : list_[parent];
}

/* The library looks for a key's index map among the children, up to the first leaf or leaf-list that has no attribute id. */
bool Planner::FindsIndexMap(uint32_t leaf) const
{
    uint32_t i = survey_.At(survey_.At(leaf).parent).child;
    for (; i != leaf && i != NO_NODE; i = survey_.At(i).next) {
        bool isRead = survey_.At(i).type == QY_NODE_TYPE_LEAF && (survey_.At(i).field != 0 || hasNewField_[i]);
        if (!isRead && (survey_.At(i).type == QY_NODE_TYPE_LEAF || survey_.At(i).type == QY_NODE_TYPE_LEAF_LIST))
            return false;
    }
    return true;
}

/* Why a key cannot have an attribute id that the library reads; "" when it can. */
std::string Planner::KeyTrouble(uint32_t leaf) const
{
    const SurveyNode &node = survey_.At(leaf);
    std::string key = "its key " + Quoted(NameOf(node.node));
    if (NameOf(node.node).size() > MAX_KEY_NAME)
        return key + " has a name of more than " + std::to_string(MAX_KEY_NAME) + " characters";
    if (node.field != 0 && node.hasType)
        return "";
    if (!node.hasType && !DatatypeFor(node.node, options_.datatypes))
        return key + " is of type " + TypeNameOf(node.node) + ", for which there is no datatype";
    if (node.field == 0 && !MayWrite(leaf))
        return key + " can get no attribute id";
    return "";
}

std::string Planner::OwnTrouble(uint32_t index) const
{
    if (list_[index] != NO_NODE && !include_.Has(index))
        return "the list " + PathOf(survey_.At(list_[index]).node) +
               " around it is no class: nothing would tell its objects apart";
    std::vector<uint32_t> keys = survey_.KeyLeavesOf(index);
    if (keys.empty() && survey_.At(index).type == QY_NODE_TYPE_LIST && !include_.Has(index))
        return "it is a list without key: nothing would tell its objects apart";
    if (keys.size() > MAX_KEYS)
        return "it has " + Count(keys.size(), "key") + ", a class has at most " + std::to_string(MAX_KEYS);
    for (uint32_t key : keys)
        if (std::string trouble = KeyTrouble(key); !trouble.empty())
            return trouble;
    size_t leaves = 0;
    for (uint32_t i = survey_.At(index).child; i != NO_NODE; i = survey_.At(i).next)
        leaves += survey_.At(i).type == QY_NODE_TYPE_LEAF ? 1 : 0;
    if (leaves > MAX_LEAVES)
        return "it has " + std::to_string(leaves) + " leaves, a class has at most " + std::to_string(MAX_LEAVES);
    return "";
}

std::string Planner::AboveTrouble(const Class &above) const
{
    if (!above.trouble.empty())
        return above.trouble;
    std::set<uint32_t> names;
    std::vector<Key> keys = above.All();
    if (keys.size() > MAX_KEYS)
        return "the classes above have " + Count(keys.size(), "key") + ", a class has at most " +
               std::to_string(MAX_KEYS) + " ancestor keys";
    for (const Key &key : keys) {
        if (key.id == 0)
            return "a key of the class above has no attribute id";
        if (!names.insert(key.name).second)
            return "two keys of the class above go by the number " + std::to_string(key.name);
    }
    return "";
}

std::string Planner::TroubleOf(uint32_t index) const
{
    std::string trouble = OwnTrouble(index);
    if (trouble.empty() && above_[index] != NO_NODE)
        trouble = AboveTrouble(classes_.at(above_[index]));
    return trouble;
}

/* The attribute id of a leaf, which gets one if it has none; 0 when it cannot. */
uint32_t Planner::AddField(uint32_t leaf, uint32_t classId)
{
    const SurveyNode &node = survey_.At(leaf);
    if (!MayWrite(leaf))
        return node.field;
    std::optional<std::string> datatype = node.hasType ? "" : DatatypeFor(node.node, options_.datatypes);
    if (node.field == 0 && !datatype) {
        LeaveOut(leaf, "it is of type " + TypeNameOf(node.node) + ", for which there is no datatype");
        return 0;
    }
    uint32_t id = node.field;
    if (id == 0)
        id = node.reference != 0 ? node.reference : numbering_.GiveField(classId, leaf, false);
    if (id == 0) {
        LeaveOut(leaf, "its class has no attribute id left");
        return 0;
    }
    hasNewField_[leaf] = node.field == 0;
    if (node.field == 0)
        Write(leaf, FIELD_ID, std::to_string(id));
    if (datatype && !datatype->empty())
        Write(leaf, DATATYPE_ID, *datatype);
    return id;
}

/* What the library makes of statements that are there. */
void Planner::ReadAncestors(uint32_t index, const AncestorStatements &known, Class *made)
{
    size_t wanted = above_[index] != NO_NODE ? classes_.at(above_[index]).All().size() : 0;
    for (const auto &[name, id] : known.keys)
        made->ancestors.push_back({id, id, NO_NODE});
    if (known.keys.size() != wanted && MayWrite(index))
        LeaveOut(index, "its list of ancestor keys has " + std::to_string(known.keys.size()) +
                            " ids, and stays as it is; the classes above have " + Count(wanted, "key"));
}

Key Planner::AddAncestor(uint32_t index, const Key &key, const AncestorStatements *known, uint32_t classId)
{
    if (known != nullptr)
        for (uint32_t wanted : {key.name, key.id})
            for (const auto &[name, id] : known->keys)
                if (name == wanted)
                    return {id, id, key.leaf};
    uint32_t id = MayWrite(index) ? numbering_.GiveField(classId, key.leaf, true) : 0;
    if (id != 0)
        plan_.statements.push_back({index, ANCESTOR_KEY, std::to_string(key.name), id});
    else if (MayWrite(index))
        LeaveOut(index, "it has no attribute id left for a key of the classes above");
    return {id, id, key.leaf};
}

/* Ancestor keys in the mapping form, unless the class has a list of them. */
void Planner::AddAncestors(uint32_t index, Class *made)
{
    const AncestorStatements *known = survey_.AncestorsOf(index);
    if (known != nullptr && known->isList)
        return ReadAncestors(index, *known, made);
    if (above_[index] == NO_NODE)
        return;
    const Class &above = classes_.at(above_[index]);
    if (std::string trouble = AboveTrouble(above); !trouble.empty()) {
        made->trouble = trouble;
        if (MayWrite(index))
            LeaveOut(index, "it gets no ancestor keys: " + trouble);
        return;
    }
    size_t written = plan_.statements.size();
    for (const Key &key : above.All())
        made->ancestors.push_back(AddAncestor(index, key, known, made->id));
    bool isNew = plan_.statements.size() > written;
    if (!isNew || known == nullptr || !known->isInGrouping || placement_.Of(index)->refine.empty())
        return;
    for (const auto &[name, id] : known->keys) /* the refine takes the place of those of the grouping */
        plan_.statements.push_back({index, ANCESTOR_KEY, std::to_string(name), id});
}

void Planner::CompleteClass(uint32_t index, uint32_t classId)
{
    Class made = {.id = classId};
    std::vector<uint32_t> keys = survey_.KeyLeavesOf(index);
    std::vector<uint32_t> leaves = survey_.LeavesOf(index);
    auto isAmong = [](const std::vector<uint32_t> &all, uint32_t leaf) {
        return std::find(all.begin(), all.end(), leaf) != all.end();
    };
    for (uint32_t leaf : keys) {
        uint32_t id = isAmong(leaves, leaf) ? AddField(leaf, classId) : survey_.At(leaf).field;
        made.own.push_back({id, id, leaf});
    }
    uint32_t above = above_[index];
    bool isPart = above != NO_NODE && classes_.at(above).id == classId;
    if (isPart) {
        made.ancestors = classes_.at(above).ancestors;
        made.trouble = classes_.at(above).trouble;
    } else {
        AddAncestors(index, &made);
    }
    for (uint32_t leaf : leaves)
        if (!isAmong(keys, leaf))
            (void)AddField(leaf, classId);
    for (Key &key : made.own)
        if (survey_.At(key.leaf).indexMap != 0 && FindsIndexMap(key.leaf))
            key.name = survey_.At(key.leaf).indexMap;
    if (isPart && !classes_.at(above).own.empty()) {
        made.own = classes_.at(above).own;
        for (Key &key : made.own) /* the library looks for index maps among this node's own leaves */
            key.name = key.id;
    }
    if (uint32_t taker = survey_.TakerOf(index); taker != NO_NODE)
        classes_.emplace(taker, made);
    classes_.emplace(index, std::move(made));
}

void Planner::AddClass(uint32_t index)
{
    std::string trouble = TroubleOf(index);
    if (!trouble.empty())
        return LeaveOut(index, trouble);
    uint32_t id = numbering_.GiveClass(index);
    size_t needed = survey_.KeyLeavesOf(index).size();
    if (above_[index] != NO_NODE)
        needed += classes_.at(above_[index]).All().size();
    if (numbering_.RoomIn(id) < needed)
        return LeaveOut(index, "its class " + Hex(id) + " has no attribute ids left for its keys");
    Write(index, CLASS_ID, Hex(id));
    CompleteClass(index, id);
}

void Planner::Visit(uint32_t index)
{
    const SurveyNode &node = survey_.At(index);
    SetAbove(index);
    if (node.type != QY_NODE_TYPE_CONTAINER && node.type != QY_NODE_TYPE_LIST) {
        if (include_.Has(index))
            LeaveOut(index, "no class can be made of it: it is neither a list nor a container");
        return;
    }
    auto has = models_.find(index);
    if (node.isLeafrefClass) /* it is made with the node from which it takes its ids */
        return;
    if (has != models_.end() && node.isInTree)
        return CompleteClass(index, has->second);
    if (!survey_.IsWanted(index) || has != models_.end() || exclude_.HasAbove(index) || !IsChosen(index))
        return;
    if (!node.isInTree) {
        if (node.type == QY_NODE_TYPE_LIST || include_.Has(index))
            LeaveOut(index, "no tree holds it: it is not below a container at a module's top");
        return;
    }
    if (!placement_.Of(index))
        return LeaveOut(index, "no file of its module makes it");
    AddClass(index);
}

Plan Planner::Run()
{
    TakeModels();
    for (uint32_t i = 0; i < survey_.Nodes().size(); ++i)
        Visit(i);
    auto isBefore = [](const auto &left, const auto &right) { return left.node < right.node; };
    std::stable_sort(plan_.statements.begin(), plan_.statements.end(), isBefore);
    std::stable_sort(plan_.leftOut.begin(), plan_.leftOut.end(), isBefore);
    return std::move(plan_);
}

} // namespace

Plan MakePlan(const Survey &survey, const Placement &placement, const Registry &registry, const AssignOptions &options)
{
    return Planner(survey, placement, registry, options).Run();
}

} // namespace inspect::ids
