#include "build/deviations.h"

#include <unordered_map>
#include <utility>

#include "build/extensions.h"
#include "build/leafref_path.h"
#include "build/node_kinds.h"
#include "build/schema_path.h"
#include "syntax/grammar.h"

namespace qxyang {

namespace {

/* What a deviate may set on a node of that type: what the node's own statement may have. */
uint16_t DeviableOn(uint8_t kind)
{
    constexpr uint16_t VALUED = SETS_CONFIG | SETS_MUST | SETS_UNITS | SETS_DEFAULT | SETS_TYPE;
    constexpr uint16_t COUNTED = SETS_MIN_ELEMENTS | SETS_MAX_ELEMENTS;
    switch (kind) {
        case QY_NODE_TYPE_CONTAINER:
            return SETS_CONFIG | SETS_MUST;
        case QY_NODE_TYPE_LEAF:
            return VALUED | SETS_MANDATORY;
        case QY_NODE_TYPE_LEAF_LIST:
            return VALUED | COUNTED;
        case QY_NODE_TYPE_LIST:
            return SETS_CONFIG | SETS_MUST | SETS_UNIQUE | COUNTED;
        case QY_NODE_TYPE_CHOICE:
            return SETS_CONFIG | SETS_DEFAULT | SETS_MANDATORY;
        case QY_NODE_TYPE_ANYXML:
        case QY_NODE_TYPE_ANYDATA:
            return SETS_CONFIG | SETS_MUST | SETS_MANDATORY;
        case QY_NODE_TYPE_INPUT:
        case QY_NODE_TYPE_OUTPUT:
        case QY_NODE_TYPE_NOTIFICATION:
            return SETS_MUST;
        default:
            return 0;
    }
}

/* Properties that can always be replaced: each node has config, written or not, and each leaf has a type. */
constexpr uint16_t ALWAYS_THERE = SETS_CONFIG | SETS_TYPE;

ExtensionChange::Kind ExtensionChangeOf(DeviateKind kind)
{
    if (kind == DeviateKind::Add)
        return ExtensionChange::Kind::Add;
    return kind == DeviateKind::Replace ? ExtensionChange::Kind::Replace : ExtensionChange::Kind::Delete;
}

/* Collects the changes that a module's deviations make to extension instances, and applies them in the end. */
class ExtensionEdits {
  public:
    explicit ExtensionEdits(Build &build) : build_(build) {}

    /* True if a change of that kind, with this instance as its operand, would remove one of the node's. */
    bool Has(QY_NODE *node, ExtensionChange::Kind kind, const QY_EXT &named, Unit &unit, const Statement *deviate)
    {
        Edited &edited = Of(node, unit, deviate);
        if (!edited.isSearched) // all instances enter an index, which takes more memory than they do
            build_.CountJoined(unit, deviate, edited.edit.Count());
        edited.isSearched = true;
        return edited.edit.Has(kind, named);
    }

    void Apply(QY_NODE *node, const ExtensionChange &change, Unit &unit, const Statement *deviate)
    {
        build_.CountJoined(unit, deviate, change.operand->count);
        Edited &edited = Of(node, unit, deviate);
        edited.edit.Apply(change);
        edited.changes.push_back(change);
    }

    void Finish()
    {
        for (Edited &edited : nodes_) {
            if (edited.changes.empty())
                continue;
            build_.load.context.deviations.SetExtensions(edited.node, &build_.module, std::move(edited.changes),
                                                         edited.edit.Result());
        }
    }

  private:
    struct Edited {
        QY_NODE *node;
        ExtensionEdit edit;
        std::vector<ExtensionChange> changes;
        bool isSearched = false; /* for what a change takes away */
    };

    /* The first deviate that needs the node's instances copies them, once they are counted. */
    Edited &Of(QY_NODE *node, Unit &unit, const Statement *deviate)
    {
        auto [entry, isNew] = places_.try_emplace(node, nodes_.size());
        if (isNew) {
            const ExtensionSet *set = DeviationLog::ExtensionsOf(node);
            build_.CountJoined(unit, deviate, set != nullptr ? set->count : 0);
            nodes_.push_back({node, ExtensionEdit(set), {}});
        }
        return nodes_[entry->second];
    }

    Build &build_;
    std::vector<Edited> nodes_;
    std::unordered_map<QY_NODE *, size_t> places_; /* in nodes_ */
};

class Deviator {
  public:
    Deviator(Build &build, TypeCompiler &types, ConstraintChecker &constraints, ExtensionEdits &edits, Scope *scope)
        : build_(build),
          types_(types),
          constraints_(constraints),
          edits_(edits),
          scope_(scope),
          log_(build.load.context.deviations)
    {
    }

    void Apply(const Statement *deviation)
    {
        deviation_ = deviation;
        SchemaPath path;
        QY_NODE *node = nullptr;
        if (path.Parse(build_, *scope_->unit, deviation, true))
            node = path.Follow(build_, *scope_->unit, deviation);
        if (node == nullptr)
            return;
        const Statement *first = FindChild(deviation, Kw::Deviate);
        for (const Statement *child = first; child != nullptr; child = child->next) {
            if (child->keyword != Kw::Deviate)
                continue;
            if (child != first && (IsRemoval(first) || IsRemoval(child))) // RFC 7950, 14: deviation-stmt
                return Fail(child, "'not-supported' is the only deviate that may stand in it");
            Deviate(child, node);
        }
    }

  private:
    static bool IsRemoval(const Statement *deviate) { return deviate->deviateKind == DeviateKind::NotSupported; }

    void Deviate(const Statement *deviate, QY_NODE *node)
    {
        if (IsRemoval(deviate)) {
            if (node->kind == QY_NODE_TYPE_INPUT || node->kind == QY_NODE_TYPE_OUTPUT)
                return Fail(deviate, DescribeNode(node) + " cannot be left out");
            if ((node->flags & NODE_IS_KEY) != 0) // RFC 7950, 7.8.2: a key names leaves that the list has
                constraints_.AwaitListOf(deviate, node, *scope_->unit,
                                         Sentence(DescribeNode(node) + " is a key and cannot be left out"));
            build_.NoteChange(node, *scope_->unit, deviate);
            return log_.Remove(node, &build_.module);
        }
        if (!CheckOperands(deviate, node))
            return;
        build_.NoteChange(node, *scope_->unit, deviate);
        if (const Statement *type = FindChild(deviate, Kw::Type); type != nullptr && IsLeaf(node))
            ReplaceType(type, node);
        ChangeProperties(deviate, node);
        if (const ExtensionSet *operand = ExtensionsOf(build_, *scope_->unit, deviate))
            ChangeExtensions(deviate, operand, node);
    }

    /* RFC 7950, 7.20.3.2: the node can have what is added, and has it not yet if it can have only one; it has what is
     * replaced or deleted. The texts of default, must, units and unique are not compared. */
    bool CheckOperands(const Statement *deviate, const QY_NODE *node)
    {
        DeviateKind kind = deviate->deviateKind;
        uint16_t deviable = DeviableOn(node->kind);
        bool good = true;
        for (const Statement *child = deviate->first; child != nullptr; child = child->next) {
            uint16_t property = PropertyOf(child->keyword);
            std::string what = Quoted(child->keyword != Kw::Instance ? KeywordOf(child->keyword).name : "");
            bool has = (node->flags & FlagsOf(property)) != 0;
            std::string why;
            if ((property & ~deviable) != 0)
                why = " can have no " + what;
            else if (kind == DeviateKind::Add && has && !IsRepeatable(property, node))
                why = " has " + what + " already, which only 'replace' changes";
            else if (kind != DeviateKind::Add && !has && (property & ~ALWAYS_THERE) != 0)
                why = " has no " + what + " to " + deviate->argument;
            if (why.empty())
                continue;
            Fail(child, DescribeNode(node) + why);
            good = false;
        }
        return good;
    }

    static bool IsRepeatable(uint16_t property, const QY_NODE *node)
    {
        bool isLeafList = node->kind == QY_NODE_TYPE_LEAF_LIST;
        return property == SETS_MUST || property == SETS_UNIQUE || (property == SETS_DEFAULT && isLeafList);
    }

    /* A property that a node may have several times stays when one of them is deleted: others may be left. */
    void ChangeProperties(const Statement *deviate, QY_NODE *node)
    {
        uint16_t before = node->flags & NODE_PROPERTIES;
        uint16_t after = ChangedFlags(before, deviate->properties);
        if (deviate->deviateKind == DeviateKind::Delete) {
            after = before;
            for (uint16_t property : {SETS_DEFAULT, SETS_UNITS})
                if ((deviate->properties & property) != 0 && !IsRepeatable(property, node))
                    after &= static_cast<uint16_t>(~FlagsOf(property));
        }
        if (after != before)
            log_.SetProperties(node, &build_.module, after);
        if (deviate->deviateKind != DeviateKind::Delete)
            constraints_.CheckDeviate(deviate, node, *scope_->unit);
    }

    void ReplaceType(const Statement *statement, QY_NODE *node)
    {
        log_.SetType(node, &build_.module, types_.Compile(statement, scope_));
        build_.load.CountRange(scope_->unit->source, statement->offset, *node->type);
        if (node->type->refers)
            AwaitTargets(build_, node, *scope_->unit, statement);
    }

    void ChangeExtensions(const Statement *deviate, const ExtensionSet *operand, QY_NODE *node)
    {
        DeviateKind kind = deviate->deviateKind;
        ExtensionChange change{ExtensionChangeOf(kind), operand};
        for (const QY_EXT &named : *operand)
            if (kind != DeviateKind::Add && !edits_.Has(node, change.kind, named, *scope_->unit, deviate))
                return Fail(deviate, DescribeNode(node) + " has no extension statement " + Quoted(named.name->name) +
                                         " to " + deviate->argument);
        edits_.Apply(node, change, *scope_->unit, deviate);
    }

    std::string Sentence(std::string_view what) const
    {
        return "deviation " + Quoted(deviation_->argument) + ": " + std::string(what);
    }

    void Fail(const Statement *statement, std::string_view what)
    {
        build_.Fail(*scope_->unit, statement, Sentence(what));
    }

    Build &build_;
    TypeCompiler &types_;
    ConstraintChecker &constraints_;
    ExtensionEdits &edits_;
    Scope *scope_;
    DeviationLog &log_;
    const Statement *deviation_ = nullptr;
};

} // namespace

void ApplyDeviations(Build &build, TypeCompiler &types, ConstraintChecker &constraints)
{
    ExtensionEdits edits(build);
    for (Unit *unit : build.units) {
        Deviator deviator(build, types, constraints, edits, build.UnitScope(*unit));
        for (const Statement *statement = unit->root->first; statement != nullptr; statement = statement->next)
            if (statement->keyword == Kw::Deviation)
                deviator.Apply(statement);
    }
    if (!build.Failed())
        edits.Finish();
}

} // namespace qxyang
