/* What `check` finds in a module: each one is loaded and all rules look at it. */
#pragma once

#include <set>
#include <string>
#include <vector>

#include "base/model_request.h"
#include "check/check_rules.h"
#include "check/findings.h"
#include "check/report/ignores.h"
#include "check/yang/statement_check.h"
#include "model/instance.h"
#include "model/schema_places.h"

namespace inspect {

class Checker {
  public:
    Checker(const ModelRequest &request, bool all) : request_(request), all_(all), places_(request.dirs) {}

    /* Those of the request, or every module of the directories. */
    std::vector<ModuleKey> Modules() const;

    /* The findings of one module, in no order. Each module gets an instance of its own: it is judged by
     * what it needs, not by what was checked before it. */
    std::vector<Finding> Check(const ModuleKey &key);

    /* Files of the modules that were checked in which comments hide findings. */
    const MarkedFiles &Marked() const { return marked_; }

  private:
    std::vector<Finding> LoadFindings(const Instance &instance, const ModuleKey &key, const LoadReport &report);
    void AddUnlistedDirs(const ModuleKey &key, std::vector<Finding> *findings);
    void AddTwin(const std::string &module, const std::string &path, std::vector<Finding> *findings);
    void AddTwins(const Instance &instance, const ModuleKey &key, std::vector<Finding> *findings);
    void AddClassesWithoutTree(const Instance &instance, const ModuleKey &key, std::vector<Finding> *findings);
    static void AddMessages(const ModuleKey &key, const LoadReport &report, std::vector<Finding> *findings);

    const ModelRequest &request_;
    bool all_; /* every module of the directories */
    Places places_;
    ClassUses uses_;
    NamespaceUses namespaces_;
    MarkedFiles marked_;
    std::set<std::string> reported_; /* causes of failed loads, and directories: what many modules meet is told once */
};

} // namespace inspect
