#include "session.h"

#include <new>
#include <utility>

#include "failures.h"

namespace korv_python {
namespace {

constexpr uint64_t MEMORY_MODULE_ID = 1;
constexpr size_t START_DIRS = 2; /* directories that an instance is started with; deviations are looked for there */

} // namespace

LoadedModule::LoadedModule(std::shared_ptr<Session> session, TELMYANG_YANG_FILE_INFO_S *file)
    : session_(std::move(session)), file_(file), name_(file->pcModuleName)
{
}

TELMYANG_LOCAL_DATA_S *LoadedModule::Local() const
{
    Check();
    return session_->Local();
}

void LoadedModule::RaiseGone() const
{
    if (!session_->IsOpen())
        Raise("GoneError", "the context of module '" + name_ + "' is closed");
    Raise("GoneError", "module '" + name_ + "' has been unloaded");
}

Session::Session(const std::vector<std::string> &dirs)
{
    for (const std::string &dir : dirs)
        (void)Name(dir);
    for (size_t i = 0; i < dirs.size() && i < START_DIRS; ++i)
        if (dirs[i].size() >= KORV_SEARCH_DIR_SIZE)
            throw py::value_error("directory with more than " + std::to_string(KORV_SEARCH_DIR_SIZE - 1) +
                                  " bytes: " + dirs[i]);
    lines_.Listen();
    local_ = YANGLIB_Initial(MEMORY_MODULE_ID, reinterpret_cast<uint64_t>(&lines_), lines_.Hooks().data(),
                             dirs.empty() ? nullptr : dirs[0].c_str(), dirs.size() < 2 ? nullptr : dirs[1].c_str());
    if (local_ == nullptr)
        throw std::bad_alloc(); /* nothing else is left that could be wrong */
    try {
        AddDirectories(dirs);
        lines_.Tell(false);
    } catch (...) {
        YANGLIB_Uninitial(local_);
        throw;
    }
}

Session::~Session()
{
    YANGLIB_Uninitial(local_); /* all levels are closed: nothing of Python runs */
}

void Session::AddDirectories(const std::vector<std::string> &dirs)
{
    for (size_t i = START_DIRS; i < dirs.size(); ++i)
        if (YANGLIB_PkgAddInstallPath(local_, dirs[i].c_str()) != KORV_OK)
            Raise("Error", "not a directory to search: " + dirs[i]);
}

TELMYANG_LOCAL_DATA_S *Session::Local() const
{
    if (local_ == nullptr)
        Raise("GoneError", "the context is closed");
    return local_;
}

void Session::Close()
{
    if (local_ == nullptr)
        return;
    lines_.Listen();
    for (const auto &[file, holder] : holders_)
        if (ModulePtr module = holder.lock())
            module->TakeAway();
    holders_.clear();
    YANGLIB_Uninitial(std::exchange(local_, nullptr));
    lines_.Tell(false);
}

ModulePtr Session::Load(const std::string &name, const char *revision)
{
    TELMYANG_LOCAL_DATA_S *local = Local();
    lines_.Listen();
    if (YANGLIB_LoadYangModule(local, Name(name), revision) != KORV_OK) {
        py::object error = LoadError(local, name.c_str(), revision);
        lines_.Tell(true);
        RaiseObject(error);
    }
    ModulePtr module = Module(name, revision);
    lines_.Tell(false);
    return module;
}

void Session::Unload(const std::string &name, const char *revision)
{
    ModulePtr module = Module(name, revision);
    TakeAway(&module->File());
    lines_.Listen();
    bool failed = YANGLIB_UnloadYangModule(local_, name.c_str(), revision) != KORV_OK;
    lines_.Tell(failed);
    if (failed)
        Raise("Error", "module '" + name + "' cannot be unloaded");
}

ModulePtr Session::Module(const std::string &name, const char *revision)
{
    TELMYANG_LOCAL_DATA_S *local = Local();
    TELMYANG_YANG_FILE_INFO_S *file = TELMYANG_GetIfYangModuleExist(local, local->pstYangCtx, Name(name), revision);
    if (file == nullptr)
        Raise("NotFoundError", "module '" + name + "' is not loaded" +
                                   (revision != nullptr ? std::string(" as revision '") + revision + "'" : ""));
    return Holder(file);
}

std::vector<ModulePtr> Session::Modules()
{
    std::vector<ModulePtr> modules;
    const TELMYANG_YANG_FILE_LIST_S &list = Local()->pstYangCtx->stYangFileList;
    const auto *head = reinterpret_cast<const TELMYANG_YANG_FILE_INFO_S *>(&list);
    for (const TELMYANG_YANG_FILE_INFO_S *file = list.pstNext; file != head; file = file->pstNext)
        modules.push_back(Holder(file));
    return modules;
}

ModulePtr Session::Holder(const TELMYANG_YANG_FILE_INFO_S *file)
{
    std::weak_ptr<LoadedModule> &holder = holders_[file];
    ModulePtr module = holder.lock();
    if (!module) {
        module = std::make_shared<LoadedModule>(shared_from_this(), const_cast<TELMYANG_YANG_FILE_INFO_S *>(file));
        holder = module;
    }
    return module;
}

/* Before the unload: even one that is refused releases the trees. */
void Session::TakeAway(const TELMYANG_YANG_FILE_INFO_S *file)
{
    auto at = holders_.find(file);
    if (ModulePtr module = at->second.lock())
        module->TakeAway();
    holders_.erase(at);
}

} // namespace korv_python
