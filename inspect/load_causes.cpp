#include "load_causes.h"

#include <cstdio>

#include "failure.h"
#include "message_text.h"
#include "schema_questions.h"
#include "statement_finder.h"
#include "text.h"

namespace inspect {
namespace {

Cause FromProblem(const SearchDirs &dirs, const LoadProblem &problem, const std::string &text)
{
    if (problem.file.empty())
        return {"", 0, 0, text};
    return {ShownPath(dirs, problem.file), problem.line, problem.column, text};
}

/* "cannot import 'x': FILE:1:2: reason" without the reason, where that is a problem of its own. */
std::string OwnText(const LoadProblem &problem, const std::vector<LoadProblem> &all)
{
    for (const LoadProblem &other : all) {
        const std::string reason = ": " + other.file + ":" + std::to_string(other.line) + ":" +
                                   std::to_string(other.column) + ": " + other.text;
        if (problem.text.size() > reason.size() && problem.text.ends_with(reason))
            return problem.text.substr(0, problem.text.size() - reason.size());
    }
    return problem.text;
}

void Place(const std::optional<Position> &position, Cause *cause)
{
    if (!position)
        return;
    cause->file = position->file;
    cause->line = position->line;
}

/* What the schema can tell beyond the messages: the very leaves or lists. */
std::vector<Cause> SchemaCauses(QY_MOD *module, const std::vector<std::string> &errors, const Explanation &why,
                                const StatementFinder &finder)
{
    std::vector<Cause> causes;
    const auto add = [&](const std::string &name, const std::string &text) {
        causes.push_back({"", 0, 0, text});
        Place(finder.FindOnly(name), &causes.back());
    };
    const std::optional<uint32_t> type = TypeWithoutDefault(errors);
    if (type && TypeName(*type) != nullptr) {
        for (const std::string &leaf : LeavesWithoutDatatype(module, why.within, *type))
            add(leaf, "leaf '" + leaf + "' of class '" + why.within + "' is of type " + TypeName(*type) +
                          ", which has no default datatype: it needs a datatype-id");
    } else if (why.node.empty()) {
        for (const std::string &list : ListsWithTooManyKeys(module))
            add(list, "class '" + list + "' has more than " + std::to_string(NODE_KEY_LIST_NUM) + " keys");
    }
    return causes;
}

std::vector<Cause> FromMessages(const Instance &instance, const ModuleKey &key, const LoadReport &report,
                                YinFiles *files)
{
    const Explanation why = Explain(report.errors);
    const StatementFinder finder(key.name, instance.Revision(key.name), files);
    QY_MOD *module = QY_CTX_GetModuleByModName(instance.Schema(), key.name.c_str());
    if (module != nullptr) {
        std::vector<Cause> causes = SchemaCauses(module, report.errors, why, finder);
        if (!causes.empty())
            return causes;
    }
    std::optional<Position> position = finder.FindOnly(why.node);
    if (!position)
        position = finder.FindOnly(why.within);
    Cause cause = {"", 0, 0, why.text};
    Place(position ? position : finder.Module(), &cause);
    return {cause};
}

void PrintCauses(const std::vector<Cause> &causes, const std::string &module)
{
    for (const Cause &cause : causes)
        std::fprintf(stderr, "%s%s\n", PlaceText(cause, module).c_str(), cause.text.c_str());
}

} // namespace

std::string PlaceText(const Cause &cause, const std::string &module)
{
    if (cause.file.empty())
        return module + ": ";
    std::string place = cause.file + ":";
    if (cause.line != 0)
        place += std::to_string(cause.line) + ":";
    if (cause.column != 0)
        place += std::to_string(cause.column) + ":";
    return place + " ";
}

std::vector<Cause> CausesOf(const Instance &instance, const SearchDirs &dirs, const ModuleKey &key,
                            const LoadReport &report, YinFiles *files)
{
    std::vector<Cause> causes;
    for (const LoadProblem &problem : report.problems)
        causes.push_back(FromProblem(dirs, problem, OwnText(problem, report.problems)));
    if (causes.empty() && !report.loaded)
        causes = FromMessages(instance, key, report, files);
    return causes;
}

void LoadOrFail(Instance *instance, const Arguments &args, const ModuleKey &key)
{
    const LoadReport report = instance->Load(key);
    YinFiles files(args.dirs);
    PrintCauses(CausesOf(*instance, args.dirs, key, report, &files), key.name);
    if (!report.loaded)
        throw Failure("module '" + key.name + "' cannot be loaded" +
                      (args.verbose ? "" : " (-v shows all that the library says)"));
    if (!report.problems.empty())
        std::fprintf(stderr, "korv-inspect: the deviations of module '%s' do not apply\n", key.name.c_str());
    else if (!report.errors.empty() && !args.verbose)
        std::fprintf(stderr,
                     "korv-inspect: the library finds fault with module '%s': 'korv-inspect check' says where\n",
                     key.name.c_str());
}

void LoadRequested(Instance *instance, const Arguments &args)
{
    for (const auto *keys : {&args.loads, &args.modules}) {
        for (const ModuleKey &key : *keys)
            LoadOrFail(instance, args, key);
    }
}

} // namespace inspect
