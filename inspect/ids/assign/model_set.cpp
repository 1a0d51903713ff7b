#include "ids/assign/model_set.h"

#include <algorithm>
#include <new>

#include "base/failure.h"
#include "ids/assign/statement_names.h"
#include "model/instance.h"
#include "model/module_search.h"
#include "model/statements.h"

namespace inspect::ids {
namespace {

std::vector<SourceFile> SourcesOf(const QY_CTX *schema, const QY_MOD *module)
{
    std::vector<SourceFile> files;
    for (const auto &[name, path] : FilesOf(module))
        if (const QXYANG_FILE *file = QXYANG_GetLoadedFile(schema, name))
            files.push_back({file, path});
    return files;
}

struct Faults {
    const SearchDirs &dirs;
    std::vector<Cause> causes;
};

uint32_t AddFault(const QXYANG_FAILURE_S *failure, void *cookie)
try {
    auto *faults = static_cast<Faults *>(cookie);
    Cause cause = {"", failure->uiLine, failure->uiColumn, failure->pcSentence, ""};
    if (failure->pcFile != nullptr)
        cause.file = ShownPath(faults->dirs, failure->pcFile);
    if (failure->pcModule != nullptr)
        cause.module = failure->pcModule;
    faults->causes.push_back(std::move(cause));
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

} // namespace

ModelSet::ModelSet(const ModelRequest &request, bool all)
    : request_(request), schema_(QY_CTX_Create(QY_CTX_OPTION_KORV))
{
    if (!schema_ || QXYANG_KeepDetails(schema_.get()) != 0)
        throw std::bad_alloc();
    (void)QY_CTX_SetSearchDir(schema_.get(), request.dirs.first.c_str());
    for (const std::string &dir : request.dirs.dirs)
        (void)QY_CTX_SetSearchDir(schema_.get(), dir.c_str());
    for (const ModuleKey &load : request.loads)
        if (QY_CTX_LoadModule(schema_.get(), load.name.c_str(), nullptr) != 0)
            FailForLoad(load.name);
    for (const ModuleKey &key : Wanted(all))
        if (!Load(key, true))
            FailForLoad(key.name);
    for (const ModuleKey &load : request.loads)
        (void)Load({load.name, ""}, false);
    LoadOthers();
    for (size_t i = 0; i < modules_.size(); ++i)
        LoadImports(i);
    if (!Load({EXTENSION_MODULE, ""}, false)) /* what gets ids will import it */
        FailForLoad(EXTENSION_MODULE);
    for (const std::string &name : ModuleNames(request.dirs))
        if (!IsLoaded(name)) {
            const std::vector<uint32_t> &classIds = FactsOf(name).classIds;
            elsewhere_.insert(elsewhere_.end(), classIds.begin(), classIds.end());
        }
}

const FileFacts &ModelSet::FactsOf(const std::string &name)
{
    auto [entry, isNew] = facts_.try_emplace(name);
    if (isNew)
        entry->second = FactsIn(ModulePath(request_.dirs, name));
    return entry->second;
}

bool ModelSet::IsLoaded(const std::string &name) const
{
    return QXYANG_GetLoadedFile(schema_.get(), name.c_str()) != nullptr;
}

/* A module that only deviates others is left out: nodes that it removes need ids, too. */
std::vector<ModuleKey> ModelSet::Wanted(bool all)
{
    if (!all)
        return request_.modules;
    std::vector<ModuleKey> keys;
    for (const std::string &name : OwnModuleNames(request_.dirs)) {
        if (IsPlainModule(ModulePath(request_.dirs, name))) {
            keys.push_back({name, ""});
            continue;
        }
        const FileFacts &facts = FactsOf(name);
        if (facts.belongsTo.empty() && (facts.hasNodes || !facts.deviates))
            keys.push_back({name, ""});
    }
    if (keys.empty())
        throw Failure("no module in the directories");
    return keys;
}

/* A module that came only by an import is known by name from now on; its nodes were there before. */
bool ModelSet::Load(const ModuleKey &key, bool isWanted)
{
    const char *revision = key.revision.empty() ? nullptr : key.revision.c_str();
    if (QY_CTX_LoadModule(schema_.get(), key.name.c_str(), revision) != 0)
        return false;
    QY_MOD *module = QY_CTX_GetModuleByModName(schema_.get(), key.name.c_str());
    if (module == nullptr)
        return false;
    (void)QY_MOD_EnableFeature(module, QY_FEATURE_ALL);
    if (indexes_.try_emplace(module, modules_.size()).second)
        modules_.push_back({module, key.name, isWanted, SourcesOf(schema_.get(), module)});
    return true;
}

/* One that is there by its import alone may have a second revision, which is left alone. */
void ModelSet::LoadImports(size_t index)
{
    std::vector<ModuleKey> imports;
    for (const SourceFile &source : modules_[index].files)
        ForEachIn(source.file, StatementAt(source.file, 0), [&](const QXYANG_STATEMENT_S &statement) {
            if (IsYang(statement, "import") && statement.pcArgument != nullptr)
                imports.push_back({statement.pcArgument, ArgumentIn(source.file, statement, "revision-date")});
        });
    for (const ModuleKey &key : imports)
        if (QY_CTX_GetModuleByModName(schema_.get(), key.name.c_str()) == nullptr)
            (void)Load(key, false);
}

/* Modules of the directories that add to the ones that are loaded, and may have ids there, or use their groupings. One that
 * deviates is left out, as it would remove nodes. */
void ModelSet::LoadOthers()
{
    std::vector<std::string> names = ModuleNames(request_.dirs);
    for (bool isMore = true; isMore;) {
        isMore = false;
        for (std::string &name : names) {
            if (name.empty() || IsLoaded(name))
                continue;
            const FileFacts &facts = FactsOf(name);
            auto isKnown = [this](const std::string &module) {
                return QY_CTX_GetModuleByModName(schema_.get(), module.c_str()) != nullptr;
            };
            if (std::none_of(facts.extended.begin(), facts.extended.end(), isKnown))
                continue;
            std::string module = facts.belongsTo.empty() ? name : facts.belongsTo;
            if (facts.deviates)
                request_.notes.Say("module '" + module +
                                   "' deviates others: what it adds to them, or uses of them, is not looked at");
            else if (!Load({module, ""}, false))
                request_.notes.Say("module '" + module + "' cannot be loaded: what it adds to others is not looked at");
            isMore = true;
            name.clear();
        }
    }
}

void ModelSet::FailForLoad(const std::string &name) const
{
    Faults faults = {request_.dirs, {}};
    if (QXYANG_ScanLoadFailures(schema_.get(), AddFault, &faults) != 0)
        throw std::bad_alloc();
    throw Failure("module '" + name + "' cannot be loaded", EXIT_NOT_LOADED, std::move(faults.causes));
}

size_t ModelSet::IndexOf(QY_MOD *module) const
{
    auto found = indexes_.find(module);
    return found != indexes_.end() ? found->second : modules_.size();
}

} // namespace inspect::ids
