#include "deviations.h"

#include <algorithm>

#include "extensions.h"
#include "schema_path.h"

namespace qxyang {

namespace {

/* What a deviate may set on a node of that type. */
uint16_t deviableOn(uint8_t kind)
{
    constexpr uint16_t kValued = kSetsConfig | kSetsMust | kSetsUnits | kSetsDefault | kSetsType;
    constexpr uint16_t kCounted = kSetsMinElements | kSetsMaxElements;
    switch (kind) {
        case QY_NODE_TYPE_CONTAINER:
            return kSetsConfig | kSetsMust;
        case QY_NODE_TYPE_LEAF:
            return kValued | kSetsMandatory;
        case QY_NODE_TYPE_LEAF_LIST:
            return kValued | kCounted;
        case QY_NODE_TYPE_LIST:
            return kSetsConfig | kSetsMust | kSetsUnique | kCounted;
        case QY_NODE_TYPE_CHOICE:
            return kSetsConfig | kSetsDefault | kSetsMandatory;
        case QY_NODE_TYPE_ANYXML:
        case QY_NODE_TYPE_ANYDATA:
            return kSetsConfig | kSetsMust | kSetsMandatory;
        case QY_NODE_TYPE_INPUT:
        case QY_NODE_TYPE_OUTPUT:
        case QY_NODE_TYPE_NOTIFICATION:
            return kSetsMust;
        default:
            return 0;
    }
}

Deviation::Kind extensionChange(DeviateKind kind)
{
    if (kind == DeviateKind::kAdd)
        return Deviation::Kind::kAddExtensions;
    return kind == DeviateKind::kReplace ? Deviation::Kind::kReplaceExtensions : Deviation::Kind::kDeleteExtensions;
}

class Deviator {
  public:
    Deviator(Build &build, TreeBuilder &builder, Scope *scope)
        : build_(build), builder_(builder), scope_(scope), log_(build.load.context.deviations)
    {
    }

    void apply(const Statement *deviation)
    {
        deviation_ = deviation;
        SchemaPath path;
        QY_NODE *node = nullptr;
        if (path.parse(build_, *scope_->unit, deviation, true))
            node = path.follow(build_, *scope_->unit, deviation);
        if (node == nullptr)
            return;
        for (const Statement *child = deviation->first; child != nullptr; child = child->next)
            if (child->keyword == Kw::kDeviate)
                deviate(child, node);
    }

  private:
    void deviate(const Statement *deviate, QY_NODE *node)
    {
        auto kind = static_cast<DeviateKind>(deviate->detail);
        if (kind == DeviateKind::kNotSupported) {
            if (node->kind == QY_NODE_TYPE_INPUT || node->kind == QY_NODE_TYPE_OUTPUT)
                return fail(deviate, describeNode(node) + " cannot be left out");
            return log_.apply(node, {&build_.module, Deviation::Kind::kRemove});
        }
        if ((deviate->properties & ~deviableOn(node->kind)) != 0)
            fail(deviate, describeNode(node) + " has nothing of that kind to " + deviate->argument);
        if (const Statement *type = findChild(deviate, Kw::kType); type != nullptr && isLeaf(node))
            replaceType(type, node);
        if (const ExtensionSet *operand = extensionsOf(build_, *scope_->unit, deviate))
            changeExtensions(deviate, operand, node);
    }

    void replaceType(const Statement *statement, QY_NODE *node)
    {
        Deviation change{&build_.module, Deviation::Kind::kType};
        change.type = builder_.types().compile(statement, scope_);
        log_.apply(node, std::move(change));
        if (node->type->refers)
            builder_.awaitTargets(node, scope_->unit, statement);
    }

    void changeExtensions(const Statement *deviate, const ExtensionSet *operand, QY_NODE *node)
    {
        auto kind = static_cast<DeviateKind>(deviate->detail);
        for (const QY_EXT &named : *operand) {
            auto matches = [&named](const QY_EXT &instance) { return instance.name == named.name; };
            const ExtensionSet *set = node->extensions;
            if (kind == DeviateKind::kAdd || (set != nullptr && std::any_of(set->begin(), set->end(), matches)))
                continue;
            return fail(deviate, describeNode(node) + " has no extension statement " + quoted(named.name->name) +
                                     " to " + deviate->argument);
        }
        Deviation change{&build_.module, extensionChange(kind)};
        change.operand = operand;
        log_.apply(node, std::move(change));
    }

    void fail(const Statement *statement, std::string_view what)
    {
        build_.fail(*scope_->unit, statement, "deviation " + quoted(deviation_->argument) + ": " + std::string(what));
    }

    Build &build_;
    TreeBuilder &builder_;
    Scope *scope_;
    DeviationLog &log_;
    const Statement *deviation_ = nullptr;
};

}  // namespace

void applyDeviations(Build &build, TreeBuilder &builder)
{
    for (Unit *unit : build.units) {
        Deviator deviator(build, builder, build.unitScope(*unit));
        for (const Statement *statement = unit->root->first; statement != nullptr; statement = statement->next)
            if (statement->keyword == Kw::kDeviation)
                deviator.apply(statement);
    }
}

}  // namespace qxyang
