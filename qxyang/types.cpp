#include "types.h"

#include <array>

#include "argument_form.h"
#include "definitions.h"
#include "grammar.h"
#include "leafref_path.h"
#include "ranges.h"

namespace qxyang {

namespace {

/* Statements within a type statement, by built-in type. */
struct TypeRule {
    Kw required = Kw::kStatements; /* where the statement names the built-in type itself */
    KeywordSet direct = {};        /* what may stand there */
    KeywordSet derived = {};       /* what may restrict a type derived from it */
};

constexpr std::array<TypeRule, QY_TYPE_UNION + 1> makeTypeRules()
{
    std::array<TypeRule, QY_TYPE_UNION + 1> rules{};
    for (size_t number = QY_TYPE_INT8; number <= QY_TYPE_UINT64; ++number)
        if (number != QY_TYPE_LEAFREF && number != QY_TYPE_STRING)
            rules[number] = {Kw::kStatements, {Kw::kRange}, {Kw::kRange}};
    rules[QY_TYPE_BINARY] = {Kw::kStatements, {Kw::kLength}, {Kw::kLength}};
    rules[QY_TYPE_BITS] = {Kw::kBit, {Kw::kBit}, {Kw::kBit}};
    rules[QY_TYPE_DECIMAL64] = {Kw::kFractionDigits, {Kw::kFractionDigits, Kw::kRange}, {Kw::kRange}};
    rules[QY_TYPE_ENUMERATION] = {Kw::kEnum, {Kw::kEnum}, {Kw::kEnum}};
    rules[QY_TYPE_IDENTITYREF] = {Kw::kBase, {Kw::kBase}, {}};
    rules[QY_TYPE_INSTANCE_IDENTIFIER] = {Kw::kStatements, {Kw::kRequireInstance}, {Kw::kRequireInstance}};
    rules[QY_TYPE_LEAFREF] = {Kw::kPath, {Kw::kPath, Kw::kRequireInstance}, {Kw::kRequireInstance}};
    rules[QY_TYPE_STRING] = {Kw::kStatements, {Kw::kLength, Kw::kPattern}, {Kw::kLength, Kw::kPattern}};
    rules[QY_TYPE_UNION] = {Kw::kType, {Kw::kType}, {}};
    return rules;
}

constexpr std::array<TypeRule, QY_TYPE_UNION + 1> kTypeRules = makeTypeRules();

constexpr std::array<QY_TYPE, QY_TYPE_UNION + 1> makeBuiltinTypes()
{
    std::array<QY_TYPE, QY_TYPE_UNION + 1> types{};
    for (uint8_t number = 0; number < types.size(); ++number) {
        types[number].range = builtinRange(number);
        types[number].builtin = number;
    }
    return types;
}

constexpr std::array<QY_TYPE, QY_TYPE_UNION + 1> kBuiltinTypes = makeBuiltinTypes();

}  // namespace

const QY_TYPE *builtinType(uint8_t number)
{
    return &kBuiltinTypes[number];
}

/* Whether a leaf can have the built-in type as it is. */
bool TypeCompiler::isPlain(uint8_t builtin)
{
    return kTypeRules[builtin].required == Kw::kStatements;
}

const QY_TYPE *TypeCompiler::compileOther(const Statement *statement, Scope *scope)
{
    Depth depth(depth_);
    Unit &unit = *scope->unit;
    if (depth_ > limits::kSchemaDepth) {
        build_.fail(unit, statement,
                    "types are nested deeper than " + std::to_string(limits::kSchemaDepth) + " levels");
        throw LoadStopped{};
    }
    const QY_TYPE *base = baseOf(statement, scope);
    if (base == nullptr)
        return builtinType(QY_TYPE_STRING);
    if (statement->first == nullptr && (base->base != nullptr || isPlain(base->builtin)))
        return base;
    if (!checkSubstatements(statement, unit, *base))
        return base;
    if (base->depth >= limits::kChain) {
        build_.fail(unit, statement,
                    "type is derived from a chain of more than " + std::to_string(limits::kChain) + " types");
        throw LoadStopped{};
    }
    QY_TYPE type = *base;
    type.base = base;
    ++type.depth;
    if (!restrict(type, statement, scope))
        return base;
    return build_.module.records.make<QY_TYPE>(type);
}

const QY_TYPE *TypeCompiler::baseOf(const Statement *statement, Scope *scope)
{
    if (statement->detail != 0)
        return builtinType(statement->detail);
    Typedef *definition = findTypedef(build_, scope, statement);
    if (definition == nullptr)
        return nullptr;
    compile(*definition);
    return definition->type;
}

void TypeCompiler::compile(Typedef &definition)
{
    if (definition.progress == Progress::kDone || definition.progress == Progress::kFailed)
        return;
    Unit &unit = *definition.scope->unit;
    auto nameOf = [](const Typedef *entry) { return std::string_view(entry->name); };
    if (definition.progress == Progress::kRunning) {
        definition.progress = Progress::kFailed;
        return build_.fail(unit, definition.statement, "typedef cycle: " + chainText(chain_, definition.name, nameOf));
    }
    if (chain_.size() >= limits::kChain) {
        build_.fail(unit, definition.statement,
                    "typedef " + quoted(definition.name) + " is at the end of a chain of more than " +
                        std::to_string(limits::kChain) + " typedefs");
        throw LoadStopped{};
    }
    definition.progress = Progress::kRunning;
    chain_.push_back(&definition);
    const QY_TYPE *type = builtinType(QY_TYPE_STRING);
    const Statement *statement = findChild(definition.statement, Kw::kType);
    if (statement != nullptr)
        type = compile(statement, definition.scope);
    if (statement != nullptr && statement->first == nullptr) {  // no restrictions made a type of its own
        const QY_TYPE *named = type;
        type = build_.module.records.make<QY_TYPE>(*named);
        const_cast<QY_TYPE *>(type)->base = named;
    }
    chain_.pop_back();
    definition.type = type;
    if (definition.progress == Progress::kRunning)
        definition.progress = Progress::kDone;
}

bool TypeCompiler::checkSubstatements(const Statement *statement, Unit &unit, const QY_TYPE &base)
{
    bool direct = base.base == nullptr;
    const TypeRule &rule = kTypeRules[base.builtin];
    const KeywordSet &allowed = direct ? rule.direct : rule.derived;
    bool good = true;
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        Kw keyword = child->keyword;
        bool since11 = !direct && (keyword == Kw::kEnum || keyword == Kw::kBit || keyword == Kw::kRequireInstance);
        if (allowed.has(keyword) && !(since11 && !unit.isVersion11))
            continue;
        std::string text = quoted(keywordOf(keyword).name) + " is not allowed in type " + quoted(statement->argument);
        if (!direct)
            text += ", which is derived from " + quoted(builtinTypeName(base.builtin));
        if (allowed.has(keyword))
            text += ", before yang-version 1.1";
        build_.fail(unit, child, text);
        good = false;
    }
    if (direct && rule.required != Kw::kStatements && findChild(statement, rule.required) == nullptr) {
        build_.fail(unit, statement,
                    "type " + quoted(statement->argument) + " has no " + quoted(keywordOf(rule.required).name));
        good = false;
    }
    return good;
}

/* Gives the type the restrictions of its statement. False: the failure is recorded. */
bool TypeCompiler::restrict(QY_TYPE &type, const Statement *statement, Scope *scope)
{
    Unit &unit = *scope->unit;
    if (const Statement *digits = findChild(statement, Kw::kFractionDigits))
        type.fractionDigits = static_cast<uint8_t>(std::stoi(digits->argument));
    for (Kw keyword : {Kw::kRange, Kw::kLength})
        if (const Statement *range = findChild(statement, keyword))
            return restrictRange(type, range, unit);
    switch (type.builtin) {
        case QY_TYPE_ENUMERATION:
        case QY_TYPE_BITS:
            if (statement->first == nullptr)
                return true;
            type.values = compileValues(build_, unit, statement, *type.base);
            return type.values != nullptr;
        case QY_TYPE_LEAFREF:
            if (const Statement *path = findChild(statement, Kw::kPath))
                type.path = parseLeafrefPath(build_, unit, path);
            type.refers = true;
            return type.path != nullptr;
        case QY_TYPE_IDENTITYREF:
            return checkBases(statement, unit);
        case QY_TYPE_UNION:
            return collectMembers(type, statement, scope);
        default:
            return true;
    }
}

bool TypeCompiler::restrictRange(QY_TYPE &type, const Statement *range, Unit &unit)
{
    std::string why;
    const RangeSet *parts = parseRange(range->argument, NumberForm::of(type), *type.range, build_.module.records, why);
    if (parts == nullptr) {
        build_.fail(unit, range,
                    std::string(keywordOf(range->keyword).name) + " " + quoted(range->argument) + ": " + why);
        return false;
    }
    type.range = parts;
    return true;
}

bool TypeCompiler::checkBases(const Statement *statement, Unit &unit)
{
    bool good = true;
    for (const Statement *base = statement->first; base != nullptr; base = base->next)
        good = findIdentity(build_, unit, base) != nullptr && good;
    return good;
}

bool TypeCompiler::collectMembers(QY_TYPE &type, const Statement *statement, Scope *scope)
{
    std::vector<const QY_TYPE *> members;
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        members.push_back(compile(child, scope));
        type.refers = type.refers || members.back()->builtin == QY_TYPE_LEAFREF;
    }
    auto *types = build_.module.records.makeArray<const QY_TYPE *>(members.size());
    std::copy(members.begin(), members.end(), types);
    type.members = build_.module.records.make<UnionMembers>(static_cast<uint32_t>(members.size()), types);
    return true;
}

}  // namespace qxyang
