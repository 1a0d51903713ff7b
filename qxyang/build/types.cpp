#include "build/types.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "build/definitions.h"
#include "build/leafref_path.h"
#include "schema/ranges.h"
#include "syntax/argument_form.h"
#include "syntax/grammar.h"

namespace qxyang {

namespace {

constexpr uint8_t TYPE_COUNT = QY_TYPE_UNION + 1; /* number 0 is none */

/* What may stand in a type statement: RFC 7950, 9.2 to 9.13. */
struct TypeRule {
    Kw required = Kw::None;  /* where the statement names the built-in type itself */
    KeywordSet direct = {};  /* what may stand there */
    KeywordSet derived = {}; /* what may restrict a type derived from it */
};

constexpr std::array<TypeRule, TYPE_COUNT> MakeTypeRules()
{
    std::array<TypeRule, TYPE_COUNT> rules{};
    for (size_t number = QY_TYPE_INT8; number <= QY_TYPE_UINT64; ++number)
        if (number != QY_TYPE_LEAFREF && number != QY_TYPE_STRING)
            rules[number] = {Kw::None, {Kw::Range}, {Kw::Range}};
    rules[QY_TYPE_BINARY] = {Kw::None, {Kw::Length}, {Kw::Length}};
    rules[QY_TYPE_BITS] = {Kw::Bit, {Kw::Bit}, {Kw::Bit}};
    rules[QY_TYPE_DECIMAL64] = {Kw::FractionDigits, {Kw::FractionDigits, Kw::Range}, {Kw::Range}};
    rules[QY_TYPE_ENUMERATION] = {Kw::Enum, {Kw::Enum}, {Kw::Enum}};
    rules[QY_TYPE_IDENTITYREF] = {Kw::Base, {Kw::Base}, {}};
    rules[QY_TYPE_INSTANCE_IDENTIFIER] = {Kw::None, {Kw::RequireInstance}, {Kw::RequireInstance}};
    rules[QY_TYPE_LEAFREF] = {Kw::Path, {Kw::Path, Kw::RequireInstance}, {Kw::RequireInstance}};
    rules[QY_TYPE_STRING] = {Kw::None, {Kw::Length, Kw::Pattern}, {Kw::Length, Kw::Pattern}};
    rules[QY_TYPE_UNION] = {Kw::Type, {Kw::Type}, {}};
    return rules;
}

constexpr std::array<TypeRule, TYPE_COUNT> TYPE_RULES = MakeTypeRules();

constexpr std::array<QY_TYPE, TYPE_COUNT> MakeBuiltinTypes()
{
    std::array<QY_TYPE, TYPE_COUNT> types{};
    for (uint8_t number = 0; number < TYPE_COUNT; ++number) {
        types[number].range = BuiltinRange(number);
        types[number].builtin = number;
    }
    return types;
}

constexpr std::array<QY_TYPE, TYPE_COUNT> BUILTIN_TYPES = MakeBuiltinTypes();

} // namespace

const QY_TYPE *BuiltinType(uint8_t number)
{
    return &BUILTIN_TYPES[number];
}

/* True if a leaf can have the built-in type without further statements. */
bool TypeCompiler::IsPlain(uint8_t builtin)
{
    return TYPE_RULES[builtin].required == Kw::None;
}

const QY_TYPE *TypeCompiler::CompileOther(const Statement *statement, Scope *scope)
{
    Depth depth(depth_);
    Unit &unit = *scope->unit;
    if (depth_ > 2 * limits::CHAIN + 1) // of a leaf, then a typedef and the union in it in turns
        StopAtLimit(statement, unit, "types are nested in a chain of more than", "types");
    const QY_TYPE *base = BaseOf(statement, scope);
    if (base == nullptr)
        return BuiltinType(QY_TYPE_STRING);
    if (statement->first == nullptr && (base->base != nullptr || IsPlain(base->builtin)))
        return base;
    if (!CheckSubstatements(statement, unit, *base))
        return base;
    QY_TYPE type = DerivedFrom(base, statement, unit);
    if (!Restrict(type, statement, scope))
        return base;
    return build_.module.records.Make<QY_TYPE>(type);
}

/* A type that is derived from the base and is equal to it so far. All types but the built-in ones are made here. */
QY_TYPE TypeCompiler::DerivedFrom(const QY_TYPE *base, const Statement *statement, Unit &unit)
{
    if (base->depth >= limits::CHAIN)
        StopAtLimit(statement, unit, "type is derived from a chain of more than", "types");
    QY_TYPE type = *base;
    type.base = base;
    ++type.depth;
    return type;
}

void TypeCompiler::StopAtLimit(const Statement *statement, Unit &unit, std::string_view before, std::string_view behind)
{
    build_.Fail(unit, statement,
                std::string(before).append(" ").append(std::to_string(limits::CHAIN)).append(" ").append(behind));
    throw LoadStopped{};
}

const QY_TYPE *TypeCompiler::BaseOf(const Statement *statement, Scope *scope)
{
    if (statement->builtinType != 0)
        return BuiltinType(statement->builtinType);
    Typedef *definition = FindTypedef(build_, scope, statement);
    if (definition == nullptr)
        return nullptr;
    Compile(*definition);
    return definition->type;
}

void TypeCompiler::Compile(Typedef &definition)
{
    if (definition.progress == Progress::Done || definition.progress == Progress::Failed)
        return;
    Unit &unit = *definition.scope->unit;
    if (definition.progress == Progress::Running || chain_.size() >= limits::CHAIN)
        return FailChain(definition, unit);
    definition.progress = Progress::Running;
    chain_.push_back(&definition);
    const QY_TYPE *type = BuiltinType(QY_TYPE_STRING);
    const Statement *statement = FindChild(definition.statement, Kw::Type);
    if (statement != nullptr)
        type = Compile(statement, definition.scope);
    if (statement != nullptr && statement->first == nullptr) { // without restrictions, Compile has made no type for it
        QY_TYPE named = DerivedFrom(type, statement, unit);
        type = build_.module.records.Make<QY_TYPE>(named);
    }
    if ((definition.statement->properties & SETS_DEFAULT) != 0)
        constraints_.CheckDefaults(definition.statement, *type, unit);
    chain_.pop_back();
    build_.NoteType(type, unit, definition.statement);
    definition.type = type;
    if (definition.progress == Progress::Running)
        definition.progress = Progress::Done;
}

/* A function of its own, since Compile has a frame on the stack for each typedef of a chain and should need little. */
void TypeCompiler::FailChain(Typedef &definition, Unit &unit)
{
    auto nameOf = [](const Typedef *entry) { return std::string_view(entry->name); };
    if (definition.progress != Progress::Running)
        StopAtLimit(definition.statement, unit,
                    "typedef " + Quoted(definition.name) + " is at the end of a chain of more than", "typedefs");
    definition.progress = Progress::Failed;
    build_.Fail(unit, definition.statement, "typedef cycle: " + ChainText(chain_, definition.name, nameOf));
}

/* A derived type may restrict enums, bits and require-instance since YANG 1.1: RFC 7950, 1.1. */
bool TypeCompiler::CheckSubstatements(const Statement *statement, Unit &unit, const QY_TYPE &base)
{
    bool direct = base.base == nullptr;
    const TypeRule &rule = TYPE_RULES[base.builtin];
    const KeywordSet &allowed = direct ? rule.direct : rule.derived;
    bool good = true;
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        Kw keyword = child->keyword;
        bool since11 = !direct && (keyword == Kw::Enum || keyword == Kw::Bit || keyword == Kw::RequireInstance);
        if (allowed.Has(keyword) && !(since11 && !unit.isVersion11))
            continue;
        std::string text = Quoted(KeywordOf(keyword).name) + " is not allowed in type " + Quoted(statement->argument);
        if (!direct)
            text += ", which is derived from " + Quoted(BuiltinTypeName(base.builtin));
        if (allowed.Has(keyword))
            text += ", before yang-version 1.1";
        build_.Fail(unit, child, text);
        good = false;
    }
    if (direct && rule.required != Kw::None && FindChild(statement, rule.required) == nullptr) {
        build_.Fail(unit, statement,
                    "type " + Quoted(statement->argument) + " has no " + Quoted(KeywordOf(rule.required).name));
        good = false;
    }
    return good;
}

/* Gives the type the restrictions that its statement says. False: the failure is recorded. */
bool TypeCompiler::Restrict(QY_TYPE &type, const Statement *statement, Scope *scope)
{
    Unit &unit = *scope->unit;
    if (const Statement *digits = FindChild(statement, Kw::FractionDigits))
        type.fractionDigits = static_cast<uint8_t>(std::strtoul(digits->argument, nullptr, 10));
    for (Kw keyword : {Kw::Range, Kw::Length})
        if (const Statement *range = FindChild(statement, keyword))
            return RestrictRange(type, range, unit);
    switch (type.builtin) {
        case QY_TYPE_ENUMERATION:
        case QY_TYPE_BITS:
            if (statement->first == nullptr)
                return true;
            type.values = CompileValues(build_, unit, statement, *type.base);
            return type.values != nullptr;
        case QY_TYPE_LEAFREF:
            if (const Statement *path = FindChild(statement, Kw::Path))
                type.path = ParseLeafrefPath(build_, unit, path);
            type.refers = true;
            return type.path != nullptr;
        case QY_TYPE_IDENTITYREF:
            return CheckBases(statement, unit);
        case QY_TYPE_UNION:
            return CollectMembers(type, statement, scope);
        default:
            return true;
    }
}

/* RFC 7950, 9.2.4 and 9.4.4. */
bool TypeCompiler::RestrictRange(QY_TYPE &type, const Statement *range, Unit &unit)
{
    std::string why;
    const RangeSet *parts = ParseRange(range->argument, NumberForm::Of(type), *type.range, build_.module.records, why);
    if (parts == nullptr) {
        build_.Fail(unit, range,
                    std::string(KeywordOf(range->keyword).name) + " " + Quoted(range->argument) + ": " + why);
        return false;
    }
    type.range = parts;
    return true;
}

/* RFC 7950, 9.10.2. */
bool TypeCompiler::CheckBases(const Statement *statement, Unit &unit)
{
    bool good = true;
    for (const Statement *base = statement->first; base != nullptr; base = base->next)
        good = FindIdentity(build_, unit, base) != nullptr && good;
    return good;
}

/* RFC 7950, 9.12. */
bool TypeCompiler::CollectMembers(QY_TYPE &type, const Statement *statement, Scope *scope)
{
    std::vector<const QY_TYPE *> members;
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        members.push_back(Compile(child, scope));
        type.refers = type.refers || members.back()->refers;
        if (members.back()->depth >= limits::CHAIN)
            StopAtLimit(child, *scope->unit, "union contains a chain of more than", "types");
        type.depth = std::max(type.depth, static_cast<uint8_t>(members.back()->depth + 1));
    }
    auto *types = build_.module.records.MakeArray<const QY_TYPE *>(members.size());
    std::copy(members.begin(), members.end(), types);
    type.members = build_.module.records.Make<UnionMembers>(static_cast<uint32_t>(members.size()), false, types);
    return true;
}

} // namespace qxyang
