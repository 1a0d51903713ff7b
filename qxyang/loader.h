/* Loads a module and what it imports and includes. */
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "build.h"

namespace qxyang {

/* One load call. What it adds to the context stays only when it succeeds: otherwise the caller releases the modules that
 * came with it. */
class Loader {
  public:
    explicit Loader(QY_CTX &context) : state_(context), context_(context), failures_(context.failures) {}
    Loader(const Loader &) = delete;
    Loader &operator=(const Loader &) = delete;
    ~Loader();

    /* Null: the failures are recorded. An empty revision stands for whichever is preferred. */
    QY_MOD *Load(std::string_view name, std::string_view revision);

  private:
    /* A module, or why there is none. */
    struct Outcome {
        QY_MOD *module = nullptr;
        std::string why;
    };

    /* A module whose imports and includes are being followed. */
    struct Running {
        QY_MOD *module;
        std::vector<Unit *> units;               /* complete with what they include, in the order of inclusion */
        std::vector<std::string_view> including; /* names of the files that include one another right now */
    };

    Outcome Obtain(std::string_view name, std::string_view revision);
    Outcome Read(std::string_view name, std::string_view revision);
    Outcome Complete(QY_MOD &module, Unit &unit);
    std::unique_ptr<Unit> Parse(const std::string &path, std::string_view name, QY_MOD *module, std::string &why);
    bool ReadHeader(Unit &unit, std::string_view name, Kw expected);
    void Link(Running &running, Unit &unit);
    void Bind(Unit &unit, const Statement *statement, QY_MOD *module);
    void Import(Running &running, Unit &unit, const Statement *statement);
    void Include(Running &running, Unit &unit, const Statement *statement);
    Unit *ReadSubmodule(QY_MOD &module, std::string_view name, std::string_view revision, std::string &why);
    void Prefer(QY_MOD *module);

    LoadState state_;
    QY_CTX &context_;
    Failures &failures_;
    std::vector<std::unique_ptr<Unit>> units_;            /* of all modules: leafrefs are reported in them at the end */
    std::vector<Running *> chain_;                        /* each imports the next */
    std::unordered_map<std::string, std::string> failed_; /* module name and revision: why */
    std::vector<QY_MOD *> preferred_;                     /* older modules that became preferred */
    bool done_ = false;
};

} // namespace qxyang
