/* Loads a module and what it imports and includes. */
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "build/build.h"
#include "syntax/extension_hints.h"

namespace qxyang {

/* One load call. If it fails, the caller releases the modules that it added to the context. */
class Loader {
  public:
    explicit Loader(QY_CTX &context)
        : state_(context), context_(context), failures_(context.failures), hints_(context, state_.files)
    {
    }
    Loader(const Loader &) = delete;
    Loader &operator=(const Loader &) = delete;
    ~Loader();

    /* The module of that name and revision. An empty revision stands for the preferred one. Null: failures are
     * recorded. */
    QY_MOD *Load(std::string_view name, std::string_view revision);

  private:
    /* A module, or why there is none. */
    struct Outcome {
        QY_MOD *module = nullptr;
        std::string why;
    };

    /* A file whose imports and includes are being followed. */
    struct OpenFile {
        Unit *unit;
        const Statement *next;    /* statement that is looked at next */
        const Statement *current; /* import or include that waits for what it names */
        Failures::Mark start;     /* when the file was opened */
    };

    /* A module whose files are being linked: its own file, and those of submodules that include one another. */
    struct Running {
        QY_MOD *module;
        std::string key;           /* in `failed_` */
        Failures::Mark start;      /* before its linking */
        std::vector<Unit *> units; /* linked, with all that they include, in the order of inclusion */
        std::unordered_set<std::string_view> included; /* their names */
        std::vector<OpenFile> files;                   /* each includes the next */
    };

    Outcome Obtain(std::string_view name, std::string_view revision);
    bool Start(std::string_view name, std::string_view revision, Outcome &outcome);
    bool Read(std::string_view name, std::string_view revision, std::string &&key, Outcome &outcome);
    bool Step(Running &running);
    void CloseInclude(Running &running);
    Outcome Finish(Running &running);
    bool BuildModule(Running &running);
    void OpenModule(QY_MOD &module, Unit &unit, std::string &&key);
    std::unique_ptr<Unit> Parse(const std::string &path, std::string_view name, QY_MOD *module, std::string &why);
    bool ReadHeader(Unit &unit, std::string_view name, Kw expected);
    void Bind(Unit &unit, const Statement *statement, QY_MOD *module);
    void Import(Running &running, const Outcome &outcome);
    void Include(Running &running);
    void IncludeOpen(const Running &running, const Unit &open);
    void FailInclude(const OpenFile &file, std::string_view why);
    Unit *ReadSubmodule(QY_MOD &module, std::string_view name, std::string_view revision, std::string &why);
    void Prefer(QY_MOD *module);

    LoadState state_;
    QY_CTX &context_;
    Failures &failures_;
    ExtensionHints hints_;
    std::vector<std::unique_ptr<Unit>> units_;            /* of all modules: leafrefs are reported in them at the end */
    std::vector<std::unique_ptr<Running>> chain_;         /* modules being linked, each importing the next */
    std::unordered_map<std::string, std::string> failed_; /* module name and revision: why */
    std::vector<QY_MOD *> preferred_;                     /* older modules that became preferred */
    bool done_ = false;
};

} // namespace qxyang
