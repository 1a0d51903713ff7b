#include "check/device.h"

#include <utility>

#include "model/load_causes.h"

namespace inspect {
namespace {

/* Follows the revision that a module is loaded under, when it is loaded once more. */
constexpr const char *LAST = "+";

} // namespace

Device::Device(const ModelRequest &request, const ModuleListing &listing)
    : request_(request), instance_(request.dirs, request.verbose, listing.Handle())
{
    for (const ModuleKey &load : request.loads)
        LoadOrFail(&instance_, request, load);
}

DeviceModule Device::Load(const ModuleKey &key)
{
    DeviceModule module = {key, instance_.Load(key), {}};
    module.causes = CausesOf(instance_, request_.dirs, key, module.report);
    if (!module.report.loaded)
        return module;
    module.at = instance_.Find(key);
    module.schema = QY_CTX_GetModuleByModName(instance_.Schema(), key.name.c_str());
    return module;
}

DeviceModule Device::LoadLast(const DeviceModule &module)
{
    return Load({module.key.name, module.key.revision + LAST});
}

void DeviceOrder::Add(const std::string &module, const ModuleFacts &facts)
{
    entries_[module] = {facts.imports, facts.changes};
    for (const std::string &changed : facts.changes)
        changers_[changed].insert(module);
}

std::set<std::string> DeviceOrder::ChangersOf(const std::string &module) const
{
    std::set<std::string> changers;
    auto addThoseOf = [&](const std::string &name) {
        auto found = changers_.find(name);
        if (found != changers_.end())
            changers.insert(found->second.begin(), found->second.end());
    };
    addThoseOf(module);
    auto entry = entries_.find(module);
    if (entry != entries_.end())
        for (const std::string &changed : entry->second.changes)
            addThoseOf(changed);
    changers.erase(module);
    return changers;
}

/* Climbs from what is changed to all that import it. */
void DeviceOrder::Close()
{
    std::map<std::string, std::vector<std::string>> importers;
    for (const auto &[name, entry] : entries_)
        for (const std::string &imported : entry.imports)
            importers[imported].push_back(name);
    std::set<std::string> seen;
    std::vector<std::string> open;
    for (const auto &[changed, by] : changers_) {
        open.push_back(changed);
        matters_.insert(by.begin(), by.end());
    }
    while (!open.empty()) {
        std::string name = std::move(open.back());
        open.pop_back();
        if (!seen.insert(name).second)
            continue;
        auto found = importers.find(name);
        if (found != importers.end())
            open.insert(open.end(), found->second.begin(), found->second.end());
    }
    matters_.merge(seen);
}

} // namespace inspect
