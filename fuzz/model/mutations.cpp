#include "mutations.h"

#include <algorithm>
#include <utility>

#include "arguments.h"
#include "places.h"
#include "reference_mutations.h"
#include "snippets.h"
#include "yin_writer.h"

namespace fuzz {
namespace {

constexpr size_t SPLICE_TRIES = 8;

bool IsWithin(const Place &place, const Statement &above)
{
    return std::find(place.above.begin(), place.above.end(), &above) != place.above.end();
}

void InsertAnywhere(Statement *parent, Statement statement, Random *random)
{
    const size_t at = random->Below(parent->children.size() + 1);
    parent->children.insert(parent->children.begin() + static_cast<long>(at), std::move(statement));
}

void Delete(Statement *root, Random *random)
{
    auto places = AllPlaces(root);
    if (places.empty())
        return;
    const Place &place = random->Of(places);
    place.parent->children.erase(place.parent->children.begin() + static_cast<long>(place.index));
}

void Duplicate(Statement *root, Random *random)
{
    auto places = AllPlaces(root);
    if (places.empty())
        return;
    const Place &place = random->Of(places);
    Statement copy = place.Self();
    if (random->OneIn(2))
        copy.argument += std::to_string(random->Below(10));
    InsertAnywhere(place.parent, std::move(copy), random);
}

/* To another parent, of the same kind if there is one. */
void Move(Statement *root, Random *random)
{
    auto places = AllPlaces(root);
    if (places.empty())
        return;
    const Place from = random->Of(places);
    Statement moved = from.Self();
    auto parents = PlacesOf(root, [&](const Statement &other) { return other.keyword == from.parent->keyword; });
    Place to = parents.empty() || random->OneIn(8) ? random->Of(places) : random->Of(parents);
    if (&to.Self() == &from.Self() || IsWithin(to, from.Self()))
        return;
    /* The copy goes in first: what is taken out of the same list afterwards is behind the same index or the next. */
    to.Self().children.push_back(std::move(moved));
    if (random->OneIn(3))
        return; /* both stay */
    auto again = PlacesOf(root, [&](const Statement &other) {
        return other.keyword == to.Self().children.back().keyword &&
               other.argument == to.Self().children.back().argument;
    });
    if (again.size() > 1)
        again[0].parent->children.erase(again[0].parent->children.begin() + static_cast<long>(again[0].index));
}

void SwapSiblings(Statement *root, Random *random)
{
    auto places = PlacesOf(root, [](const Statement &statement) { return statement.children.size() > 1; });
    if (places.empty())
        return;
    auto &children = random->Of(places).Self().children;
    std::swap(random->Of(children), random->Of(children));
}

/* Two statements of one kind trade their arguments or what is in them. */
void SwapParts(Statement *root, Random *random)
{
    auto places = AllPlaces(root);
    if (places.empty())
        return;
    Place one = random->Of(places);
    auto alike = PlacesOf(root, [&](const Statement &other) { return other.keyword == one.Self().keyword; });
    Place two = random->Of(alike);
    if (IsWithin(one, two.Self()) || IsWithin(two, one.Self()) || &one.Self() == &two.Self())
        return;
    if (random->OneIn(2))
        std::swap(one.Self().argument, two.Self().argument);
    else
        std::swap(one.Self().children, two.Self().children);
}

void RenameKeyword(Statement *root, Random *random)
{
    static const std::vector<std::vector<std::string>> FAMILIES = {
        {"container", "list", "choice", "case", "grouping", "notification", "input", "output", "action", "rpc"},
        {"leaf", "leaf-list", "anyxml", "anydata", "choice", "container"},
        {"typedef", "grouping", "identity", "feature", "extension"},
        {"module", "submodule"},
        {"range", "length", "pattern", "path", "fraction-digits", "require-instance", "base", "enum", "bit", "type"},
        {"must", "when", "if-feature", "default", "units", "config", "mandatory", "status", "presence"},
        {"min-elements", "max-elements", "ordered-by", "key", "unique"},
        {"augment", "deviation", "uses", "refine", "deviate"},
        {"mimext:class-id", "mimext:field-id", "mimext:ancestor-key-fid", "mimext:class-type", "mimext:datatype-id",
         "mimext:name2id-key-fid", "mimext:ref-id-key-fid", "mimext:tlmt-sample-id", "mimext:aaa-task-id"}};
    auto places = AllPlaces(root);
    if (places.empty())
        return;
    Statement &statement = random->Of(places).Self();
    for (const auto &family : FAMILIES) {
        const bool in = std::find(family.begin(), family.end(), statement.keyword) != family.end();
        if ((in && !random->OneIn(4)) || random->OneIn(30)) {
            statement.keyword = random->Of(family);
            return;
        }
    }
}

void ChangeArgument(Statement *root, Random *random)
{
    auto places = AllPlaces(root);
    if (places.empty())
        return;
    Statement &statement = random->Of(places).Self();
    statement.argument = statement.keyword == "%repeat" || statement.keyword == "%nest"
                             ? std::to_string(ChainLength(random))
                             : ArgumentFor(statement.keyword, random);
}

/* The argument of another statement. */
void CopyArgument(Statement *root, Random *random)
{
    auto places = AllPlaces(root);
    if (places.empty())
        return;
    random->Of(places).Self().argument = std::string(random->Of(places).Self().argument);
}

void Insert(Statement *root, Random *random)
{
    auto places = PlacesOf(root, [](const Statement &statement) { return !IsPseudo(statement); });
    if (places.empty())
        return;
    for (size_t tries = 0; tries < 4; ++tries) {
        if (InsertSnippet(&random->Of(places).Self(), random))
            return;
    }
}

/* A statement becomes many, beside or within each other; or what is many becomes one. */
void Multiply(Statement *root, Random *random)
{
    auto places = AllPlaces(root);
    if (places.empty())
        return;
    Statement &statement = random->Of(places).Self();
    if ((statement.keyword == "%repeat" || statement.keyword == "%nest") && !statement.children.empty()) {
        Statement inner = random->Of(statement.children);
        statement = std::move(inner);
        return;
    }
    if (!statement.argument.empty() && random->OneIn(2) && !IsPseudo(statement))
        statement.argument += "{i}";
    Statement many = {random->OneIn(4) ? "%nest" : "%repeat", std::to_string(ChainLength(random)), {}};
    many.children.push_back(std::move(statement));
    statement = std::move(many);
}

/* Into a module that is there, whose own faults may hide the chain, or into one of its own. */
void AddChain(Statement *root, Random *random)
{
    if (random->OneIn(3))
        root->children.push_back(NewModule("chain" + std::to_string(random->Below(5))));
    auto modules = random->OneIn(2) && !root->children.empty() && IsModule(root->children.back())
                       ? std::vector<Place>{{root, root->children.size() - 1, {}}}
                       : PlacesOf(root, IsModule);
    if (!modules.empty())
        InsertChain(root, &random->Of(modules).Self(), random);
}

/* A new module beside the others, that one of them may import. */
void AddModule(Statement *root, Random *random)
{
    static const std::vector<std::string> NAMES = {"m0", "m1", "m2", "quelvo-bras-dhcp-access",
                                                   "quelvo-bras-dhcp-access-deviations-x"};
    const std::string name = random->Of(NAMES);
    Statement module = NewModule(name);
    for (size_t i = random->Below(4); i > 0; --i)
        (void)InsertSnippet(&module, random);
    auto modules = PlacesOf(root, IsModule);
    if (!modules.empty()) {
        Statement &other = random->Of(modules).Self();
        if (random->OneIn(2))
            other.children.push_back({"import", name, {{"prefix", name, {}}}});
        else
            module.children.push_back({"import", other.argument, {{"prefix", "o", {}}}});
    }
    InsertAnywhere(root, std::move(module), random);
}

/* What is done with the modules, and what fails meanwhile. */
void ChangeRun(Statement *root, Random *random)
{
    auto modules = PlacesOf(root, IsModule);
    const std::string module = modules.empty() ? "m0" : random->Of(modules).Self().argument;
    const size_t magnitude = size_t{1} << random->Below(14);
    const Statement statements[] = {
        {"%levels", std::to_string(random->Below(16)), {}},
        {"%fail-host", std::to_string(random->Below(magnitude)), {}},
        {"%fail-schema", std::to_string(random->Below(magnitude)), {}},
        {"%load", module, {}},
        {"%load", module + " 2026-01-01", {}},
        {"%unload", module, {}},
    };
    const Statement &chosen = random->Of(statements);
    if (chosen.keyword != "%load" && chosen.keyword != "%unload")
        std::erase_if(root->children, [&](const Statement &child) { return child.keyword == chosen.keyword; });
    InsertAnywhere(root, chosen, random);
}

/* A part of one module into another one of the same input. */
void SpliceOwn(Statement *root, Random *random)
{
    const Statement copy = *root;
    Splice(root, copy, random);
}

struct Row {
    void (*mutation)(Statement *, Random *);
    size_t weight;
};

constexpr Row MUTATIONS[] = {
    {Delete, 8},        {Duplicate, 6},    {Move, 6},         {SwapSiblings, 4},    {SwapParts, 5},
    {RenameKeyword, 5}, {Insert, 14},      {Multiply, 3},     {AddChain, 8},        {AddModule, 2},
    {ChangeRun, 4},     {SpliceOwn, 4},    {Rewire, 14},      {RenameBoth, 3},      {ChangePrefix, 3},
    {AddTargeting, 6},  {IntoGrouping, 3}, {CopyArgument, 3}, {ChangeArgument, 12},
};

} // namespace

void Mutate(Statement *root, Random *random)
{
    size_t sum = 0;
    for (const Row &row : MUTATIONS)
        sum += row.weight;
    size_t at = random->Below(sum);
    for (const Row &row : MUTATIONS) {
        if (at < row.weight) {
            row.mutation(root, random);
            return;
        }
        at -= row.weight;
    }
}

void Splice(Statement *root, const Statement &other, Random *random)
{
    Statement from = other;
    auto sources = PlacesOf(&from, [](const Statement &statement) { return !IsPseudo(statement); });
    if (sources.empty())
        return;
    for (size_t tries = 0; tries < SPLICE_TRIES; ++tries) {
        const Place &source = random->Of(sources);
        if (source.parent == &from) {
            InsertAnywhere(root, source.Self(), random);
            return;
        }
        auto targets = PlacesOf(root, [&](const Statement &target) {
            return target.keyword == source.parent->keyword || (random->OneIn(20) && !IsPseudo(target));
        });
        if (targets.empty())
            continue;
        Statement &target = random->Of(targets).Self();
        if (!target.children.empty() && random->OneIn(3))
            random->Of(target.children) = source.Self();
        else
            InsertAnywhere(&target, source.Self(), random);
        return;
    }
}

} // namespace fuzz
