/* What `check` finds: the modules are loaded into one device, and all rules look at them. */
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/model_request.h"
#include "check/class_rules.h"
#include "check/device.h"
#include "check/file_rules.h"
#include "check/finding_list.h"
#include "check/report/ignores.h"
#include "check/statement_uses.h"
#include "check/yang/removed_targets.h"
#include "check/yang/statement_check.h"
#include "model/schema_places.h"

namespace inspect {

struct CheckResult {
    std::vector<std::string> modules; /* that were checked */
    std::vector<Finding> findings;    /* by module, those of a module in the order of their places */
};

/* The modules are loaded in the order in which they are named, those of `--all` by their names. What the library makes of a
 * module depends on what was loaded before it. So each is looked at
 *   - with all others before it: the library registers it once more, at the end;
 *   - as it was when its turn came, and so with those alone that are named before it;
 *   - in a second device, in reverse order, with those alone that are named behind it.
 * Of any two modules, both orders are seen. Other orders of three and more show what is between these: of the modules that
 * change a third, some before it and some behind. There are too many of them to try, and each change by itself has been seen on
 * both sides. Modules that no other changes, and that import none which is changed, are the same in every order: these are
 * loaded once. */
class Checker {
  public:
    using Modules = std::vector<DeviceModule>;
    using Progress = std::function<void(size_t number, size_t total, const std::string &module)>;

    Checker(const ModelRequest &request, bool all)
        : request_(request), all_(all), places_(request.dirs), listing_(request.dirs), files_(request.dirs, listing_)
    {
    }

    CheckResult Check(const Progress &progress);

    /* Files of the modules that were checked in which comments hide findings. */
    const MarkedFiles &Marked() const { return marked_; }

    /* The device that was checked, which lives as long as the checker, and what it was to load. */
    const Device &Checked() const { return *device_; }
    const Modules &CheckedModules() const { return modules_; }

  private:
    std::vector<ModuleKey> Keys() const;
    void Load(Device *device, const std::vector<ModuleKey> &keys, const Progress &progress);
    void CheckFiles();
    void CheckAlone(const ModuleKey &key);
    void AddFacts(const Device &device);
    void CheckRevision(const DeviceModule &module, const FileHeader &header);
    void CheckTaskId(const DeviceModule &module);
    void CheckSchema(const Device &device, QY_MOD *module, const LostTargets &lost, StatementUses *uses);
    void CheckSchemas(const Device &device);
    void CheckLast(Device *device);
    void CheckTurns(const Device &device, const Modules &modules, DeviceOrder::Turns toCome);
    void CheckReverse();
    void CheckTrees(const Device &device, const std::vector<const ModuleFile *> &files,
                    const ClassRules::Report &report);
    void AddCauses(const DeviceModule &module, const std::string &order);
    void AddMessages(const DeviceModule &module);
    CheckResult Result();

    const ModelRequest &request_;
    bool all_; /* every module of the directories */
    Places places_;
    ModuleListing listing_;
    FileRules files_;

    std::optional<Device> device_;             /* the first one */
    Modules modules_;                          /* as the first device has them */
    std::map<std::string, ModuleFacts> facts_; /* of these and of the modules of --load, by name */
    std::set<std::string> judged_;             /* names of both */
    std::set<std::string> submodules_;         /* that --all names */
    DeviceOrder order_;
    NamespaceUses namespaces_;
    MarkedFiles marked_;
    std::map<uint32_t, std::pair<std::string, Position>> taskIds_; /* module and place */
    std::map<std::string, Rule> reasons_; /* why modules are not loaded: what many meet is told once, by one rule */
    FindingList findings_;
};

} // namespace inspect
