#include "diff/type_reader.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_map>

#include "model/schema_scan.h"
#include "model/statements.h"

namespace inspect::diff {
namespace {

constexpr size_t MAX_CHAIN = 256; /* a load allows fewer */

/* Calls visit(statement reference, argument) for each statement of that keyword in the one given. */
template <class Visit>
void ForEachNamed(const StatementRef &around, const char *keyword, Visit visit)
{
    ForEachIn(around.file, StatementAt(around.file, around.index), [&](const QXYANG_STATEMENT_S &statement) {
        if (IsYang(statement, keyword) && statement.pcArgument != nullptr)
            visit(StatementRef{around.file, statement.uiIndex}, std::string(statement.pcArgument));
    });
}

std::string ArgumentWithin(const StatementRef &around, const char *keyword)
{
    return ArgumentIn(around.file, StatementAt(around.file, around.index), keyword);
}

/* Equal for types that say the same. */
std::string SignatureOf(const TypeModel &type)
{
    std::string signature = type.base;
    auto add = [&signature](std::string_view part) { signature.append(1, '\n').append(part); };
    for (const Fact &fact : type.facts) {
        add(fact.rule->name);
        add(ValueText(fact.value));
    }
    for (const std::unique_ptr<Limits> *limits : {&type.range, &type.length})
        add(*limits != nullptr ? (*limits)->range.Text() : "");
    for (const NamedNumber &name : type.names) {
        add(name.name + " " + std::to_string(name.number));
        for (const Fact &fact : name.facts)
            add(std::string(fact.rule->name) + " " + ValueText(fact.value));
    }
    for (const TypeModel *member : type.members)
        add("{" + member->signature + "}");
    return signature;
}

/* The type statement that holds for the leaf. */
std::optional<StatementRef> TypeStatementOf(QY_NODE *leaf)
{
    std::vector<QXYANG_ORIGIN_S> statements = StatementsOf(leaf, "type");
    if (statements.empty() || statements.back().pstFile == nullptr)
        return std::nullopt;
    return StatementRef{statements.back().pstFile, statements.back().uiStatement};
}

} // namespace

Where TypeReader::WhereOf(const StatementRef &statement, const Where &otherwise) const
{
    Where where = files_->Of(statement.file, StatementAt(statement.file, statement.index));
    return where.file != nullptr ? where : otherwise;
}

void TypeReader::AddFact(Rule rule, Value value, const StatementRef &statement, TypeModel *type)
{
    type->facts.push_back({rule, std::move(value), WhereOf(statement, type->where)});
}

TypeReader::Chain TypeReader::ChainOf(StatementRef statement)
{
    Chain chain = {statement};
    while (chain.size() < MAX_CHAIN) {
        std::optional<StatementRef> definition = definitions_.TypedefOf(chain.back());
        size_t before = chain.size();
        if (definition) {
            used_.insert(*definition);
            ForEachNamed(*definition, "type",
                         [&chain](const StatementRef &type, const std::string &) { chain.push_back(type); });
        }
        if (chain.size() == before)
            break;
    }
    std::reverse(chain.begin(), chain.end());
    return chain;
}

std::optional<LeafType> TypeReader::OfLeaf(QY_NODE *leaf)
{
    std::optional<StatementRef> statement = TypeStatementOf(leaf);
    if (!statement)
        return std::nullopt;
    const TypeModel *own = Of(*statement);
    LeafType type{StatementAt(statement->file, statement->index).pcArgument, own, own};
    QY_NODE *end = own->base == "leafref" ? LeafrefEnd(leaf) : nullptr;
    if (std::optional<StatementRef> last = end != nullptr ? TypeStatementOf(end) : std::nullopt)
        type.last = Of(*last);
    return type;
}

const TypeModel *TypeReader::Of(const StatementRef &statement, const Where &around)
{
    auto known = known_.find(statement);
    if (known != known_.end())
        return known->second;
    Chain chain = ChainOf(statement);
    TypeModel type = {};
    type.base = StatementAt(chain.front().file, chain.front().index).pcArgument;
    type.where = WhereOf(statement, around);
    ReadNumbers(chain, &type);
    ReadText(chain, &type);
    if (type.base == "enumeration")
        ReadNames(chain, "enum", "value", &type);
    if (type.base == "bits")
        ReadNames(chain, "bit", "position", &type);
    ReadReference(chain, &type);
    if (type.base == "union")
        ReadMembers(chain, &type);
    std::stable_sort(type.facts.begin(), type.facts.end(),
                     [](const Fact &left, const Fact &right) { return left.rule < right.rule; });
    type.signature = SignatureOf(type);
    version_->types.push_back(std::move(type));
    return known_[statement] = &version_->types.back();
}

void TypeReader::ReadNumbers(const Chain &chain, TypeModel *type)
{
    unsigned digits = 0;
    if (type->base == "decimal64") {
        std::string text = ArgumentWithin(chain.front(), "fraction-digits");
        digits = static_cast<unsigned>(std::atoi(text.c_str()));
        ForEachNamed(chain.front(), "fraction-digits", [&](const StatementRef &statement, const std::string &) {
            AddFact("fraction-digits", static_cast<int64_t>(digits), statement, type);
        });
    }
    std::optional<ValueRange> range = ValueRange::Of(type->base, digits);
    if (!range)
        return;
    Where where = type->where;
    bool isStated = type->base != "decimal64";
    for (const StatementRef &step : chain)
        ForEachNamed(step, "range", [&](const StatementRef &statement, const std::string &argument) {
            range->Restrict(argument);
            where = WhereOf(statement, type->where);
            isStated = true;
        });
    if (isStated)
        type->range = std::make_unique<Limits>(Limits{*range, where});
}

/* All patterns of the chain hold together, and each length is within the one before. */
void TypeReader::ReadText(const Chain &chain, TypeModel *type)
{
    if (type->base != "string" && type->base != "binary")
        return;
    ValueRange length = *ValueRange::Of("length");
    for (const StatementRef &step : chain) {
        ForEachNamed(step, "length", [&](const StatementRef &statement, const std::string &argument) {
            length.Restrict(argument);
            type->length = std::make_unique<Limits>(Limits{length, WhereOf(statement, type->where)});
        });
        ForEachNamed(step, "pattern", [&](const StatementRef &statement, const std::string &argument) {
            bool isInverted = ArgumentWithin(statement, "modifier") == "invert-match";
            AddFact("pattern", (isInverted ? "not " : "") + argument, statement, type);
        });
    }
}

/* RFC 7950, 9.6.4.2 and 9.7.4.2: a name without number has the one behind the highest so far. A type that restricts another
 * one leaves some of its names. */
void TypeReader::ReadNames(const Chain &chain, const char *keyword, const char *numberKeyword, TypeModel *type)
{
    std::unordered_map<std::string, int64_t> numbers;
    for (const StatementRef &step : chain) {
        std::vector<NamedNumber> names;
        int64_t next = 0;
        ForEachNamed(step, keyword, [&](const StatementRef &statement, const std::string &name) {
            std::string number = ArgumentWithin(statement, numberKeyword);
            auto given = numbers.find(name);
            int64_t value = !number.empty()          ? std::strtoll(number.c_str(), nullptr, 10)
                            : given != numbers.end() ? given->second
                                                     : next;
            next = names.empty() ? value + 1 : std::max(next, value + 1);
            names.push_back({name, value, WhereOf(statement, type->where),
                             FactsIn(statement.file, StatementAt(statement.file, statement.index),
                                     {Rule("if-feature"), Rule("status")}, files_),
                             statement.file, statement.index});
        });
        if (names.empty())
            continue;
        for (const NamedNumber &name : names)
            numbers.emplace(name.name, name.number);
        type->names = std::move(names);
    }
}

/* "/m:c/m:x" or "../m:x" of a leafref's path, without predicates. */
std::string TypeReader::Target(const QXYANG_FILE *file, std::string path)
{
    for (size_t open = path.find('['); open != std::string::npos; open = path.find('[', open))
        path.erase(open, path.find(']', open) - open + 1);
    std::string target;
    for (size_t at = 0; at <= path.size();) {
        size_t end = std::min(path.find('/', at), path.size());
        std::string step = Smoothed(std::string_view(path).substr(at, end - at));
        target += (at == 0 ? "" : "/") + (step.empty() || step == ".." ? step : definitions_.Qualified(file, step));
        at = end + 1;
    }
    return target;
}

void TypeReader::ReadReference(const Chain &chain, TypeModel *type)
{
    for (const StatementRef &step : chain) {
        ForEachNamed(step, "base", [&](const StatementRef &statement, const std::string &argument) {
            AddFact("base", definitions_.Qualified(step.file, argument), statement, type);
        });
        ForEachNamed(step, "path", [&](const StatementRef &statement, const std::string &argument) {
            AddFact("leafref-path", Smoothed(argument), statement, type);
            type->target = Target(step.file, argument);
        });
        ForEachNamed(step, "require-instance", [&](const StatementRef &statement, const std::string &argument) {
            std::erase_if(type->facts, [](const Fact &fact) { return fact.rule == Rule("require-instance"); });
            if (argument != "true")
                AddFact("require-instance", argument, statement, type);
        });
    }
}

void TypeReader::ReadMembers(const Chain &chain, TypeModel *type)
{
    ForEachNamed(chain.front(), "type", [&](const StatementRef &statement, const std::string &) {
        type->members.push_back(Of(statement, type->where));
    });
}

} // namespace inspect::diff
