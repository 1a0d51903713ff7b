/* Default values of leafs and leaf-lists, and what leafrefs refer to. */
#include <algorithm>

#include "base/numbers.h"
#include "base/text.h"
#include "check/yang/instance_identifier.h"
#include "check/yang/node_rules.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

/* A leaf or leaf-list with its default statements and the types that say what they mean. */
struct Defaults {
    QY_NODE *leaf;
    uint32_t builtIn;
    std::vector<NodeStatement> types;
};

bool IsKey(QY_NODE *node)
{
    return QY_NODE_GetNodeType(node) == QY_NODE_TYPE_LEAF && (QY_NODE_IsKey(node) & 1U) != 0;
}

uint32_t BuiltInType(QY_NODE *leaf)
{
    QY_TYPE *type = OwnType(leaf);
    return type != nullptr ? QY_TYPE_GetBuiltInBaseType(type) : 0;
}

/* The default of the nearest typedef that has one. It holds for a leaf that need not exist and has none of its own. */
std::vector<NodeStatement> DefaultOfType(QY_NODE *leaf)
{
    if (IsKey(leaf) || WhyMandatory(leaf))
        return {};
    for (const NodeStatement &definition : TypedefsOf(leaf))
        if (std::optional<NodeStatement> found = StatementWithin(definition.origin, "default"))
            return {*found};
    return {};
}

std::string Which(const NodeStatement &value, QY_NODE *leaf)
{
    return "default '" + std::string(value.argument) + "' of " + Described(leaf);
}

/* RFC 7950, 7.6.4: what a default is defined by has no if-feature. */
void CheckNames(NodeCheck &check, const Defaults &defaults, const NodeStatement &value)
{
    bool isBits = defaults.builtIn == QY_TYPE_BITS;
    for (const NodeStatement &type : defaults.types) {
        const auto &conditional = check.ConditionalNamesIn(type);
        if (conditional.empty())
            continue;
        for (const std::string &name :
             isBits ? Words(std::string(value.argument)) : std::vector{std::string(value.argument)})
            if (conditional.contains(name))
                check.Report(
                    "conditional-default",
                    Which(value, defaults.leaf) + ": " + (isBits ? "bit '" : "enum '") + name + "' has an 'if-feature'",
                    {value.origin, type.origin});
    }
}

/* RFC 7950, 9.10: an identity that is derived from all bases of the type. */
void CheckIdentity(NodeCheck &check, const Defaults &defaults, const NodeStatement &value)
{
    PrefixedName name = SplitName(value.argument);
    std::string module = check.NamesOf(value).ModuleOf(name.prefix);
    std::string which = Which(value, defaults.leaf) + ": ";
    if (module.empty())
        return check.Report("bad-default", which + "prefix '" + std::string(name.prefix) + "' is not known",
                            {value.origin});
    const Identity *identity = check.AllIdentities().Find(module, name.name);
    if (identity == nullptr)
        return check.Report("bad-default",
                            which + "module '" + module + "' has no identity '" + std::string(name.name) + "'",
                            {value.origin});
    if (identity->isConditional)
        check.Report("conditional-default", which + "the identity has an 'if-feature'", {value.origin});
    if (defaults.types.empty())
        return;
    const NodeStatement &type = defaults.types.back();
    std::string own = module + ":" + std::string(name.name);
    for (const NodeStatement &base : StatementsWithin(type.origin, "base")) {
        PrefixedName baseName = SplitName(base.argument);
        std::string above = check.NamesOf(base).ModuleOf(baseName.prefix) + ":" + std::string(baseName.name);
        if (!check.AllIdentities().IsDerived(own, above))
            return check.Report("bad-default", which + "the identity is not derived from '" + above + "'",
                                {value.origin, type.origin});
    }
}

void CheckInstanceIdentifier(NodeCheck &check, const Defaults &defaults, const NodeStatement &value)
{
    std::string why = WhyNoInstanceIdentifier(value.argument, check.NamesOf(value));
    if (!why.empty())
        check.Report("bad-default", Which(value, defaults.leaf) + " is no instance-identifier: " + why, {value.origin});
}

/* The same text for all ways in which the type writes one value. */
std::string CanonicalText(NodeCheck &check, uint32_t builtIn, const NodeStatement &value)
{
    std::vector<std::string> words;
    switch (builtIn) {
        case QY_TYPE_BITS:
            words = Words(std::string(value.argument));
            std::sort(words.begin(), words.end());
            return Join(words, " ");
        case QY_TYPE_DECIMAL64:
            return DecimalText(value.argument);
        case QY_TYPE_IDENTITYREF: {
            PrefixedName name = SplitName(value.argument);
            return check.NamesOf(value).ModuleOf(name.prefix) + ":" + std::string(name.name);
        }
        case QY_TYPE_INT8:
        case QY_TYPE_INT16:
        case QY_TYPE_INT32:
        case QY_TYPE_INT64:
        case QY_TYPE_UINT8:
        case QY_TYPE_UINT16:
        case QY_TYPE_UINT32:
        case QY_TYPE_UINT64:
            return IntegerText(value.argument);
        default:
            return std::string(value.argument);
    }
}

/* RFC 7950, 7.7: the values of a leaf-list that is configuration differ. */
void CheckRepeatedDefaults(NodeCheck &check, QY_NODE *list, const std::vector<NodeStatement> &values)
{
    std::unordered_set<std::string> seen;
    for (const NodeStatement &value : values)
        if (!seen.insert(CanonicalText(check, BuiltInType(list), value)).second)
            check.Report("repeated-default", Which(value, list) + " is there already", {value.origin});
}

bool RequiresInstance(const std::vector<NodeStatement> &types)
{
    for (const NodeStatement &type : types)
        if (std::optional<NodeStatement> found = StatementWithin(type.origin, "require-instance"))
            return found->argument == "true";
    return true;
}

} // namespace

void CheckDefaults(NodeCheck &check, QY_NODE *leaf)
{
    std::vector<NodeStatement> values = StatementsOf(leaf, "default");
    bool isList = QY_NODE_GetNodeType(leaf) == QY_NODE_TYPE_LEAF_LIST;
    if (std::optional<NodeStatement> least = isList && !values.empty() ? WhyMandatory(leaf) : std::nullopt)
        check.Report("default-with-min-elements",
                     Described(leaf) + " has a default and min-elements " + std::string(least->argument),
                     {values.front().origin, least->origin});
    if (values.size() > 1 && IsConfig(leaf))
        CheckRepeatedDefaults(check, leaf, values);
    if (values.empty())
        values = DefaultOfType(leaf);
    if (values.empty())
        return;
    Defaults defaults = {leaf, BuiltInType(leaf), TypesOf(leaf)};
    for (const NodeStatement &value : values) {
        if (defaults.builtIn == QY_TYPE_ENUMERATION || defaults.builtIn == QY_TYPE_BITS)
            CheckNames(check, defaults, value);
        if (defaults.builtIn == QY_TYPE_IDENTITYREF)
            CheckIdentity(check, defaults, value);
        if (defaults.builtIn == QY_TYPE_INSTANCE_IDENTIFIER)
            CheckInstanceIdentifier(check, defaults, value);
    }
}

/* RFC 7950, 9.9. */
void CheckLeafref(NodeCheck &check, QY_NODE *leaf)
{
    QY_NODE *target = BuiltInType(leaf) == QY_TYPE_LEAFREF ? QY_NODE_GetLeafrefTargetNode(leaf, 0) : nullptr;
    if (target == nullptr || !IsConfig(leaf) || IsConfig(target))
        return;
    std::vector<NodeStatement> types = TypesOf(leaf);
    if (!types.empty() && RequiresInstance(types))
        check.Report("leafref-config", Described(leaf) + " is configuration and refers to state: " + DataPath(target),
                     {types.front().origin, OriginOf(leaf), UsesOf(leaf)});
}

} // namespace inspect
