#include "places.h"

#include <string_view>
#include <utility>

#include "yin_writer.h"

namespace fuzz {
namespace {

void Collect(Statement *parent, std::vector<Statement *> *above, const std::function<bool(const Statement &)> &filter,
             std::vector<Place> *places)
{
    for (size_t i = 0; i < parent->children.size(); ++i) {
        Statement &child = parent->children[i];
        if (filter(child))
            places->push_back({parent, i, *above});
        above->push_back(&child);
        Collect(&child, above, filter, places);
        above->pop_back();
    }
}

} // namespace

Statement *Place::Module() const
{
    for (Statement *statement : above) {
        if (IsModule(*statement))
            return statement;
    }
    return nullptr;
}

std::vector<Place> PlacesOf(Statement *root, const std::function<bool(const Statement &)> &filter)
{
    std::vector<Place> places;
    std::vector<Statement *> above;
    Collect(root, &above, filter, &places);
    return places;
}

std::vector<Place> AllPlaces(Statement *root)
{
    return PlacesOf(root, [](const Statement &) { return true; });
}

std::string PrefixOf(const Statement &from, const Statement &to)
{
    if (&from != &to) {
        for (const Statement &child : from.children) {
            if ((child.keyword == "import" || child.keyword == "belongs-to") && child.argument == to.argument)
                return ChildArgument(child, "prefix");
        }
    }
    return ChildArgument(to, "prefix");
}

bool IsDataNode(const Statement &statement)
{
    constexpr std::string_view KEYWORDS[] = {"container", "list", "leaf",   "leaf-list", "choice",       "case",
                                             "anydata",   "rpc",  "action", "input",     "notification", "output"};
    for (const std::string_view keyword : KEYWORDS) {
        if (statement.keyword == keyword)
            return true;
    }
    return false;
}

std::string PathOf(const Place &node, const Statement &from)
{
    const Statement *module = node.Module();
    const std::string prefix = module != nullptr ? PrefixOf(from, *module) + ":" : "";
    std::string path;
    const auto add = [&](const Statement &statement) {
        const bool unnamed = statement.keyword == "input" || statement.keyword == "output";
        if (statement.keyword == "augment" && statement.argument.rfind('/', 0) == 0)
            path = statement.argument;
        else if (IsDataNode(statement))
            path += "/" + prefix + (unnamed ? statement.keyword : statement.argument);
    };
    for (const Statement *statement : node.above)
        add(*statement);
    add(node.Self());
    return path;
}

std::string Referred(const std::string &keyword)
{
    constexpr std::pair<std::string_view, std::string_view> ROWS[] = {
        {"type", "typedef"},  {"uses", "grouping"},     {"base", "identity"},     {"if-feature", "feature"},
        {"import", "module"}, {"include", "submodule"}, {"belongs-to", "module"},
    };
    for (const auto &[from, to] : ROWS) {
        if (from == keyword)
            return std::string(to);
    }
    return "";
}

} // namespace fuzz
