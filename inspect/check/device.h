/* A device: one library instance that holds all modules which are checked, loaded in some order. */
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/cause.h"
#include "base/model_request.h"
#include "check/module_facts.h"
#include "model/instance.h"
#include "model/module_listing.h"

namespace inspect {

/* A module that the device was to load. */
struct DeviceModule {
    ModuleKey key;
    LoadReport report;
    std::vector<Cause> causes;      /* why it is not loaded, or why its deviations are not in force */
    QY_MOD *schema = nullptr;       /* null: it is not loaded */
    const ModuleFile *at = nullptr; /* as the library saw it with the modules that had been loaded before it */
};

class Device {
  public:
    /* With the modules of --load; throws Failure when one of these fails. */
    Device(const ModelRequest &request, const ModuleListing &listing);

    const Instance &Library() const { return instance_; }

    DeviceModule Load(const ModuleKey &key);

    /* The module again, as the library sees it when all that this device holds has been loaded before it. The library
     * registers a module for each revision that a host names, from the schema as it is then: nothing is read again. */
    DeviceModule LoadLast(const DeviceModule &module);

  private:
    const ModelRequest &request_;
    Instance instance_;
};

/* What the modules of a device have to do with one another. */
class DeviceOrder {
  public:
    enum class Turns : uint8_t {
        All,
        Later,  /* of modules that are loaded behind it */
        Earlier /* of those that are loaded before it, and not by --load */
    };

    /* `turn` is the module's place in the order of loads, from 1; 0 for a module of --load. */
    void Add(const std::string &module, const ModuleFacts &facts, size_t turn);

    /* Modules that change what the library makes of this one if they are loaded before it: they add to its nodes, or to
     * nodes that it adds to, or deviate these. Of many, MANY and a few more are named. */
    static constexpr size_t MANY = 4;
    std::set<std::string> ChangersOf(const std::string &module, Turns turns) const;

    /* True if it may matter what is loaded before the module or behind it: it changes others, or others change it or what it
     * imports. */
    bool Matters(const std::string &module) const { return matters_.contains(module); }

    /* Finds out for which modules the order matters, when all are added. */
    void Close();

  private:
    struct Entry {
        std::set<std::string> imports;
        std::set<std::string> changes;
        size_t turn;
    };
    using Changers = std::vector<std::pair<size_t, std::string>>; /* turns and names, in this order once closed */

    static void AddChangers(const Changers &all, const std::pair<size_t, size_t> &turns, std::set<std::string> *found);

    std::map<std::string, Entry> entries_;
    std::map<std::string, Changers> changers_; /* by the module whose nodes they change */
    std::set<std::string> matters_;
};

} // namespace inspect
