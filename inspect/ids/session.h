/* Models and a registry, side by side. */
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/json_out.h"
#include "base/model_request.h"
#include "ids/comparison.h"
#include "model/schema_places.h"

namespace inspect::ids {

/* A difference with the place that a person goes to: in a model, or in the registry for what is in no model. */
struct Finding {
    Difference difference;
    Cause cause;
};

class Session {
  public:
    /* Loads the modules of the request, or with `all` each of the directories. Throws Failure for one that cannot be loaded. */
    Session(const ModelRequest &request, bool all, std::string registryPath, Registry registry);

    /* In the order of the models, then of the registry. */
    std::vector<Finding> Compare();

    Sides Both() const { return {registry_, models_, covered_}; }
    const Registry &Old() const { return registry_; }
    const std::string &RegistryPath() const { return registryPath_; }
    const ModelIds &Models() const { return models_; }
    size_t ModuleCount() const { return modules_.size(); }

  private:
    Cause CauseOf(const Difference &difference);
    void CoverGone();

    const SearchDirs &dirs_;
    std::string registryPath_;
    Registry registry_;
    std::unique_ptr<Instance> instance_;
    std::vector<ModuleKey> modules_;
    std::set<std::string> covered_;
    ModelIds models_;
    Places places_;
};

/* One line each. */
void WriteText(const std::vector<Finding> &findings);

/* The member "findings". */
void WriteJson(JsonOut *out, const std::vector<Finding> &findings);

/* Where the registry is without --registry: in the directory that is searched first. */
std::string DefaultRegistryPath(const SearchDirs &dirs);

} // namespace inspect::ids
