#include "build/constraints.h"

#include <algorithm>
#include <span>
#include <utility>

#include "base/schema_limits.h"
#include "build/node_kinds.h"
#include "schema/ranges.h"

namespace qxyang {

namespace {

bool IsInOperation(const QY_NODE *node)
{
    for (; node != nullptr; node = node->parent)
        if (IsOperation(node))
            return true;
    return false;
}

/* The nearest node above that has a config statement, if that says false; null otherwise. The config statements in
 * operations and notifications are ignored: RFC 7950, 7.14.2 and 7.16. */
const QY_NODE *StateAbove(const QY_NODE *node)
{
    if (IsInOperation(node))
        return nullptr;
    const QY_NODE *above = node->parent;
    while (above != nullptr && (above->flags & NODE_HAS_CONFIG) == 0)
        above = above->parent;
    return above != nullptr && (above->flags & NODE_IS_STATE) != 0 ? above : nullptr;
}

/* The digits of a number of any size, without zeros in front of it. */
std::string_view DigitsOf(const Statement *statement)
{
    std::string_view text = statement->argument;
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    return text;
}

int64_t CharacterCount(std::string_view text)
{
    int64_t count = 0;
    for (char c : text)
        count += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
    return count;
}

} // namespace

uint16_t ChangedFlags(uint16_t flags, uint16_t properties)
{
    if ((properties & SETS_CONFIG) != 0)
        flags &= static_cast<uint16_t>(~NODE_IS_STATE);
    if ((properties & SETS_MANDATORY) != 0)
        flags &= static_cast<uint16_t>(~NODE_IS_MANDATORY);
    return flags | FlagsOf(properties);
}

void ConstraintChecker::CheckProperties(const Statement *statement, const QY_NODE *node, Unit &unit, bool isOfGrouping)
{
    uint16_t properties = statement->properties;
    if ((properties & SETS_CONFIG) != 0)
        CheckConfig(statement, node, unit);
    if ((properties & SETS_DEFAULT) != 0)
        CheckMandatory(statement, node, unit);
    if ((properties & SETS_DEFAULT) != 0 && node->kind == QY_NODE_TYPE_CHOICE && !isOfGrouping)
        Await({Rule::DefaultCase, FindChild(statement, Kw::Default), node, &unit, {}});
    if ((properties & SETS_MAX_ELEMENTS) != 0)
        CheckCounts(statement, unit);
    if ((properties & SETS_DEFAULT) != 0 && IsLeaf(node))
        CheckDefaults(statement, *node->type, unit);
}

void ConstraintChecker::CheckRefine(const Statement *refine, const QY_NODE *node, Unit &unit)
{
    CheckSetting(refine, node, unit);
    CheckMandatory(refine, node, unit);
    if (IsLeaf(node))
        CheckDefaults(refine, *node->type, unit);
}

void ConstraintChecker::CheckDeviate(const Statement *deviate, const QY_NODE *node, Unit &unit)
{
    CheckSetting(deviate, node, unit);
    Await({Rule::Mandatory, deviate, node, &unit, {}});
    if (!IsLeaf(node) || FindChild(deviate, Kw::Default) == nullptr)
        return;
    lastDeviate_[node] = deviate;
    pending_.push_back({Rule::Value, deviate, node, &unit, {}});
}

void ConstraintChecker::CheckSetting(const Statement *change, const QY_NODE *node, Unit &unit)
{
    if (const Statement *config = FindChild(change, Kw::Config))
        CheckConfig(config, node, unit);
    if (const Statement *value = FindChild(change, Kw::Default); value != nullptr && node->kind == QY_NODE_TYPE_CHOICE)
        Await({Rule::DefaultCase, value, node, &unit, {}});
    CheckCounts(change, unit);
}

void ConstraintChecker::CheckConfig(const Statement *where, const QY_NODE *node, Unit &unit)
{
    Await({Rule::Config, where, node, &unit, {}});
}

void ConstraintChecker::CheckMandatory(const Statement *where, const QY_NODE *node, Unit &unit)
{
    Pending pending{Rule::Mandatory, where, node, &unit, {}};
    if (IsBroken(pending))
        build_.Fail(unit, where, WhyBroken(pending));
}

/* ---- what may still be mended ---------------------------------------------------------------------------------- */

void ConstraintChecker::AwaitListOf(const Statement *deviate, const QY_NODE *key, Unit &unit, std::string failure)
{
    pending_.push_back({Rule::Key, deviate, key, &unit, std::move(failure)});
}

void ConstraintChecker::Await(Pending pending)
{
    if (IsBroken(pending))
        pending_.push_back(std::move(pending));
}

void ConstraintChecker::Finish()
{
    for (const Pending &pending : pending_) {
        const QY_NODE *judged =
            pending.rule == Rule::Key ? pending.node->parent : pending.node; // the list of a removed key
        if (!IsBroken(pending) || IsRemoved(judged))
            continue;
        if (pending.rule == Rule::Value)
            CheckDefaults(pending.where, *pending.node->type, *pending.unit);
        else
            build_.Fail(*pending.unit, pending.where, WhyBroken(pending));
    }
}

bool ConstraintChecker::IsBroken(const Pending &pending)
{
    constexpr uint16_t BOTH = NODE_HAS_DEFAULT | NODE_IS_MANDATORY;
    const QY_NODE *node = pending.node;
    switch (pending.rule) {
        case Rule::Config:
            return (node->flags & (NODE_HAS_CONFIG | NODE_IS_STATE)) == NODE_HAS_CONFIG && StateAbove(node) != nullptr;
        case Rule::DefaultCase:
            return !HasDefaultCase(pending.where, node, *pending.unit);
        case Rule::Mandatory:
            return (node->kind == QY_NODE_TYPE_LEAF || node->kind == QY_NODE_TYPE_CHOICE) &&
                   (node->flags & BOTH) == BOTH;
        case Rule::Key:
            return true;
        case Rule::Value:
            return lastDeviate_.at(node) == pending.where;
    }
    return false;
}

std::string ConstraintChecker::WhyBroken(const Pending &pending)
{
    const QY_NODE *node = pending.node;
    switch (pending.rule) {
        case Rule::Config:
            return DescribeNode(node) + " has config 'true' below " + DescribeNode(StateAbove(node)) +
                   ", which has config 'false'";
        case Rule::DefaultCase:
            return NoDefaultCase(pending.where, node, *pending.unit);
        case Rule::Mandatory:
            return DescribeNode(node) + " is mandatory and has a default";
        case Rule::Key:
            return pending.failure;
        case Rule::Value:
            break;
    }
    return {};
}

/* A node cannot need more elements (RFC 7950, 7.7.5) than it may have (7.7.6). */
void ConstraintChecker::CheckCounts(const Statement *statement, Unit &unit)
{
    const Statement *least = FindChild(statement, Kw::MinElements);
    const Statement *most = FindChild(statement, Kw::MaxElements);
    if (least == nullptr || most == nullptr || std::string_view(most->argument) == "unbounded")
        return;
    std::string_view atLeast = DigitsOf(least);
    std::string_view atMost = DigitsOf(most);
    if (std::pair(atLeast.size(), atLeast) > std::pair(atMost.size(), atMost))
        build_.Fail(unit, most,
                    std::string("max-elements ") + most->argument + " is less than min-elements " + least->argument);
}

/* RFC 7950, 7.9.3. True as well if the default's prefix stands for no module: that failure is recorded. */
bool ConstraintChecker::HasDefaultCase(const Statement *value, const QY_NODE *choice, Unit &unit)
{
    Reference reference = SplitReference(value->argument);
    QY_MOD *module = reference.prefix.empty() ? choice->module : build_.ModuleOf(unit, value, reference);
    return module == nullptr || build_.load.finder.SchemaChild(choice, module, reference.name) != nullptr;
}

std::string ConstraintChecker::NoDefaultCase(const Statement *value, const QY_NODE *choice, Unit &unit)
{
    Reference reference = SplitReference(value->argument);
    const QY_MOD *module = reference.prefix.empty() ? choice->module : build_.ModuleOf(unit, value, reference);
    NearestName nearest(build_.load.failures.names, reference.name, reference.prefix);
    for (const QY_NODE *child = choice->first; child != nullptr && nearest.IsOpen(); child = child->next)
        if (child->module == module)
            nearest.Offer(child->name);
    return "default " + Quoted(value->argument) + " is no case of " + DescribeNode(choice) + nearest.Hint();
}

/* ---- values ---------------------------------------------------------------------------------------------------- */

void ConstraintChecker::CheckDefaults(const Statement *statement, const QY_TYPE &type, Unit &unit)
{
    for (const Statement *value = statement->first; value != nullptr; value = value->next) {
        if (value->keyword != Kw::Default)
            continue;
        if (std::string why = WhyNot(value->argument, type); !why.empty())
            build_.Fail(unit, value, "default " + Quoted(value->argument) + ": " + why);
    }
}

/* Why the text is no value of the type, or an empty text. Does not check patterns, nor what depends on other nodes. */
std::string ConstraintChecker::WhyNot(std::string_view text, const QY_TYPE &type)
{
    switch (type.builtin) {
        case QY_TYPE_BOOLEAN:
            return text == "true" || text == "false" ? "" : "expected 'true' or 'false'";
        case QY_TYPE_EMPTY:
            return "type 'empty' has no default";
        case QY_TYPE_STRING:
            if (int64_t count = CharacterCount(text); !Contains(*type.range, count, NumberForm::Of(type)))
                return "its length is " + std::to_string(count) + "; expected " +
                       RangeText(*type.range, NumberForm::Of(type));
            return {};
        case QY_TYPE_ENUMERATION:
            return WhyNotNamed(text, type);
        case QY_TYPE_BITS:
            for (std::string_view name = TakeWord(text); !name.empty(); name = TakeWord(text))
                if (std::string why = WhyNotNamed(name, type); !why.empty())
                    return why;
            return {};
        case QY_TYPE_UNION:
            return WhyNotOfUnion(text, type);
        case QY_TYPE_BINARY:
        case QY_TYPE_IDENTITYREF:
        case QY_TYPE_INSTANCE_IDENTIFIER:
        case QY_TYPE_LEAFREF:
            return {};
        default:
            return WhyNotNumber(text, type);
    }
}

std::string ConstraintChecker::WhyNotNumber(std::string_view text, const QY_TYPE &type)
{
    NumberForm form = NumberForm::Of(type);
    int64_t number = 0;
    if (!ParseValue(text, form, number))
        return "it is no number of the type";
    return Contains(*type.range, number, form) ? "" : "expected " + RangeText(*type.range, form);
}

std::string ConstraintChecker::WhyNotNamed(std::string_view name, const QY_TYPE &type)
{
    if (type.values == nullptr || build_.load.enumNames.Find(*type.values, name) != nullptr)
        return {};
    NearestName nearest(build_.load.failures.names, name);
    for (uint32_t i = 0; i < type.values->count && nearest.IsOpen(); ++i)
        nearest.Offer(type.values->values[i].name);
    return "the type has no " + std::string(type.builtin == QY_TYPE_BITS ? "bit " : "enum ") + Quoted(name) +
           nearest.Hint();
}

/* RFC 7950, 9.12: a value of a union is one of any of its members. */
std::string ConstraintChecker::WhyNotOfUnion(std::string_view text, const QY_TYPE &type)
{
    if (type.members == nullptr)
        return {};
    std::vector<std::span<const QY_TYPE *const>>
        rest; // members that are not tried yet: each union stands in the one before
    rest.emplace_back(type.members->types, type.members->count);
    for (size_t tried = 0; !rest.empty();) {
        if (rest.back().empty()) {
            rest.pop_back();
            continue;
        }
        const QY_TYPE &member = *rest.back().front();
        rest.back() = rest.back().subspan(1);
        build_.load.membersTried += 1 + text.size() / 64;
        if (++tried > limits::DEFAULT_MEMBERS || build_.load.membersTried > limits::DEFAULT_MEMBERS_OF_LOAD)
            return {};
        if (member.builtin != QY_TYPE_UNION ? WhyNot(text, member).empty() : member.members == nullptr)
            return {};
        if (member.builtin == QY_TYPE_UNION)
            rest.emplace_back(member.members->types, member.members->count);
    }
    return "no type of the union has this value";
}

} // namespace qxyang
