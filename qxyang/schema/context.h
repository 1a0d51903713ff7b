/* A schema context: the modules of one library instance and what they share. */
#pragma once

#include <korv_platform.h>

#include <list>
#include <memory>
#include <string_view>

#include "files/failures.h"
#include "files/search_path.h"
#include "schema/details.h"
#include "schema/deviation_log.h"
#include "schema/model.h"

namespace qxyang {

struct PooledName {
    const char *name;
    QY_MOD *loaded = nullptr; /* the module loaded under that name */
    QY_MOD *first = nullptr;  /* of the modules of that name in the context, which nextOfName links in their order */
};

} // namespace qxyang

struct QY_CTX {
    QY_CTX() = default;
    QY_CTX(const QY_CTX &) = delete;
    QY_CTX &operator=(const QY_CTX &) = delete;
    ~QY_CTX();

    /* A copy of a module name that lives as long as the context. */
    const char *KeepName(std::string_view name);

    /* The extension as readers see it. */
    const qxyang::ExtensionName *KeepExtension(std::string_view module, std::string_view keyword);

    /* The module loaded under that name, or null. */
    QY_MOD *ModuleByName(std::string_view name) const;

    /* The module of that name and revision, or null. */
    QY_MOD *ModuleOfRevision(std::string_view name, std::string_view revision) const;

    /* The module that an import without a revision gets, or null if no import has asked for it yet. */
    QY_MOD *PreferredModule(std::string_view name) const;

    /* Makes the module one that is loaded by name. */
    void Promote(QY_MOD *module) noexcept;

    /* The module is no longer loaded by name. It is released as soon as no module loaded by name needs it, and so
     * are the modules that only it needed. False: memory ran out, and nothing has changed. */
    bool Unload(QY_MOD *module) noexcept;

    /* Adds an empty module behind the others. */
    QY_MOD &Add(std::unique_ptr<QY_MOD> module);

    /* The module that was added last, or null. */
    QY_MOD *Latest() const { return modules.empty() ? nullptr : modules.back().get(); }

    /* Releases the modules of a failed load: those that were added after that one, or all if it is null. */
    void ReleaseAfter(QY_MOD *last) noexcept;

    std::list<std::unique_ptr<QY_MOD>> modules; /* in the order in which their loads began */
    qxyang::SearchPath path;
    std::shared_ptr<qxyang::Listings> listings; /* null unless a tool shares some: each load reads its own */
    qxyang::Failures failures;
    qxyang::DeviationLog deviations;
    std::unique_ptr<qxyang::Details> details; /* null unless a tool asked for them */
    QY_PRIDATA_FREE_PF freePrivate = nullptr;
    size_t extensionsGiven = 0; /* instances that nodes got on request since the latest load began */
    uint64_t featureEpoch = 1;  /* grows when the value of a feature may have changed */

  private:
    /* Calls visit(module) for the modules of that name in their order until it answers true: that module, or null. */
    template <class Visit>
    static QY_MOD *FindOfName(const qxyang::PooledName *name, Visit &&visit);

    void Unlink(QY_MOD *module) noexcept;
    void ReleaseDying(QY_MOD *first, qxyang::DeviationLog::Removal &&removal) noexcept;
    void FreePrivateData(QY_MOD &module) noexcept;

    qxyang::Arena pool_;
    qxyang::NameTable<qxyang::PooledName> names_;
    qxyang::NameTable<qxyang::ExtensionName> extensionNames_;
};
