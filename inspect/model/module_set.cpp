#include "model/module_set.h"

#include <set>

#include "base/failure.h"
#include "base/progress.h"
#include "model/load_causes.h"
#include "model/module_search.h"

namespace inspect {
namespace {

/* What a module that cannot be loaded says; nothing of a submodule, which no device loads by itself. */
bool IsFailure(const Instance &instance, const ModelRequest &request, const std::string &name, const std::string &path,
               const LoadReport &report)
{
    if (report.loaded || HoldsSubmodule(path))
        return false;
    for (const Cause &cause : CausesOf(instance, request.dirs, {name, ""}, report))
        request.notes.Say(cause, name);
    request.notes.Say("module '" + name + "' cannot be loaded and is left out");
    return true;
}

/* The modules of the directories of -d. Whoever names none, and has no models in the current one, means all that are
 * searched. */
std::vector<std::string> NamesOf(const ModelRequest &request)
{
    SearchDirs own;
    for (const std::vector<std::string> &group : request.dirs.own)
        own.dirs.insert(own.dirs.end(), group.begin(), group.end());
    std::vector<std::string> names = ModuleNames(own);
    bool isDefault = own.dirs.size() == 1 && own.dirs.front() == ".";
    return names.empty() && isDefault ? ModuleNames(request.dirs) : names;
}

void LoadOthers(Instance *instance, const ModelRequest &request, const ModuleListing &listing, ModuleSet *set)
{
    std::set<std::string> known;
    for (const ModuleKey &load : request.loads)
        known.insert(load.name);
    Progress progress;
    size_t number = 0;
    std::vector<std::string> names = NamesOf(request);
    for (const std::string &name : names) {
        progress.Show(++number, names.size(), name);
        if (known.contains(name))
            continue;
        LoadReport report = instance->Load({name, ""});
        if (!report.loaded)
            progress.Clear();
        if (IsFailure(*instance, request, name, listing.Modules().at(name), report))
            ++set->failed;
    }
}

} // namespace

ModuleSet LoadSet(Instance *instance, const ModelRequest &request, const ModuleListing &listing)
{
    LoadRequested(instance, request);
    ModuleSet set;
    if (request.modules.empty())
        LoadOthers(instance, request, listing, &set);
    if (!request.modules.empty())
        for (const ModuleKey &key : request.modules)
            set.modules.push_back(&Loaded(*instance, key));
    else
        set.modules = instance->Registered();
    if (set.modules.empty())
        throw Failure(set.failed == 0 ? "no module in the directories" : "no module of the directories can be loaded",
                      set.failed == 0 ? EXIT_NEGATIVE : EXIT_NOT_LOADED);
    return set;
}

} // namespace inspect
