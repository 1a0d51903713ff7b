/* What `ids` can do. Each action stands in a file of its own, and a row of the table in ids_command.cpp makes it known. */
#pragma once

#include <memory>
#include <string>

#include "line/model_options.h"

namespace inspect {

/* What all actions take from the line. */
struct IdsOptions {
    ModelOptions models;
    bool all = false;
    std::string registry; /* path of the registry, given or not */
    bool isRegistryGiven = false;
};

class IdsAction {
  public:
    IdsAction() = default;
    IdsAction(const IdsAction &) = delete;
    IdsAction &operator=(const IdsAction &) = delete;
    virtual ~IdsAction() = default;

    /* Adds the action's own options. */
    virtual void AddTo(CLI::App *app) { (void)app; }

    /* Looks at what was parsed. Throws CLI::ValidationError for wrong usage. */
    virtual void Understand(const IdsOptions &options) = 0;

    /* Writes the result to standard output. Returns the exit code. */
    virtual int Run(const IdsOptions &options) = 0;
};

struct IdsActionEntry {
    const char *name;
    std::unique_ptr<IdsAction> (*make)();
};

extern const IdsActionEntry IDS_ASSIGN;
extern const IdsActionEntry IDS_LOCK;
extern const IdsActionEntry IDS_CHECK;
extern const IdsActionEntry IDS_LIST;

/* Throws CLI::ValidationError unless the line names modules or has --all. */
void RequireModules(const IdsOptions &options);

template <class Kind>
std::unique_ptr<IdsAction> MakeAction()
{
    return std::make_unique<Kind>();
}

} // namespace inspect
