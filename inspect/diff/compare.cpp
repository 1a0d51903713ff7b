#include <korv_platform.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "base/numbers.h"
#include "diff/changes.h"
#include "diff/fact_pairs.h"
#include "diff/match.h"
#include "diff/type_changes.h"

namespace inspect::diff {
namespace {

Value TextOrNone(const std::string &text)
{
    return text.empty() ? Value() : Value(text);
}

/* The id that tells hosts which item is gone or new. */
Value IdOf(const Item &item)
{
    if (item.IsLeaf())
        return item.fieldId != 0 ? Value(static_cast<int64_t>(item.fieldId)) : Value();
    return item.classId != 0 ? Value(HexId{item.classId}) : Value();
}

const Where &PlaceOf(const Fact *fact, const Where &otherwise)
{
    return fact != nullptr && fact->where.file != nullptr ? fact->where : otherwise;
}

/* A rule for each of a choice, leaf, class, or any other node. */
Rule ByKind(const Item &item, Rule choice, Rule leaf, Rule ofClass, Rule node)
{
    if (item.IsChoice())
        return choice;
    if (item.IsLeaf())
        return leaf;
    return item.IsClass() ? ofClass : node;
}

/* Nodes that come and go with another one, or that no data shows. */
bool IsSilent(const Item &item)
{
    return !item.isCompared || item.kind == QY_NODE_TYPE_CASE || item.kind == QY_NODE_TYPE_INPUT ||
           item.kind == QY_NODE_TYPE_OUTPUT;
}

const char *KindText(uint32_t kind)
{
    static constexpr std::pair<uint32_t, const char *> KINDS[] = {
        {QY_NODE_TYPE_CONTAINER, "container"},
        {QY_NODE_TYPE_LEAF, "leaf"},
        {QY_NODE_TYPE_LEAF_LIST, "leaf-list"},
        {QY_NODE_TYPE_LIST, "list"},
        {QY_NODE_TYPE_CHOICE, "choice"},
        {QY_NODE_TYPE_CASE, "case"},
        {QY_NODE_TYPE_ANYXML, "anyxml"},
        {QY_NODE_TYPE_ANYDATA, "anydata"},
        {QY_NODE_TYPE_RPC, "rpc"},
        {QY_NODE_TYPE_NOTIFICATION, "notification"},
    };
    const auto *found =
        std::find_if(std::begin(KINDS), std::end(KINDS), [kind](const auto &known) { return known.first == kind; });
    return found != std::end(KINDS) ? found->second : "node";
}

class Comparison {
  public:
    Comparison(const ModuleModel &before, const ModuleModel &after, By by)
        : before_(before),
          after_(after),
          by_(by),
          match_(MatchItems(before.items, after.items)),
          hasOtherState_(before.items.size(), false)
    {
    }

    std::vector<Change> Run()
    {
        CompareRevision();
        CompareFacts(before_.facts, after_.facts, nullptr, nullptr);
        CompareDefinitions();
        for (uint32_t i = 0; i < before_.items.size(); ++i)
            CompareItem(i);
        AddNewItems();
        return std::move(changes_);
    }

  private:
    /* True if those who feel the change go by what it changes. */
    bool IsFelt(Rule rule, const Item *item) const
    {
        switch (rule->feels) {
            case Feels::All:
                return true;
            case Feels::Ids:
                return item == nullptr || item->IsAddressable();
            case Feels::Data:
                return by_ == By::Path || (item != nullptr && item->IsAddressable());
            case Feels::Path:
                return by_ == By::Path;
        }
        return true;
    }

    /* `item` is the old one, null for what is of the module as a whole. */
    void Add(Change change, const Item *item)
    {
        change.breaking = change.breaking && IsFelt(change.rule, item);
        if (item != nullptr)
            change.path = item->path;
        changes_.push_back(std::move(change));
    }

    void CompareRevision()
    {
        if (after_.revision > before_.revision)
            return;
        auto [oldMark, newMark] =
            std::mismatch(before_.marks.begin(), before_.marks.end(), after_.marks.begin(), after_.marks.end());
        if (oldMark == before_.marks.end() && newMark == after_.marks.end())
            return;
        Add({"no-new-revision", false, "", before_.revision, TextOrNone(after_.revision),
             oldMark != before_.marks.end() ? oldMark->where : before_.where,
             newMark != after_.marks.end() ? newMark->where : after_.where},
            nullptr);
    }

    void CompareFacts(std::span<const Fact> before, std::span<const Fact> after, const Item *oldItem,
                      const Item *newItem)
    {
        const Where &oldWhere = oldItem != nullptr ? oldItem->where : before_.where;
        const Where &newWhere = newItem != nullptr ? newItem->where : after_.where;
        bool hasOtherKeys = false;
        hasOtherLeafref_ = false;
        for (const auto &[oldFact, newFact] : DifferentFacts(before, after)) {
            Rule rule = oldFact != nullptr ? oldFact->rule : newFact->rule;
            hasOtherKeys |= rule == Rule("keys");
            hasOtherLeafref_ |= rule == Rule("leafref");
            if ((hasOtherKeys && rule == Rule("key")) || (hasOtherLeafref_ && rule == Rule("leafref-path")) ||
                (rule == Rule("config") && IsInherited(oldItem)))
                continue; /* said already */
            if (rule == Rule("leafref") && (oldFact == nullptr || newFact == nullptr) && !IsLeafref(*oldItem) &&
                !IsLeafref(*newItem))
                continue; /* a member of a union comes or goes, which the types say */
            if (rule == Rule("default") && oldFact != nullptr && newFact != nullptr &&
                IsSameNumber(*oldItem, *oldFact, *newFact))
                continue;
            Value oldValue = oldFact != nullptr ? oldFact->value : Value();
            Value newValue = newFact != nullptr ? newFact->value : Value();
            bool breaking = IsBreaking(*rule, oldValue, newValue) || (newFact == nullptr && Exposes(rule, newItem));
            Add({rule, breaking, "", WithAbsent(rule, std::move(oldValue)), WithAbsent(rule, std::move(newValue)),
                 PlaceOf(oldFact, oldWhere), PlaceOf(newFact, newWhere)},
                oldItem);
        }
    }

    /* True unless the leafref is a member of a union. */
    static bool IsLeafref(const Item &item) { return item.Find("leafref-path") != nullptr; }

    /* RFC 7950, 9.2.1 and 9.3: "1.0" and "1.00" are one number. */
    static bool IsSameNumber(const Item &item, const Fact &before, const Fact &after)
    {
        bool isDecimal = item.type != nullptr && item.type->base == "decimal64";
        if (!isDecimal && (item.type == nullptr || item.type->range == nullptr))
            return false;
        auto text = isDecimal ? DecimalText : IntegerText;
        return text(ValueText(before.value)) == text(ValueText(after.value));
    }

    /* RFC 7950, 11: a mandatory node must not become configuration, nor come to be there without its feature. */
    static bool Exposes(Rule gone, const Item *item)
    {
        return (gone == Rule("config") || gone == Rule("if-feature")) && item != nullptr && IsMandatory(*item);
    }

    /* A node whose parent has become state or configuration has become it with the parent. */
    bool IsInherited(const Item *oldItem)
    {
        if (oldItem == nullptr)
            return false;
        hasOtherState_[static_cast<size_t>(oldItem - before_.items.data())] = true;
        return (oldItem->parent != NO_ITEM && hasOtherState_[oldItem->parent]) ||
               (oldItem->above != NO_ITEM && hasOtherState_[oldItem->above]);
    }

    void CompareDefinitions()
    {
        using Names = std::map<std::pair<std::string_view, std::string_view>, const Definition *>;
        auto index = [](const std::vector<Definition> &definitions) {
            Names names;
            for (const Definition &definition : definitions)
                names.emplace(std::pair<std::string_view, std::string_view>(definition.keyword, definition.name),
                              &definition);
            return names;
        };
        Names oldNames = index(before_.definitions);
        Names newNames = index(after_.definitions);
        for (const Definition &definition : before_.definitions) {
            auto same = newNames.find({definition.keyword, definition.name});
            if (same != newNames.end())
                CompareDefinition(definition, *same->second);
            else
                Add({DefinitionRule(definition, "feature-removed", "identity-removed", "definition-removed"),
                     true,
                     "",
                     NameOf(definition),
                     {},
                     definition.where,
                     {}},
                    nullptr);
        }
        for (const Definition &definition : after_.definitions)
            if (!oldNames.contains({definition.keyword, definition.name}))
                Add({DefinitionRule(definition, "feature-added", "identity-added", "definition-added"),
                     false,
                     "",
                     {},
                     NameOf(definition),
                     {},
                     definition.where},
                    nullptr);
    }

    static Rule DefinitionRule(const Definition &definition, Rule feature, Rule identity, Rule other)
    {
        if (definition.keyword == "feature")
            return feature;
        return definition.keyword == "identity" ? identity : other;
    }

    static std::string NameOf(const Definition &definition)
    {
        bool isNamedByRule = definition.keyword == "feature" || definition.keyword == "identity";
        return (isNamedByRule ? "" : definition.keyword + " ") + definition.name;
    }

    /* The changes say of which definition. */
    void CompareDefinition(const Definition &before, const Definition &after)
    {
        auto named = [&before](Rule rule, const Value &value) {
            std::string name =
                rule == Rule("identity-base") ? before.name + " " : before.keyword + " " + before.name + ": ";
            return IsNone(value) ? Value() : Value(name + ValueText(value));
        };
        for (const auto &[oldFact, newFact] : DifferentFacts(before.facts, after.facts)) {
            Rule rule = oldFact != nullptr ? oldFact->rule : newFact->rule;
            Value oldValue = oldFact != nullptr ? oldFact->value : Value();
            Value newValue = newFact != nullptr ? newFact->value : Value();
            Add({rule, IsBreaking(*rule, oldValue, newValue), "", named(rule, WithAbsent(rule, oldValue)),
                 named(rule, WithAbsent(rule, newValue)), PlaceOf(oldFact, before.where),
                 PlaceOf(newFact, after.where)},
                nullptr);
        }
        if (before.type == nullptr || after.type == nullptr)
            return;
        for (const TypeChange &change : types_.Compare(*before.type, *after.type))
            Add({change.rule, change.breaking, "", named(change.rule, change.before), named(change.rule, change.after),
                 change.oldWhere, change.newWhere},
                nullptr);
    }

    void CompareItem(uint32_t index)
    {
        const Item &before = before_.items[index];
        uint32_t found = match_.newOf[index];
        if (IsSilent(before) && (found == NO_ITEM || !before.isCompared))
            return;
        if (found == NO_ITEM) {
            Rule rule = ByKind(before, "choice-removed", "leaf-removed", "class-removed", "node-removed");
            Add({rule, IsBreaking(*rule, IdOf(before), {}), "", IdOf(before), {}, before.where, {}}, &before);
            return;
        }
        const Item &after = after_.items[found];
        uint32_t parent = before.parent != NO_ITEM ? match_.newOf[before.parent] : NO_ITEM;
        if (parent != after.parent || before.step != after.step)
            Add({ByKind(before, "node-moved", "leaf-moved", "class-moved", "node-moved"), true, "", before.path,
                 after.path, before.where, after.where},
                &before);
        if (before.kind != after.kind) {
            Add({"kind", true, "", std::string(KindText(before.kind)), std::string(KindText(after.kind)), before.where,
                 after.where},
                &before);
            if (!before.IsLeaf() || !after.IsLeaf())
                return;
        }
        CompareFacts(before.facts, after.facts, &before, &after);
        CompareTypes(before, after);
    }

    void CompareTypes(const Item &before, const Item &after)
    {
        if (before.type == nullptr || after.type == nullptr)
            return;
        if (before.type->base == "leafref" && after.type->base == "leafref")
            return; /* neither leads to a type, and what they say are facts of the leaves */
        for (const TypeChange &change : types_.Compare(*before.type, *after.type))
            if (!hasOtherLeafref_ || change.rule != Rule("leafref-path"))
                Add({change.rule, change.breaking, "", change.before, change.after, change.oldWhere, change.newWhere},
                    &before);
    }

    /* RFC 7950, 3: a mandatory node. It stands in configuration or in what is sent to an operation. */
    static bool IsMandatory(const Item &item)
    {
        bool isGiven = item.isInput || item.Find("config") == nullptr;
        return isGiven && (item.Find("mandatory") != nullptr || item.Find("min-elements") != nullptr);
    }

    void AddNewItems()
    {
        std::set<std::string_view> newFeatures;
        for (const Change &change : changes_)
            if (change.rule == Rule("feature-added"))
                newFeatures.insert(std::get<std::string>(change.after));
        auto isOptional = [&](const Item &item) { /* a new feature has to be there for it */
                                                  const Fact *feature = item.Find("if-feature");
                                                  return feature != nullptr &&
                                                         newFeatures.contains(std::get<std::string>(feature->value));
        };
        std::vector<bool> isNeutral(after_.items.size()); /* a container, old or new, that is there anyway */
        for (uint32_t i = 0; i < after_.items.size(); ++i) {
            const Item &item = after_.items[i];
            bool isOld = match_.oldOf[i] != NO_ITEM;
            bool isThere = item.above == NO_ITEM || isNeutral[item.above];
            bool isContainer = (item.kind == QY_NODE_TYPE_CONTAINER && item.Find("presence") == nullptr) ||
                               item.kind == QY_NODE_TYPE_INPUT;
            isNeutral[i] = isOld || (isThere && isContainer && !isOptional(item));
            if (isOld || IsSilent(item))
                continue;
            Rule rule = ByKind(item, "choice-added", "leaf-added", "class-added", "node-added");
            Change change = {
                rule, isThere && IsMandatory(item) && !isOptional(item), item.path, {}, IdOf(item), {}, item.where};
            Add(std::move(change), nullptr);
        }
    }

    const ModuleModel &before_;
    const ModuleModel &after_;
    By by_;
    Match match_;
    std::vector<bool> hasOtherState_; /* by old index */
    bool hasOtherLeafref_ = false;    /* of the item that is compared */
    TypeComparison types_;
    std::vector<Change> changes_;
};

} // namespace

std::vector<Change> Compare(const ModuleModel &before, const ModuleModel &after, By by)
{
    return Comparison(before, after, by).Run();
}

Change ModuleRemoved(const ModuleModel &before)
{
    return {"module-removed", true, "", TextOrNone(before.revision), {}, before.where, {}};
}

Change ModuleAdded(const ModuleModel &after)
{
    return {"module-added", false, "", {}, TextOrNone(after.revision), {}, after.where};
}

std::vector<ModuleChanges> CompareAll(const Version &before, const Version &after, By by)
{
    std::set<std::string> names;
    for (const auto *modules : {&before.modules, &after.modules})
        for (const auto &[name, model] : *modules)
            if (!before.failed.contains(name) && !after.failed.contains(name))
                names.insert(name);
    std::vector<ModuleChanges> all;
    for (const std::string &name : names) {
        auto oldModel = before.modules.find(name);
        auto newModel = after.modules.find(name);
        if (newModel == after.modules.end())
            all.push_back({name, oldModel->second->revision, "", {ModuleRemoved(*oldModel->second)}});
        else if (oldModel == before.modules.end())
            all.push_back({name, "", newModel->second->revision, {ModuleAdded(*newModel->second)}});
        else
            all.push_back({name, oldModel->second->revision, newModel->second->revision,
                           Compare(*oldModel->second, *newModel->second, by)});
    }
    return all;
}

size_t CountBreaking(const std::vector<Change> &changes)
{
    return static_cast<size_t>(
        std::count_if(changes.begin(), changes.end(), [](const Change &change) { return change.breaking; }));
}

} // namespace inspect::diff
