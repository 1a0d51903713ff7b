#include "model/load_causes.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "base/failure.h"
#include "base/numbers.h"
#include "model/load_faults.h"
#include "model/message_text.h"
#include "model/schema_places.h"
#include "model/schema_scan.h"
#include "model/trees.h"

namespace inspect {
namespace {

Cause FromProblem(const SearchDirs &dirs, const LoadProblem &problem, const std::string &text)
{
    if (problem.file.empty())
        return {"", 0, 0, text, problem.module};
    return {ShownPath(dirs, problem.file), problem.line, problem.column, text, problem.module};
}

/* "cannot import 'x': FILE:1:2: reason" without the reason, where that is a problem of its own. */
std::string OwnText(const LoadProblem &problem, const std::vector<LoadProblem> &all)
{
    for (const LoadProblem &other : all) {
        std::string reason = ": " + other.file + ":" + std::to_string(other.line) + ":" + std::to_string(other.column) +
                             ": " + other.text;
        if (problem.text.size() > reason.size() && problem.text.ends_with(reason))
            return problem.text.substr(0, problem.text.size() - reason.size());
    }
    return problem.text;
}

Cause CauseAt(const std::optional<Position> &position, const std::string &text)
{
    Cause cause = {"", 0, 0, text};
    PlaceAt(position, &cause);
    return cause;
}

std::string DatatypeText(QY_NODE *leaf, const std::string &within, uint32_t type)
{
    std::string what = TypeIsMissing(type)
                           ? BrokenLeafrefText(leaf)
                           : std::string("is of type ") + TypeName(type) + ", which has no default datatype";
    return "leaf '" + NameOf(leaf) + "' of class '" + within + "' " + what + ": it needs a datatype-id";
}

/* The text with the name of the class above the node in it, where it speaks of that class. */
std::string WithClassAbove(std::string text, QY_NODE *node)
{
    constexpr std::string_view UNNAMED = "the class above it";
    size_t at = text.find(UNNAMED);
    if (at == std::string::npos)
        return text;
    do
        node = QY_NODE_GetParentNode(node);
    while (node != nullptr && ExtensionArguments(node, "class-id").empty());
    return node != nullptr ? text.replace(at, UNNAMED.size(), "class '" + NameOf(node) + "' above it") : text;
}

/* Where the statement stands that is wrong with the node; else the node. */
std::optional<Position> PlaceOfFault(QY_NODE *node, const Explanation &why, Places *places)
{
    if (!why.argument.empty())
        return places->OfExtension(node, why.keyword, why.argument);
    if (why.keyword == "key")
        return places->OfStatement(node, "key");
    const char *keyword = why.keyword.c_str();
    return places->OfExtension(node, std::span(&keyword, 1));
}

std::vector<Cause> TooManyKeys(QY_MOD *module, Places *places)
{
    std::string most = std::to_string(NODE_KEY_LIST_NUM);
    std::vector<Cause> causes;
    for (QY_NODE *list : ListsWithTooManyKeys(module))
        causes.push_back(CauseAt(places->OfStatement(list, "key"),
                                 "class '" + NameOf(list) + "' has more than " + most + " keys: join or drop some"));
    const char *const keyword = "ancestor-key-fid";
    for (QY_NODE *node : ClassesWithTooManyAncestorKeys(module))
        causes.push_back(
            CauseAt(places->OfExtension(node, std::span(&keyword, 1)),
                    "class '" + NameOf(node) + "' has more than " + most + " ancestor keys: name at most so many"));
    return causes;
}

/* Where the statement stands that is wrong with the module as a whole; else the module. */
std::optional<Position> PlaceInModule(QY_MOD *module, const Explanation &why, Places *places)
{
    if (why.keyword == "augment") {
        QY_NODE *surplus = SurplusAugment(module);
        return surplus != nullptr ? places->Of(surplus) : places->Of(module);
    }
    if (!why.keyword.empty())
        for (const Extension &extension : ExtensionsOf(module))
            if (extension.keyword == why.keyword && ReadNumber(extension.argument).refused)
                return places->Of(extension.origin);
    return places->Of(module);
}

/* What the schema can tell beyond the messages: the very leaves or lists. */
std::vector<Cause> SchemaCauses(QY_MOD *module, const std::vector<std::string> &errors, const Explanation &why,
                                Places *places)
{
    std::vector<Cause> causes;
    if (const std::optional<uint32_t> type = TypeWithoutDefault(errors))
        for (QY_NODE *leaf : LeavesWithoutDatatype(module, why.within, *type))
            causes.push_back(CauseAt(places->Of(leaf), DatatypeText(leaf, why.within, *type)));
    else if (why.node.empty() && why.keyword.empty())
        causes = TooManyKeys(module, places);
    if (!causes.empty())
        return causes;
    for (QY_NODE *node : NodesMeant(module, why))
        if (BrokenLeafref(node) != nullptr)
            causes.push_back(CauseAt(places->Of(node), "leaf '" + why.node + "' " + BrokenLeafrefText(node)));
        else
            causes.push_back(CauseAt(PlaceOfFault(node, why, places), WithClassAbove(why.text, node)));
    return causes;
}

std::vector<Cause> FromMessages(const Instance &instance, const SearchDirs &dirs, const ModuleKey &key,
                                const LoadReport &report)
{
    Explanation why = Explain(report.errors);
    QY_MOD *module = QY_CTX_GetModuleByModName(instance.Schema(), key.name.c_str());
    if (module == nullptr)
        return {{"", 0, 0, why.text}};
    Places places(dirs);
    std::vector<Cause> causes = SchemaCauses(module, report.errors, why, &places);
    return causes.empty() ? std::vector<Cause>{CauseAt(PlaceInModule(module, why, &places), why.text)} : causes;
}

} // namespace

std::vector<Cause> CausesOf(const Instance &instance, const SearchDirs &dirs, const ModuleKey &key,
                            const LoadReport &report)
{
    std::vector<Cause> causes;
    for (const LoadProblem &problem : report.problems)
        causes.push_back(FromProblem(dirs, problem, OwnText(problem, report.problems)));
    if (causes.empty() && !report.loaded)
        causes = FromMessages(instance, dirs, key, report);
    return causes;
}

void LoadOrFail(Instance *instance, const ModelRequest &request, const ModuleKey &key)
{
    LoadReport report = instance->Load(key);
    std::vector<Cause> causes = CausesOf(*instance, request.dirs, key, report);
    if (!report.loaded) {
        for (Cause &cause : causes)
            if (cause.module.empty() || cause.file.empty())
                cause.module = key.name;
        bool hint = !request.verbose && !request.notes.AreJson();
        throw Failure(
            "module '" + key.name + "' cannot be loaded" + (hint ? " (-v shows all that the library says)" : ""),
            EXIT_NOT_LOADED, std::move(causes));
    }
    for (const Cause &cause : causes)
        request.notes.Say(cause, key.name);
    if (!report.problems.empty())
        request.notes.Say("the deviations of module '" + key.name + "' do not apply");
    else if (!std::all_of(report.errors.begin(), report.errors.end(), IsOfAttempt) && !request.verbose)
        request.notes.Say("the library finds fault with module '" + key.name + "': 'korv-inspect check' says where");
}

void LoadRequested(Instance *instance, const ModelRequest &request)
{
    for (const auto *keys : {&request.loads, &request.modules})
        for (const ModuleKey &key : *keys)
            LoadOrFail(instance, request, key);
}

} // namespace inspect
