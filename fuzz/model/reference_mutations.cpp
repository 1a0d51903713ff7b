#include "reference_mutations.h"

#include <algorithm>
#include <utility>

#include "places.h"
#include "snippets.h"
#include "yin_writer.h"

namespace fuzz {
namespace {

bool IsOneOf(const std::string &word, std::initializer_list<std::string_view> words)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

bool TakesPath(const Statement &statement)
{
    return IsOneOf(statement.keyword, {"augment", "deviation", "path", "refine"});
}

bool TakesLeafName(const Statement &statement)
{
    return IsOneOf(statement.keyword, {"key", "unique", "default"});
}

std::vector<Place> DataNodes(Statement *root)
{
    return PlacesOf(root, [](const Statement &statement) {
        return IsDataNode(statement) && statement.keyword != "input" && statement.keyword != "output";
    });
}

std::string WithoutPrefixes(std::string path)
{
    for (size_t colon = path.find(':'); colon != std::string::npos; colon = path.find(':')) {
        const size_t slash = path.rfind('/', colon);
        const size_t begin = slash == std::string::npos ? 0 : slash + 1;
        path.erase(begin, colon + 1 - begin);
    }
    return path;
}

/* The path of a node, absolute for what wants that, relative for what stands in a "uses". */
std::string PathFor(const Place &reference, const Place &node, Random *random)
{
    const Statement *module = reference.Module();
    std::string path = module != nullptr ? PathOf(node, *module) : "/" + node.Self().argument;
    const bool inUses = !reference.above.empty() && reference.above.back()->keyword == "uses";
    if (inUses || reference.Self().keyword == "refine")
        path = random->OneIn(2) ? node.Self().argument : WithoutPrefixes(path).erase(0, 1);
    else if (reference.Self().keyword == "path" && random->OneIn(3))
        path = "../" + std::string(random->OneIn(2) ? "../" : "") + node.Self().argument;
    return path;
}

void WireName(const Place &place, Statement *root, Random *random)
{
    const std::string wanted = Referred(place.Self().keyword);
    auto definitions = PlacesOf(root, [&](const Statement &other) { return other.keyword == wanted; });
    if (definitions.empty())
        return;
    const Place &definition = random->Of(definitions);
    Statement &self = place.Self();
    self.argument = definition.Self().argument;
    const Statement *from = place.Module();
    const Statement *to = definition.Module();
    if (from == nullptr || to == nullptr || (from == to && !random->OneIn(4)))
        return;
    const std::string prefix = PrefixOf(*from, *to);
    if (!prefix.empty() && !IsModule(definition.Self()))
        self.argument = prefix + ":" + self.argument;
}

void WireLeafName(const Place &place, Random *random)
{
    std::vector<const Statement *> leaves;
    for (const Statement &sibling : place.parent->children) {
        if (IsDataNode(sibling))
            leaves.push_back(&sibling);
    }
    if (leaves.empty())
        return;
    place.Self().argument = random->Of(leaves)->argument;
    if (random->OneIn(3))
        place.Self().argument += " " + random->Of(leaves)->argument;
}

Statement Deviation(const std::string &path, Random *random)
{
    Statement deviate = {"deviate", "", {}};
    const char *const kinds[] = {"not-supported", "add", "replace", "delete"};
    deviate.argument = random->Of(kinds);
    for (size_t i = random->Below(3); i > 0 && deviate.argument != "not-supported"; --i)
        (void)InsertSnippet(&deviate, random);
    return {"deviation", path, {deviate}};
}

Statement Augment(const std::string &path, Random *random)
{
    Statement augment = {"augment", path, {}};
    for (size_t i = 1 + random->Below(2); i > 0; --i)
        (void)InsertSnippet(&augment, random);
    return augment;
}

Statement Leafref(const std::string &path, Random *random)
{
    return {"leaf",
            "ref" + std::to_string(random->Below(5)),
            {{"type", "leafref", {{"path", path, {}}}}, {"mimext:field-id", std::to_string(random->Below(20)), {}}}};
}

} // namespace

void Rewire(Statement *root, Random *random)
{
    auto places = PlacesOf(root, [](const Statement &statement) {
        return TakesPath(statement) || TakesLeafName(statement) || !Referred(statement.keyword).empty();
    });
    if (places.empty())
        return;
    const Place &place = random->Of(places);
    if (TakesLeafName(place.Self()))
        return WireLeafName(place, random);
    if (!TakesPath(place.Self()))
        return WireName(place, root, random);
    auto nodes = DataNodes(root);
    if (!nodes.empty())
        place.Self().argument = PathFor(place, random->Of(nodes), random);
}

void RenameBoth(Statement *root, Random *random)
{
    static const std::vector<std::string> NAMES = {"a", "b", "c", "g", "t", "m0", "m1", "{*64}", "{*65}", "{*260}"};
    auto places = PlacesOf(root, [](const Statement &statement) {
        return IsDataNode(statement) || IsModule(statement) ||
               IsOneOf(statement.keyword, {"typedef", "grouping", "identity", "feature", "extension", "prefix"});
    });
    if (places.empty())
        return;
    Statement &statement = random->Of(places).Self();
    const std::string from = statement.argument;
    const std::string to = random->Of(NAMES);
    statement.argument = to;
    if (random->OneIn(4) || from.empty())
        return;
    for (const Place &place : AllPlaces(root)) {
        std::string &argument = place.Self().argument;
        if (argument == from)
            argument = to;
        else if (argument.size() > from.size() && argument.substr(argument.size() - from.size() - 1) == ":" + from)
            argument = argument.substr(0, argument.size() - from.size()) + to;
    }
}

void ChangePrefix(Statement *root, Random *random)
{
    auto prefixes = PlacesOf(root, [](const Statement &statement) { return statement.keyword == "prefix"; });
    const std::string prefix = prefixes.empty() || random->OneIn(6) ? "nobody" : random->Of(prefixes).Self().argument;
    auto places = PlacesOf(root, [](const Statement &statement) {
        return statement.argument.find(':') != std::string::npos || !Referred(statement.keyword).empty();
    });
    if (places.empty())
        return;
    std::string &text = random->Of(places).Self().argument;
    const size_t colon = text.find(':');
    const size_t slash = colon != std::string::npos ? text.rfind('/', colon) : std::string::npos;
    const size_t begin = slash == std::string::npos ? 0 : slash + 1;
    if (colon == std::string::npos)
        text = prefix + ":" + text;
    else
        text.replace(begin, colon + 1 - begin, random->OneIn(4) ? "" : prefix + ":");
}

void AddTargeting(Statement *root, Random *random)
{
    auto nodes = DataNodes(root);
    auto modules = PlacesOf(root, IsModule);
    if (nodes.empty() || modules.empty())
        return;
    Statement &module = random->Of(modules).Self();
    const Place &node = random->Of(nodes);
    const std::string path = PathOf(node, module);
    switch (random->Below(3)) {
        case 0:
            module.children.push_back(Deviation(path, random));
            return;
        case 1:
            module.children.push_back(Augment(path, random));
            return;
        default:
            module.children.push_back({"container", "refs", {Leafref(path, random), Leafref(path, random)}});
            return;
    }
}

void IntoGrouping(Statement *root, Random *random)
{
    auto nodes = DataNodes(root);
    if (nodes.empty())
        return;
    const Place &node = random->Of(nodes);
    Statement *module = node.Module();
    if (module == nullptr)
        return;
    const std::string name = "g" + std::to_string(random->Below(4));
    Statement grouping = {"grouping", name, {std::move(node.Self())}};
    node.Self() = {"uses", name, {}};
    module->children.push_back(std::move(grouping));
}

} // namespace fuzz
