#include "model/instance.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "base/failure.h"
#include "base/text.h"
#include "model/message_text.h"

namespace inspect {
namespace {

constexpr uint64_t MEMORY_MODULE_ID = 0;
constexpr uint32_t ERROR_LEVEL = 0;
constexpr size_t MAX_ERRORS = 1000; /* kept of one load */

/* Directories that the library takes at its start. Deviation modules are looked for in these. */
constexpr size_t BASE_DIRS = 2;

void DropPrintingErrors(std::vector<std::string> *errors)
{
    while (!errors->empty() && IsAboutPrinting(errors->back()))
        errors->pop_back();
}

std::string OrEmpty(const char *text)
{
    return text != nullptr ? text : "";
}

uint32_t AddProblem(const char *module, const char *file, uint32_t line, const char *text, uint32_t column,
                    void *problems)
try {
    LoadProblem problem = {OrEmpty(module), OrEmpty(file), line, column, OrEmpty(text)};
    std::string place = problem.file + ":" + std::to_string(line) + ":" + std::to_string(column) + ": ";
    if (problem.text.starts_with(place))
        problem.text.erase(0, place.size());
    static_cast<std::vector<LoadProblem> *>(problems)->push_back(problem);
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

void Replace(std::string *text, const std::string &part, const std::string &other)
{
    size_t at = part.empty() ? std::string::npos : text->find(part);
    if (at != std::string::npos)
        text->replace(at, part.size(), other);
}

void CheckDirs(const SearchDirs &dirs)
{
    for (size_t i = 0; i < std::min(BASE_DIRS, dirs.dirs.size()); ++i) {
        if (dirs.dirs[i].size() >= KORV_SEARCH_DIR_SIZE)
            throw Failure("a directory of -d has at most " + std::to_string(KORV_SEARCH_DIR_SIZE - 1) + " characters",
                          EXIT_USAGE);
    }
}

} // namespace

Instance::Instance(const SearchDirs &dirs, bool verbose, QXYANG_LISTINGS *listings) : verbose_(verbose)
{
    CheckDirs(dirs);
    TELMYANG_DEBUG_HOOK_S hooks[KORV_LOG_LEVEL_NUM];
    for (uint32_t level = 0; level < KORV_LOG_LEVEL_NUM; ++level)
        hooks[level] = {level, Print, IsOpen};
    const char *dir1 = !dirs.dirs.empty() ? dirs.dirs[0].c_str() : nullptr;
    const char *dir2 = dirs.dirs.size() > 1 ? dirs.dirs[1].c_str() : nullptr;
    local_ = YANGLIB_Initial(MEMORY_MODULE_ID, reinterpret_cast<uint64_t>(this), hooks, dir1, dir2);
    if (local_ == nullptr)
        throw std::bad_alloc();
    if (QXYANG_KeepDetails(Schema()) != 0) {
        YANGLIB_Uninitial(local_);
        throw std::bad_alloc();
    }
    for (const std::string &dir : dirs.dirs)
        if (auto shown = dirs.shown.find(dir); shown != dirs.shown.end())
            renamed_.emplace_back("'" + dir + "'", "'" + shown->second + "'");
    if (listings != nullptr)
        QXYANG_UseListings(Schema(), listings);
    SearchFirst(dirs);
    for (size_t i = BASE_DIRS; i < dirs.dirs.size(); ++i)
        (void)YANGLIB_PkgAddInstallPath(local_, dirs.dirs[i].c_str());
}

/* The schema library searches directories in the order in which they were registered, and the library has registered its
 * own already. It goes on to look for deviations in those alone. */
void Instance::SearchFirst(const SearchDirs &dirs)
{
    if (dirs.first.empty())
        return;
    firstListed_ = "'" + dirs.first + "', ";
    QY_CTX_UnSetSearchDir(Schema(), nullptr);
    (void)QY_CTX_SetSearchDir(Schema(), dirs.first.c_str());
    for (size_t i = 0; i < std::min(BASE_DIRS, dirs.dirs.size()); ++i)
        (void)QY_CTX_SetSearchDir(Schema(), dirs.dirs[i].c_str());
}

Instance::~Instance()
{
    YANGLIB_Uninitial(local_);
}

uint32_t Instance::IsOpen(uint64_t instance, uint32_t level)
{
    return level == ERROR_LEVEL || reinterpret_cast<const Instance *>(instance)->verbose_ ? 1 : 0;
}

void Instance::Print(uint64_t instance, uint32_t level, const char *, const char *text)
try {
    auto *self = reinterpret_cast<Instance *>(instance);
    std::string line = text;
    if (line.ends_with("\n"))
        line.pop_back();
    if (self->verbose_)
        std::fprintf(stderr, "%s %s\n", level == ERROR_LEVEL ? "error" : "info ", Printable(line).c_str());
    if (level == ERROR_LEVEL && self->errors_.size() < MAX_ERRORS)
        self->errors_.push_back(line);
} catch (const std::bad_alloc &) {
}

LoadReport Instance::Load(const ModuleKey &key)
{
    errors_.clear();
    LoadReport report;
    report.loaded = YANGLIB_LoadYangModule(local_, key.name.c_str(), key.revision.c_str()) == KORV_OK;
    report.errors.swap(errors_);
    if (std::any_of(report.errors.begin(), report.errors.end(), IsSchemaFailure))
        (void)QY_CTX_ScanAllSchemaLoadFail(Schema(), AddProblem, &report.problems);
    for (LoadProblem &problem : report.problems) {
        Replace(&problem.text, firstListed_, "");
        for (const auto &[dir, shown] : renamed_)
            Replace(&problem.text, dir, shown);
    }
    if (report.loaded)
        DropPrintingErrors(&report.errors);
    return report;
}

const ModuleFile *Instance::Find(const ModuleKey &key) const
{
    return TELMYANG_GetIfYangModuleExist(local_, local_->pstYangCtx, key.name.c_str(), key.revision.c_str());
}

std::vector<const ModuleFile *> Instance::Registered() const
{
    const auto &list = local_->pstYangCtx->stYangFileList;
    std::vector<const ModuleFile *> files;
    for (const ModuleFile *file = list.pstNext; static_cast<const void *>(file) != &list; file = file->pstNext)
        files.push_back(file);
    return files;
}

const char *Instance::Revision(const std::string &module) const
{
    return YANGLIB_GetYangRevision(local_, module.c_str());
}

std::string ShownPath(const SearchDirs &dirs, const std::string &file)
{
    auto given = dirs.shown.find(file);
    if (given != dirs.shown.end())
        return given->second;
    std::filesystem::path path(file);
    for (const std::string &dir : dirs.dirs) {
        std::error_code error;
        if (std::filesystem::equivalent(dir, path.parent_path(), error))
            return dir == "." ? path.filename().string() : (std::filesystem::path(dir) / path.filename()).string();
    }
    return file;
}

uint32_t TaskId(const ModuleFile &file)
{
    return file.pModuleExtInfo != nullptr ? file.pModuleExtInfo->uiAaaTaskId : 0;
}

const ModuleFile &Loaded(const Instance &instance, const ModuleKey &key)
{
    const ModuleFile *file = instance.Find(key);
    if (file == nullptr)
        throw Failure("module '" + key.name + "' is not registered");
    return *file;
}

} // namespace inspect
