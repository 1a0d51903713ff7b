#include "diff/versions.h"

#include "base/progress.h"
#include "diff/module_reader.h"
#include "model/load_causes.h"
#include "model/module_search.h"
#include "model/statements.h"

namespace inspect::diff {
namespace {

/* True if a file of that name has been loaded as a submodule of some module. */
bool IsKnownSubmodule(const Instance &instance, const std::string &name)
{
    const QXYANG_FILE *file = QXYANG_GetLoadedFile(instance.Schema(), name.c_str());
    return file != nullptr && IsYang(StatementAt(file, 0), "submodule");
}

void ReportFailure(const Instance &instance, const ModelRequest &request, const std::string &name,
                   const LoadReport &report)
{
    for (const Cause &cause : CausesOf(instance, request.dirs, {name, ""}, report))
        request.notes.Say(cause, name);
    request.notes.Say("module '" + name + "' cannot be loaded and is not compared");
}

} // namespace

Version LoadModule(const ModelRequest &request)
{
    Version version;
    Instance instance(request.dirs, request.verbose);
    LoadRequested(&instance, request);
    const ModuleKey &key = request.modules.front();
    version.modules.emplace(key.name, ModuleReader(instance, request.dirs, &version).Read(key, Scope::OwnTree));
    return version;
}

Version LoadModules(const ModelRequest &request, const std::set<std::string> &names)
{
    Version version;
    Instance instance(request.dirs, request.verbose);
    for (const ModuleKey &key : request.loads)
        LoadOrFail(&instance, request, key);
    std::vector<std::string> loaded;
    Progress progress;
    size_t number = 0;
    for (const std::string &name : ModuleNames(request.dirs)) {
        if (!names.contains(name) || IsKnownSubmodule(instance, name))
            continue;
        progress.Show(++number, names.size(), name);
        LoadReport report = instance.Load({name, ""});
        if (report.loaded) {
            loaded.push_back(name);
        } else if (!HoldsSubmodule(ModulePath(request.dirs, name))) {
            progress.Clear();
            ReportFailure(instance, request, name, report);
            version.failed.insert(name);
        }
    }
    ModuleReader reader(instance, request.dirs, &version);
    for (const std::string &name : loaded)
        version.modules.emplace(name, reader.Read({name, ""}, Scope::OwnNodes));
    return version;
}

} // namespace inspect::diff
