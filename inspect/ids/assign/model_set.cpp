#include "ids/assign/model_set.h"

#include <algorithm>
#include <array>
#include <new>
#include <string_view>

#include "base/failure.h"
#include "base/numbers.h"
#include "ids/assign/statement_names.h"
#include "model/instance.h"
#include "model/model_file.h"
#include "model/module_search.h"

namespace inspect::ids {
namespace {

uint32_t AddPath(const char *name, const char *path, uint32_t, void *paths)
try {
    static_cast<std::vector<std::pair<std::string, std::string>> *>(paths)->emplace_back(name, path);
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

std::vector<SourceFile> FilesOf(const QY_CTX *schema, const QY_MOD *module)
{
    std::vector<std::pair<std::string, std::string>> paths;
    if (QXYANG_ScanModuleFiles(module, AddPath, &paths) != 0)
        throw std::bad_alloc();
    std::vector<SourceFile> files;
    for (const auto &[name, path] : paths)
        if (const QXYANG_FILE *file = QXYANG_GetLoadedFile(schema, name.c_str()))
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

/* True if the file holds a module that changes others and has no nodes of its own: those that it removes need ids, too. */
bool OnlyDeviates(const std::string &path)
{
    constexpr std::array<std::string_view, 6> OWN = {"container", "list", "choice", "uses", "augment", "grouping"};
    ModelFile file = ModelFile::Read(path, path);
    bool deviates = false;
    bool hasNodes = false;
    if (file.HasRoot())
        file.ForEachIn(file.Root(), [&](const QXYANG_STATEMENT_S &statement) {
            deviates |= IsYang(statement, "deviation");
            hasNodes |=
                statement.pcPrefix == nullptr && std::find(OWN.begin(), OWN.end(), statement.pcKeyword) != OWN.end();
        });
    return deviates && !hasNodes;
}

void AddClassIds(const std::string &path, std::vector<uint32_t> *ids)
{
    ModelFile file = ModelFile::Read(path, path);
    QXYANG_STATEMENT_S statement = {};
    for (uint32_t i = 0; QXYANG_GetStatement(file.Handle(), i, &statement) == 0; ++i)
        if (IsExtension(statement, CLASS_ID) && statement.pcArgument != nullptr)
            ids->push_back(ReadNumber(statement.pcArgument).value);
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
    for (const std::string &name : WantedNames(all))
        if (!Load(name, nullptr, true))
            FailForLoad(name);
    for (const ModuleKey &load : request.loads)
        (void)Load(load.name, nullptr, false);
    for (size_t i = 0; i < modules_.size(); ++i)
        LoadImports(i);
    if (!Load(EXTENSION_MODULE, nullptr, false)) /* what gets ids will import it */
        FailForLoad(EXTENSION_MODULE);
}

std::vector<std::string> ModelSet::WantedNames(bool all) const
{
    std::vector<std::string> names;
    for (const ModuleKey &key : request_.modules)
        names.push_back(key.name);
    if (!all)
        return names;
    for (const std::string &name : ModuleNames(request_.dirs)) {
        std::string path = ModulePath(request_.dirs, name);
        if (!HoldsSubmodule(path) && !OnlyDeviates(path))
            names.push_back(name);
    }
    if (names.empty())
        throw Failure("no module in the directories");
    return names;
}

/* A module that came only by an import is known by name from now on; its nodes were there before. */
bool ModelSet::Load(const std::string &name, const char *revision, bool isWanted)
{
    if (QY_CTX_LoadModule(schema_.get(), name.c_str(), revision) != 0)
        return false;
    QY_MOD *module = QY_CTX_GetModuleByModName(schema_.get(), name.c_str());
    if (module == nullptr)
        return false;
    (void)QY_MOD_EnableFeature(module, QY_FEATURE_ALL);
    if (indexes_.try_emplace(module, modules_.size()).second)
        modules_.push_back({module, name, isWanted, FilesOf(schema_.get(), module)});
    return true;
}

/* One that is there by its import alone may have a second revision, which is left alone. */
void ModelSet::LoadImports(size_t index)
{
    std::vector<std::pair<std::string, std::string>> imports;
    for (const SourceFile &source : modules_[index].files)
        ForEachIn(source.file, StatementAt(source.file, 0), [&](const QXYANG_STATEMENT_S &statement) {
            if (IsYang(statement, "import") && statement.pcArgument != nullptr)
                imports.emplace_back(statement.pcArgument, ArgumentIn(source.file, statement, "revision-date"));
        });
    for (const auto &[name, revision] : imports)
        if (QY_CTX_GetModuleByModName(schema_.get(), name.c_str()) == nullptr)
            (void)Load(name, revision.empty() ? nullptr : revision.c_str(), false);
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

std::vector<uint32_t> ModelSet::ClassIdsElsewhere() const
{
    std::vector<uint32_t> ids;
    for (const std::string &name : ModuleNames(request_.dirs))
        if (QXYANG_GetLoadedFile(schema_.get(), name.c_str()) == nullptr)
            AddClassIds(ModulePath(request_.dirs, name), &ids);
    return ids;
}

} // namespace inspect::ids
