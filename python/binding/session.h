#pragma once

#include <korv_lib_yang.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "errors.h"
#include "lines.h"

namespace korv_python {

class Session;

/* What all Python objects of one loaded module hold. The record and the trees behind it go with an unload, which takes the
 * pointer away here: each access asks first, and raises GoneError. */
class LoadedModule {
  public:
    LoadedModule(std::shared_ptr<Session> session, TELMYANG_YANG_FILE_INFO_S *file);

    bool IsThere() const { return file_ != nullptr; }
    void Check() const
    {
        if (file_ == nullptr)
            RaiseGone();
    }
    /* The registry entry; raises GoneError when there is none any more. */
    TELMYANG_YANG_FILE_INFO_S &File() const
    {
        Check();
        return *file_;
    }
    /* The instance of a module that is there. */
    TELMYANG_LOCAL_DATA_S *Local() const;
    const std::shared_ptr<Session> &Owner() const { return session_; }
    const std::string &Name() const { return name_; }
    void TakeAway() { file_ = nullptr; }

  private:
    [[noreturn]] void RaiseGone() const;

    std::shared_ptr<Session> session_;
    TELMYANG_YANG_FILE_INFO_S *file_;
    std::string name_; /* outlives the record, for messages */
};

using ModulePtr = std::shared_ptr<LoadedModule>;

/* An instance of the library. It lives as long as any object of it, and ends early when its context is closed. */
class Session : public std::enable_shared_from_this<Session> {
  public:
    explicit Session(const std::vector<std::string> &dirs);
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    bool IsOpen() const { return local_ != nullptr; }
    /* The instance; raises GoneError when it is closed. */
    TELMYANG_LOCAL_DATA_S *Local() const;
    void Close();

    ModulePtr Load(const std::string &name, const char *revision);
    void Unload(const std::string &name, const char *revision);
    /* The registered module; raises NotFoundError. */
    ModulePtr Module(const std::string &name, const char *revision);
    /* In the order of their loads. */
    std::vector<ModulePtr> Modules();
    /* What objects of this registry entry hold. */
    ModulePtr Holder(const TELMYANG_YANG_FILE_INFO_S *file);

  private:
    void AddDirectories(const std::vector<std::string> &dirs);
    void TakeAway(const TELMYANG_YANG_FILE_INFO_S *file);

    Lines lines_;
    TELMYANG_LOCAL_DATA_S *local_ = nullptr;
    std::map<const TELMYANG_YANG_FILE_INFO_S *, std::weak_ptr<LoadedModule>> holders_;
};

} // namespace korv_python
